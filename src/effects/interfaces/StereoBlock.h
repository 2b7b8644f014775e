// One block of split stereo samples, processed in place.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel::plugin::sivray::effects {

/// Left and right samples of one block; nothing is owned. An effect writes its output over its input.
struct StereoBlock {
  std::int16_t* left = nullptr;
  std::int16_t* right = nullptr;
};

}  // namespace tesh::bramel::plugin::sivray::effects
