// The law of pump and slicer, sample by sample or in lanes. LaneRun.h tells where this may be included.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>

#include "effects/interfaces/LaneRun.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/interfaces/SampleLanes.h"
#include "effects/rhythmic/BeatGain.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Two saws of opposite direction: their sum less `edge`, halved.
template <typename Words>
Words sumOfSaws(std::int32_t top, Words up, Words later, std::int32_t edge) {
  const Words down = Words::all(top) - up;
  const Words sum = down.template shiftedRight<16>() + later.template shiftedRight<16>() - Words::all(edge);
  return sum.template shiftedRight<1>();
}

/// The target of the pump's gain at a phase, Q15: a parabola from 1.0 at both ends to 0 in mid-cycle, times the
/// attack's gain, and limited by the saws, which are close to 0 in the first half of the cycle and close to 1.0 in the
/// second.
template <typename Words>
Words openingAt(const Pump& law, Words at) {
  const Words distance = magnitude(at);
  const Words parabola = product<15>(product<47>(distance, distance), Words::all(law.now.attackGain));
  return smaller(parabola, sumOfSaws(Pump::kPhaseStart, at, at, -kOneQ15));
}

/// The target of the slicer's gain: close to 1.0 while the gate is open, close to 0 while it is closed.
template <typename Words>
Words openingAt(const Slicer& law, Words at) {
  return sumOfSaws(Slicer::kPhaseTop, at, Words::all(law.now.holdOffset) + at, law.now.edge);
}

/// Subtracted from openings and gains in lanes, so that 1.0 fits.
inline constexpr std::int32_t kHalfOpen = kOneQ15 / 2;

/// Writes the next `count` openings, whole registers only, less a half. In lanes openings must be within -1 .. 1.0.
/// Each sample of the envelope depends on the last one; its targets do not.
template <typename Samples, typename Law, typename Opening>
void followBeat(Law& law, Opening* openings, unsigned count) {
  using namespace cofu::core;
  using Words = typename Samples::Words;
  std::int32_t state = law.opening.state - (kHalfOpen << 15);
  for (unsigned done = 0; done < count; done += Words::kCount) {
    const Words targets = openingAt(law, Words::after(law.phase, law.now.lfoStep)) - Words::all(kHalfOpen);
    std::int32_t pulls[Words::kCount];
    timesShort(targets, Law::kSmoothing).store(pulls);
    for (unsigned i = 0; i < Words::kCount; ++i) {
      // In this order only the product waits for the last sample's shift.
      state = (state + pulls[i]) - (state >> 15) * Law::kSmoothing;
      openings[done + i] = static_cast<Opening>(state >> 15);
    }
    law.phase = wrapAdd(law.phase, wrapMul(law.now.lfoStep, static_cast<std::int32_t>(Words::kCount)));
  }
  law.opening.state = state + (kHalfOpen << 15);
}

/// Applies openings (less a half) and level to the next samples of both channels, in place.
template <typename Samples, typename Law>
void applyBeat(const Law&, Samples opening, const typename Samples::Boost& level, std::int16_t* left,
               std::int16_t* right) {
  const Samples half = Samples::all(kHalfOpen);
  const typename Samples::Weights floor(Law::kFloor, Law::kFloor);
  const Samples share = weightedSum(opening, half, floor).template shiftedRight<15>().packed();
  const Samples gain = opening - share + Samples::all(Law::kFloor);
  for (std::int16_t* const side : {left, right}) {
    const Samples in = Samples::load(side);
    boosted(weightedSum(in, in, gain, half).template shiftedRight<15>().packed(), level).store(side);
  }
}

/// One sample of both channels.
template <typename Law>
void stepBeat(Law& law, std::int16_t& left, std::int16_t& right) {
  std::int32_t opening = 0;
  followBeat<OneSample>(law, &opening, 1);
  law.level = law.nextLevel(law.now);
  applyBeat(law, OneSample{opening}, OneSample::Boost(law.level), &left, &right);
}

/// A run of at most `kControlGrid` samples while the level is at rest, in place.
template <typename Samples, typename Law>
[[gnu::flatten]] unsigned runBeat(Law& law, std::int16_t* left, std::int16_t* right,
                                  unsigned count) SIVRAY_NONBLOCKING {
  const unsigned whole = count - count % Samples::kCount;
  std::int16_t openings[kControlGrid];
  followBeat<Samples>(law, openings, whole);
  const typename Samples::Boost level(law.level);
  for (unsigned done = 0; done < whole; done += Samples::kCount) {
    applyBeat(law, Samples::load(openings + done), level, left + done, right + done);
  }
  return whole;
}

/// Advances by `count` samples of silence.
template <typename Law>
[[gnu::flatten]] void skipBeat(Law& law, unsigned count) {
  moveToRest(law.level, count, [&law](std::int32_t& level) { level = law.nextLevel(law.now); });
  std::int32_t opening = 0;
  std::int16_t openings[kControlGrid];
  while (count >= Samples128::kCount && law.fitsLanes(law.now)) {
    const unsigned run = std::min(count - count % Samples128::kCount, kControlGrid);
    followBeat<Samples128>(law, openings, run);
    count -= run;
  }
  for (; count > 0; --count) {
    followBeat<OneSample>(law, &opening, 1);
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
