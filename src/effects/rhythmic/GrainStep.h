// The law of the grain shifter, sample by sample or in lanes: two lines that are read, refilled and mixed. LaneRun.h
// tells where this may be included.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FixedPoint.h"
#include "effects/interfaces/LaneRun.h"
#include "effects/rhythmic/SivrayFxGrainShifter.h"

namespace tesh::bramel::plugin::sivray::effects {

/// A line's grain, delayed by the grain's length.
template <typename Samples>
Samples grainOf(const GrainShifterLaw& law, const std::int16_t* line) {
  const unsigned near = law.writeIndex - static_cast<unsigned>(law.delay >> 15);
  const typename Samples::template Fraction<15> fraction(fractionQ15(law.delay));
  return loadBetween<Samples, GrainShifterLaw::kLineLength>(line, near, fraction);
}

/// Computes the next samples of both channels, in place. `record` is the share of the input that goes into line A, the
/// rest into line B; `output` is the share of line B in the output, the rest being line A. The delay must be at least
/// `Samples::kCount`.
template <typename Samples>
void stepGrains(GrainShifterLaw& law, Samples record, Samples output, std::int16_t* left, std::int16_t* right) {
  constexpr unsigned kLength = GrainShifterLaw::kLineLength;
  const Samples full = Samples::all(cofu::core::kFullScale);
  const Samples dryLeft = Samples::load(left);
  const Samples dryRight = Samples::load(right);
  // -32768 may become -32767: any gain below 1.0 maps both to the same value.
  const Samples in = monoOf(dryLeft, dryRight, kOneQ15 / 2);
  std::int16_t* const lineA = law.line(0);
  std::int16_t* const lineB = law.line(1);
  const Samples intoA = sum(mul15(grainOf<Samples>(law, lineA), full - record), mul15(in, record));
  const Samples intoB = sum(mul15(grainOf<Samples>(law, lineB), record), mul15(in, full - record));
  storeToRing<kLength>(lineA, law.writeIndex, intoA);
  storeToRing<kLength>(lineB, law.writeIndex, intoB);
  law.moveOn(Samples::kCount);
  const Samples grain = sum(mul15(intoA, full - output), mul15(intoB, output));
  const std::int32_t mix = law.mix.value();
  const Samples wet = mul15(grain, typename Samples::Gain(mix));
  const typename Samples::Gain dry(cofu::core::kFullScale - mix);
  sum(mul15(dryLeft, dry), wet).store(left);
  sum(mul15(dryRight, dry), wet).store(right);
}

/// A run of at most `kControlGrid` samples, in place. First the fades, which must be computed sample by sample, then
/// the rest.
template <typename Samples>
[[gnu::flatten]] unsigned runGrains(GrainShifterLaw& law, std::int16_t* left, std::int16_t* right,
                                    unsigned count) SIVRAY_NONBLOCKING {
  const unsigned whole = count - count % Samples::kCount;
  GrainFades fades;
  law.followFades(fades, whole);
  GrainShifterLaw now = law;
  for (unsigned done = 0; done < whole; done += Samples::kCount) {
    stepGrains(now, Samples::load(fades.record + done), Samples::load(fades.output + done), left + done, right + done);
  }
  law = now;
  return whole;
}

}  // namespace tesh::bramel::plugin::sivray::effects
