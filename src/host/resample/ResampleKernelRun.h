// The resampler's loop over a set of dot products; included by the translation units of the kernels, inside their
// instruction set.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/resample/ResampleKernel.h"

namespace tesh::bramel::vst {
namespace {

/// `Dots` gives the two channels of an output frame: Dots::frame<Groups>(tables, left, right, groups, alpha, outLeft,
/// outRight), with the number of groups fixed where it is common and 0 where it is not.
template <typename Dots, std::size_t Groups>
std::size_t runWith(const ResampleRun& run, ResamplePosition& position) {
  ResamplePosition at = position;
  const ResampleStep step = run.step;
  const std::size_t groups = Groups != 0 ? Groups : run.groups;
  std::size_t made = 0;
  for (; at.input < run.frames; ++made) {
    const float alpha = static_cast<float>(static_cast<std::int32_t>(at.within & kPhaseMask)) * kPhaseScale;
    const TablePair* const tables = run.tables + (at.within >> kPhaseFractionBits) * groups;
    Dots::template frame<Groups>(tables, run.left + at.input, run.right + at.input, groups, alpha, run.outLeft + made,
                                 run.outRight + made);
    at.advance(step);
  }
  position = at;
  return made;
}

template <typename Dots>
std::size_t runResample(const ResampleRun& run, ResamplePosition& position) {
  constexpr std::size_t kCommonGroups = 6;  // 24 taps: all of the engine's output, and input up to 48 kHz.
  return run.groups == kCommonGroups ? runWith<Dots, kCommonGroups>(run, position) : runWith<Dots, 0>(run, position);
}

}  // namespace
}  // namespace tesh::bramel::vst
