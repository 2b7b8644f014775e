// The run of a law that goes sample by sample in a faster arithmetic. A source file that is compiled for an instruction
// set includes this between its marks.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel::plugin::sivray::effects {

/// Moves the law on by `count` samples in place with `step(law, left sample, right sample)`, and returns `count`. Works
/// on a copy of the law, so that the compiler keeps its state in registers.
template <typename Law, typename Step>
[[gnu::flatten]] unsigned runSerially(Law& law, std::int16_t* left, std::int16_t* right, unsigned count, Step step) {
  Law now = law;
  for (unsigned i = 0; i < count; ++i) {
    step(now, left[i], right[i]);
  }
  law = now;
  return count;
}

}  // namespace tesh::bramel::plugin::sivray::effects
