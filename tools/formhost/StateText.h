// How a JUCE host's saved state wraps the instrument's own bytes, for VST 3 and LV2.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "hosting/HostedPlugin.h"

namespace sivray::formhost {

/// Returns the instrument's bytes inside a state that the host got from its plug-in; empty where there are none.
std::vector<std::uint8_t> unwrapState(hosting::Form form, std::span<const std::uint8_t> hostState);

/// Returns a host's state with other bytes in it, which may be any. `hostState` is one that the plug-in gave.
std::vector<std::uint8_t> rewrapState(hosting::Form form, std::span<const std::uint8_t> hostState,
                                      std::span<const std::uint8_t> bytes);

}  // namespace sivray::formhost
