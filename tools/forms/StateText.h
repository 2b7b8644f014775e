// How a JUCE host's saved state wraps the instrument's own bytes, for each form.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "hosting/HostedPlugin.h"

namespace sivray::forms {

/// Returns the instrument's bytes inside a state that the host has from its plug-in; empty where there are none.
std::vector<std::uint8_t> unwrapState(hosting::Form form, std::span<const std::uint8_t> hostState);

/// Returns `hostState` with other bytes of the instrument in it; they need not be valid. Host states have none of their
/// own, so that a plug-in which refuses the bytes keeps everything.
std::vector<std::uint8_t> rewrapState(hosting::Form form, std::span<const std::uint8_t> hostState,
                                      std::span<const std::uint8_t> bytes);

}  // namespace sivray::forms
