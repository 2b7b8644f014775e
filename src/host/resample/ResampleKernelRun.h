// The resampler's loop around the dot products of a kernel. Each kernel's source file includes it and compiles it for
// its own instruction set, so everything here has internal linkage.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/resample/ResampleKernel.h"

namespace tesh::bramel::vst {
namespace {

/// Dots::frame<Groups>(tables, window, groups, units, outLeft, outRight) computes both channels of an output frame that
/// lies `units`, below 2^14, past a phase: with a = units / 2^14 it is (1 - a) times the phase's sum plus a times the
/// next one's. `Groups` is the number of groups if it is known at compile time, else 0.
template <typename Dots, std::size_t Groups>
std::size_t runWith(const ResampleRun& run, ResamplePosition& position) {
  ResamplePosition at = position;
  const ResampleStep step = run.step;
  const std::size_t groups = Groups != 0 ? Groups : run.groups;
  std::size_t made = 0;
  for (; at.input < run.frames; ++made) {
    const auto units = static_cast<std::int32_t>(at.within & kPhaseMask);
    const TapGroup* const tables = run.tables + (at.within >> kPhaseFractionBits) * groups;
    Dots::template frame<Groups>(tables, run.window + 2 * at.input, groups, units, run.outLeft + made,
                                 run.outRight + made);
    at.advance(step);
  }
  position = at;
  return made;
}

template <typename Dots>
std::size_t runResample(const ResampleRun& run, ResamplePosition& position) {
  constexpr std::size_t kCommonGroups = 6;  // 24 taps: the engine's output at any rate, and input up to 48 kHz
  return run.groups == kCommonGroups ? runWith<Dots, kCommonGroups>(run, position) : runWith<Dots, 0>(run, position);
}

}  // namespace
}  // namespace tesh::bramel::vst
