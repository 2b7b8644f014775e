// The law of the Marlo ensemble, three voices side by side.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/MarloEnsemble.h"

#include <bit>

namespace tesh::bramel::plugin::sivray::effects {

namespace {

using Voices = MarloEnsemble::Voices;
using VoiceMasks = std::int32_t __attribute__((vector_size(16)));

/// Phase steps per sample of the two sines: 5.2 Hz and 0.27 Hz, four units a cycle.
constexpr auto kFastStep = static_cast<float>(20.8 / cofu::core::kEngineRate);
constexpr auto kSlowStep = static_cast<float>(1.08 / cofu::core::kEngineRate);

/// How much each sine moves the tap, in depths: both are lifted to 0 .. 2, and the fast one counts a twelfth.
constexpr float kSineScale = 0.499966F;
constexpr float kFastShare = 0.0833333F;

/// Phase between the sides at full spread: a sixth of a cycle.
constexpr float kSpreadScale = 0.666667F;

/// Gain of the sum of three voices.
constexpr float kSumGain = 0.66666F;

// The sine of w * pi / 2 for w in -1 .. 1 as an odd polynomial, within 0.0001, and what lifts it to 0 .. 2.
constexpr float kSineLinear = 1.5703204F;
constexpr float kSineCubic = 0.6421143F;
constexpr float kSineFifth = 0.07186159F;
constexpr float kSineLift = 1.0000676F;

/// One cycle over phases of -2 .. 2: 2 at both ends, 0 in the middle.
Voices liftedSine(Voices phase) {
  const auto magnitude = std::bit_cast<Voices>(std::bit_cast<VoiceMasks>(phase) & 0x7FFFFFFF);
  const Voices w = magnitude - 1.0F;
  const Voices square = w * w;
  const Voices linear = w * kSineLinear;
  const Voices cubic = square * kSineCubic * w;
  const Voices fifth = square * square * w * kSineFifth;
  return linear - cubic + fifth + kSineLift;
}

/// `value` less `amount` in the lanes of `mask`.
Voices lessWhere(VoiceMasks mask, Voices value, float amount) {
  const Voices amounts{amount, amount, amount, amount};
  return value - std::bit_cast<Voices>(mask & std::bit_cast<VoiceMasks>(amounts));
}

Voices wrappedPhase(Voices phase) { return lessWhere(phase > 2.0F, phase, 4.0F); }

/// The sum of the three taps, `at` being the write position.
float ensemble(const MarloLine& line, float at, Voices fastPhase, Voices slowPhase, float depth) {
  const Voices fast = liftedSine(fastPhase) * kSineScale * kFastShare;
  const Voices slow = liftedSine(slowPhase) * kSineScale;
  const Voices position = (fast + slow) * depth + at;
  const Voices wrapped = lessWhere(position >= MarloLine::kWrap, position, MarloLine::kWrap);
  const VoiceMasks whole = __builtin_convertvector(wrapped, VoiceMasks);
  const Voices fraction = wrapped - __builtin_convertvector(whole, Voices);
  const auto sample = [&](int voice, int offset) {
    const std::int32_t index = whole[voice] + offset;
    return line.samples[static_cast<std::size_t>(index)];
  };
  const Voices older{sample(0, 1), sample(1, 1), sample(2, 1), 0.0F};
  const Voices newer{sample(0, 0), sample(1, 0), sample(2, 0), 0.0F};
  const Voices y = newer + (older - newer) * fraction;
  return limited((y[0] + y[1] + y[2]) * kSumGain);
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

template class TwoKnobEffect<MarloEnsemble>;

}  // namespace tesh::bramel::plugin::sivray::effects
