// The settings and the lines of the comb filter.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/filters/CombFilter.h"

#include <cmath>

#include "core/FixedPoint.h"
#include "effects/filters/CombStep.h"
#include "effects/interfaces/KnobTables.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

constexpr std::size_t kMask = CombFilter::kLineLength - 1;

/// Delay at knob 0, samples with 15 fractional bits: the period of the lowest C, 44100 / 32.7032 samples. Each step of
/// the knob is a semitone up.
constexpr double kLongestDelay = 44187388.0;

/// Loss of the feedback per round at knobs 0 and 0, in nepers: the sound then falls by 60 dB in 1.08 ms. That time
/// doubles every 12 steps of the Feedback knob, up to 1.66 s.
constexpr double kDecayPerRound = 195.11349;

constexpr double k1In31Bits = 2147483648.0;

/// Per sample, the delay moves nearly all the way to its target and the feedback 0.99 of it.
constexpr OnePole kDelayGlide{4168, 28599};
constexpr OnePole kFeedbackGlide{328, 32439};

/// 2 to the power of -steps / 12.
double semitonesDown(int steps) { return std::exp2(-steps / 12.0); }

const auto delayTable = tableOf<std::int32_t>([](int knob) { return kLongestDelay * semitonesDown(knob); });

/// The feedback, indexed by the sum of both knobs.
const auto feedbackTable = tableOf<std::int32_t, 2 * kTopKnob + 1>(
    [](int sum) { return k1In31Bits * std::exp(-kDecayPerRound * semitonesDown(sum)); });

}  // namespace

CombFilter::Settings CombFilter::settingsOf(const Knobs& knobs) {
  return {valueAt(delayTable, knobs.edit1), valueAt(feedbackTable, knobs.edit1 + knobs.edit2)};
}

bool CombFilter::restsAt(const Settings& to, bool) const {
  return kDelayGlide.next(delay, to.delay) == delay && kFeedbackGlide.next(feedback, to.feedback) == feedback;
}

void CombFilter::glide(const Settings& to, bool) {
  delay = kDelayGlide.next(delay, to.delay);
  feedback = kFeedbackGlide.next(feedback, to.feedback);
}

/// Splits the delay into whole samples and the weight of an all-pass interpolation, (1 - fraction) / (1 + fraction).
void CombFilter::derive() {
  wholeDelay = static_cast<std::size_t>(delay >> 15);
  const std::int32_t fraction = fractionQ15(delay);
  eta = ((kFullScale - fraction) * kOneQ15) / (fraction + kFullScale);
}

void CombFilter::stepChannel(Channel& channel, std::int16_t& sample) const {
  using Word = lanes::OneWord;
  const auto word = [](std::int64_t value) { return Word{static_cast<std::int32_t>(value)}; };
  const Word echo = word(channel.output);
  const Word sound = combSound(echo, word(feedback), word(sample * kOneQ15));
  channel.line[write] = sound.v;
  const Word nearWhole = word(channel.line[read]).shiftedRight<15>();
  channel.output = nextEcho(echo, nearWhole, word(channel.line[(read - 1) & kMask]), word(eta)).v;
  sample = static_cast<std::int16_t>(saturate(sound.v >> 15));
}

void CombFilter::step(const Settings&, std::int16_t& leftSample, std::int16_t& rightSample) {
  stepChannel(left, leftSample);
  stepChannel(right, rightSample);
  moveIndices(1);
}

template class TwoKnobEffect<CombFilter>;

}  // namespace tesh::bramel::plugin::sivray::effects
