// Extracts and replaces the instrument's bytes in the state that a JUCE host saves, for VST 3 and LV2.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "hosting/HostedPlugin.h"

namespace sivray::formhost {

/// Returns the instrument's bytes in a state that the host got from its plug-in; empty if there are none.
std::vector<std::uint8_t> unwrapState(hosting::Form form, std::span<const std::uint8_t> hostState);

/// Returns a host's state whose instrument's bytes are replaced by any others. `hostState` must come from the plug-in.
std::vector<std::uint8_t> rewrapState(hosting::Form form, std::span<const std::uint8_t> hostState,
                                      std::span<const std::uint8_t> bytes);

}  // namespace sivray::formhost
