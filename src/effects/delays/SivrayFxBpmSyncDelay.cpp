// The settings and the law of the tempo-locked delay.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/delays/SivrayFxBpmSyncDelay.h"

#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/TempoTables.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

constexpr unsigned kMask = BpmSyncDelayLaw::kLineLength - 1;
constexpr int kStartBpm = 120;

/// The most that is fed back: 0.9 in Q15.
constexpr std::int32_t kFeedbackScale = 29491;

/// The time moves by this share of the distance per sample, in 1/4096: a time constant of 1365 samples, 31 ms.
constexpr std::int32_t kTimeGlide = 3;

/// The index of the longest note shorter than a line at `bpm`; the last one when none is.
unsigned longestNote(int bpm) {
  const std::int64_t limit = std::int64_t{bpm} * BpmSyncDelayLaw::kLineLength;
  const auto fits = [limit](std::int32_t length) { return length < limit; };
  const auto found = std::find_if(kNoteLengths.rbegin(), kNoteLengths.rend(), fits);
  const auto fromTheEnd = found == kNoteLengths.rend() ? 0 : found - kNoteLengths.rbegin();
  return static_cast<unsigned>(kNoteCount - 1) - static_cast<unsigned>(fromTheEnd);
}

std::int32_t timeOf(const Knobs& knobs, int noteKnob) {
  const bool tempoSet = knobs.tempoTenths != BpmSyncDelayLaw::kNeverSet;
  if (!tempoSet && knobs.edit1 == BpmSyncDelayLaw::kNeverSet) {
    return 0;
  }
  const int bpm = tempoSet ? std::max(knobs.tempoTenths / 10, 1) : kStartBpm;
  return kNoteLengths[std::min<std::size_t>(longestNote(bpm), delayNoteIndex(noteKnob))] / bpm;
}

/// The sample between `near` and `beyond` (one older), 12 bits of fraction.
inline std::int32_t between(std::int32_t near, std::int32_t beyond, std::int32_t fraction) {
  return mulShift<12>(beyond - near, fraction) + near;
}

/// The input less the fed-back tap. Both have 30 fractional bits; 7 and then 8 go, so that the sum fits 32 bits.
inline std::int16_t lessTap(std::int32_t input, std::int32_t gain, std::int32_t tap) {
  return static_cast<std::int16_t>(saturate((mulShift<7>(gain, input) - (tap >> 7)) >> 8));
}

}  // namespace

/// The longer the note, the less feedback (an eighth at most); the more feedback, the less input (a half at most).
BpmSyncDelayLaw::Settings BpmSyncDelayLaw::settingsOf(const Knobs& knobs) {
  const int noteKnob = std::max(knobs.edit1, 0);
  const std::int32_t ceiling = kFullScale - (valueAt(linearTable, noteKnob) >> 3);
  const std::int32_t feedback = mul15(ceiling, mul15(valueAt(convexTable, knobs.edit2), kFeedbackScale));
  return {kFullScale - (feedback >> 1), feedback, timeOf(knobs, noteKnob)};
}

void BpmSyncDelayLaw::reset(const Settings& now) {
  // The right tap stays: the first sample of the right side still hears it.
  tapLeft = 0;
  time = wrapShiftLeft(now.time, 12);
}

void BpmSyncDelayLaw::step(const Settings& to, std::int16_t& left, std::int16_t& right) {
  std::int16_t* const line1 = lines;
  std::int16_t* const line2 = lines + kLineLength;
  right = lessTap(right, inputGain.value(), tapRight);
  left = lessTap(left, inputGain.value(), tapLeft);
  line1[writeIndex] = right;
  line2[writeIndex] = left;
  time = wrapAdd(time, wrapMul(wrapSub(to.time, time >> 12), kTimeGlide));
  const unsigned near = (writeIndex - static_cast<unsigned>(time >> 12)) & kMask;
  const unsigned beyond = (near - 1) & kMask;
  const std::int32_t fraction = time & 4095;
  tapLeft = wrapMul(between(line1[near], line1[beyond], fraction), feedback.value());
  tapRight = wrapMul(between(line2[near], line2[beyond], fraction), feedback.value());
  writeIndex = (writeIndex + 1) & kMask;
}

template class TwoKnobEffect<BpmSyncDelayLaw>;

}  // namespace tesh::bramel::plugin::sivray::effects
