// The law of the Marlo ensemble, three voices side by side.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/MarloEnsemble.h"

#include "effects/modulation/EnsembleLanes.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

using Voices = MarloEnsemble::Voices;

/// The sum of the three taps, `at` being the write position.
float ensemble(const MarloLine& line, float at, Voices fastPhase, Voices slowPhase, float depth) {
  const Voices position = voiceDelay(fastPhase, slowPhase, depth) + at;
  const Voices wrapped = lessWhere(position >= MarloLine::kWrap, position, MarloLine::kWrap);
  const auto whole = __builtin_convertvector(wrapped, MasksOf<Voices>);
  const Voices fraction = wrapped - __builtin_convertvector(whole, Voices);
  const auto sample = [&](int voice, int offset) {
    const std::int32_t index = whole[voice] + offset;
    return line.samples[static_cast<std::size_t>(index)];
  };
  const Voices older{sample(0, 1), sample(1, 1), sample(2, 1), 0.0F};
  const Voices newer{sample(0, 0), sample(1, 0), sample(2, 0), 0.0F};
  const Voices y = newer + (older - newer) * fraction;
  return limited((y[0] + y[1] + y[2]) * kEnsembleGain);
}

}  // namespace

/// Moves the sines, their depth and their spread by one sample.
void MarloEnsemble::advance(const Settings& to) {
  depth = marloSmoothed(depth, to.depthStep);
  spread = marloSmoothed(spread, to.spreadStep);
  fast = wrappedPhase(fast + kFastStep);
  slow = wrappedPhase(slow + kSlowStep);
}

void MarloEnsemble::skip(const Settings& to, unsigned count) {
  for (unsigned i = 0; i < count; ++i) {
    advance(to);
  }
  lines.skip(count);
}

void MarloEnsemble::step(const Settings& to, std::int16_t& left, std::int16_t& right) {
  advance(to);
  lines.step(left, right, [this](float, float, float& outLeft, float& outRight) {
    const float distance = (spread - 1.0F) * kSpreadScale;
    const float at = lines.writePosition();
    outLeft = ensemble(lines.leftLine, at, fast, slow, depth);
    outRight = ensemble(lines.rightLine, at, wrappedPhase(fast + distance), wrappedPhase(slow + distance), depth);
  });
}

unsigned MarloEnsemble::runSse2(MarloEnsemble& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runEnsemble<MarloFour>(law, left, right, count);
}

template class TwoKnobEffect<MarloEnsemble>;

}  // namespace tesh::bramel::plugin::sivray::effects
