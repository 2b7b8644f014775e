// The outs of the instrument, as hosts show them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>

#include "core/ProcessBlock.h"

namespace tesh::bramel::vst {

/// Main, eight pads, effect: two channels each, in the order of vimo::ProcessBlock.
inline constexpr std::size_t kOutCount = vimo::kAllChannels / 2;

/// The name of out 0 to kOutCount - 1.
inline std::string outName(std::size_t out) {
  return out == 0 ? "Main" : out + 1 == kOutCount ? "Effect" : "Pad " + std::to_string(out);
}

}  // namespace tesh::bramel::vst
