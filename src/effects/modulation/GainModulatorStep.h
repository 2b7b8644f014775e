// The law of tremolo and auto pan, sample by sample or in lanes. LaneRun.h tells where this may be included.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>

#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/LaneRun.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/modulation/GainModulator.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Factor per sample of the one-pole smoother that rounds the triangle, Q15: 0.0675, a time constant of 14 samples. It
/// is the square curve's value at 33.
inline constexpr std::int16_t kLfoSmoothing = squareTable[33];

/// The smoothed triangles of a run, 31 fractional bits, less kHalf.
struct TriangleRun {
  std::int32_t left[kControlGrid];
  std::int32_t right[kControlGrid];
};

/// Triangles before smoothing: the magnitudes of the next phases, 0 to 2^31.
template <typename Samples>
struct SharpTriangles {
  using Words = typename Samples::Words;

  SharpTriangles(std::int32_t phase, std::int32_t step) {
    for (unsigned i = 0; i < Samples::kWords; ++i) {
      const auto before = static_cast<std::int32_t>(i * Words::kCount);
      words[i] = magnitude(Words::after(cofu::core::wrapAdd(phase, cofu::core::wrapMul(step, before)), step));
    }
  }

  /// Whether one of them is 2^31, which a lane cannot hold.
  bool areAtTop() const {
    bool isOne = false;
    for (const Words& magnitudes : words) {
      isOne = isOne || isAnyNegative(magnitudes);
    }
    return isOne;
  }

  /// Each smoothed triangle depends on the one before it; its target does not.
  void smooth(std::int32_t& smoothed, std::int32_t* run) const {
    std::int32_t pulls[Samples::kCount];
    for (unsigned i = 0; i < Samples::kWords; ++i) {
      const Words targets = words[i].template shiftedRightUnsigned<15>() - Words::all(GainModulator::kHalf >> 15);
      timesShort(targets, kLfoSmoothing).store(pulls + i * Words::kCount);
    }
    std::int32_t state = smoothed;
    for (unsigned i = 0; i < Samples::kCount; ++i) {
      // In this order only the product waits for the last sample's shift.
      state = (state + pulls[i]) - (state >> 15) * kLfoSmoothing;
      run[i] = state;
    }
    smoothed = state;
  }

  Words words[Samples::kWords];
};

/// Moves both triangles by up to `count` samples, whole registers only. Returns their number: stops before a triangle
/// that is at its maximum.
template <typename Samples, typename Law>
unsigned followTriangles(Law& law, TriangleRun& run, unsigned count) {
  using namespace cofu::core;
  unsigned done = 0;
  for (; done < count; done += Samples::kCount) {
    const SharpTriangles<Samples> left(law.phase, law.lfoStep);
    const SharpTriangles<Samples> right(wrapAdd(law.phase, Law::kSpread), law.lfoStep);
    if (Samples::kCount > 1 && (left.areAtTop() || right.areAtTop())) {
      break;
    }
    left.smooth(law.smoothLeft, run.left + done);
    if (Law::kSpread != 0) {
      right.smooth(law.smoothRight, run.right + done);
    }
    law.phase = wrapAdd(law.phase, wrapMul(law.lfoStep, static_cast<std::int32_t>(Samples::kCount)));
  }
  if (Law::kSpread == 0) {
    law.smoothRight = law.smoothLeft;
  }
  return done;
}

/// Gains less 1.0, Q15: the cube of the smoothed triangle on 0 .. 65535, which gives a gain of up to 2.0, mixed with
/// the constant gain `flat`.
template <typename Samples>
Samples modulatedGains(const std::int32_t* smooth, const typename Samples::Gain& flat) {
  using Words = typename Samples::Words;
  Words cubes[Samples::kWords];
  for (unsigned i = 0; i < Samples::kWords; ++i) {
    const Words s = Words::load(smooth + i * Words::kCount) + Words::all(GainModulator::kHalf);
    cubes[i] = product<46>(product<31>(s, s), s) - Words::all(32768);
  }
  const Samples cubed = Samples::of(cubes);
  return cubed - mul15(cubed, flat);
}

/// A run of at most `kControlGrid` samples, in place, as far as lanes can compute it. First the triangles, which must
/// be computed sample by sample, then the rest.
template <typename Samples, typename Law>
[[gnu::flatten]] unsigned runModulated(Law& law, std::int16_t* left, std::int16_t* right,
                                       unsigned count) SIVRAY_NONBLOCKING {
  TriangleRun run;
  const unsigned whole = followTriangles<Samples>(law, run, count - count % Samples::kCount);
  const std::int32_t flatness = law.flatness.value();
  const typename Samples::Gain flat(cofu::core::mul15(flatness, flatness));
  for (unsigned done = 0; done < whole; done += Samples::kCount) {
    // Limited to -32767, which gives the same output as -32768 at any gain.
    const Samples mono = monoOf(Samples::load(left + done), Samples::load(right + done), kOneQ15 / 2);
    const Samples leftGains = modulatedGains<Samples>(run.left + done, flat);
    const Samples rightGains = Law::kSpread == 0 ? leftGains : modulatedGains<Samples>(run.right + done, flat);
    sum(mono, mul15(mono, leftGains)).store(left + done);
    sum(mono, mul15(mono, rightGains)).store(right + done);
  }
  return whole;
}

/// Advances by `count` samples of silence.
template <typename Law>
[[gnu::flatten]] void skipModulated(Law& law, unsigned count) {
  TriangleRun run;
  while (count > 0) {
    const unsigned inLanes = law.fitsLanes({}) ? std::min(count - count % Samples128::kCount, kControlGrid) : 0;
    const unsigned done = followTriangles<Samples128>(law, run, inLanes);
    count -= done > 0 ? done : followTriangles<OneSample>(law, run, 1);
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
