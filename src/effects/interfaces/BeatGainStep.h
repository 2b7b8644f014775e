// The law of pump and slicer, sample by sample or in lanes. LaneRun.h tells where this may be included. Both have an
// oscillator of `phase` and `now.lfoStep`, a BeatGain `gain`, and
//   static constexpr std::int32_t kFloor;      // gain that is left while it is shut, Q15
//   static constexpr std::int32_t kSmoothing;  // share per sample by which the gain follows its target, Q15
// and beside them, in a header like this one,
//   Words openingAt(const Law&, Words phase);  // where the gain goes, Q15
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>

#include "effects/interfaces/BeatGain.h"
#include "effects/interfaces/LaneRun.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/interfaces/SampleLanes.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Subtracted from openings and gains in lanes, so that 1.0 fits.
inline constexpr std::int32_t kHalfOpen = BeatGain::kOpen / 2;

/// Writes the next `count` openings, whole registers, less a half. In lanes openings must be -1 .. 1.0. Each sample of
/// the envelope waits for the last one; its targets do not.
template <typename Samples, typename Law, typename Opening>
void followBeat(Law& law, Opening* openings, unsigned count) {
  using namespace cofu::core;
  using Words = typename Samples::Words;
  std::int32_t state = law.gain.envelope.state - (kHalfOpen << 15);
  for (unsigned done = 0; done < count; done += Words::kCount) {
    const Words targets = openingAt(law, Words::after(law.phase, law.now.lfoStep)) - Words::all(kHalfOpen);
    std::int32_t pulls[Words::kCount];
    timesShort(targets, Law::kSmoothing).store(pulls);
    for (unsigned i = 0; i < Words::kCount; ++i) {
      // In this order, so that nothing but the product waits for the last sample's shift.
      state = (state + pulls[i]) - (state >> 15) * Law::kSmoothing;
      openings[done + i] = static_cast<Opening>(state >> 15);
    }
    law.phase = wrapAdd(law.phase, wrapMul(law.now.lfoStep, static_cast<std::int32_t>(Words::kCount)));
  }
  law.gain.envelope.state = state + (kHalfOpen << 15);
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
  law.gain.moveLevel(law.now.level);
  applyBeat(law, OneSample{opening}, OneSample::Boost(law.gain.level), &left, &right);
}

/// A run of at most `kControlGrid` samples while the level rests, in place.
template <typename Samples, typename Law>
[[gnu::flatten]] unsigned runBeat(Law& law, std::int16_t* left, std::int16_t* right,
                                  unsigned count) SIVRAY_NONBLOCKING {
  const unsigned whole = count - count % Samples::kCount;
  std::int16_t openings[kControlGrid];
  followBeat<Samples>(law, openings, whole);
  const typename Samples::Boost level(law.gain.level);
  for (unsigned done = 0; done < whole; done += Samples::kCount) {
    applyBeat(law, Samples::load(openings + done), level, left + done, right + done);
  }
  return whole;
}

/// `count` samples of silence.
template <typename Law>
[[gnu::flatten]] void skipBeat(Law& law, unsigned count) {
  law.gain.skipLevel(law.now.level, count);
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
