// The knobs and the per-sample law of the tempo-locked delay.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/delays/SivrayFxBpmSyncDelay.h"

#include <algorithm>

#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/TempoTables.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

/// The most that is fed back: 0.9.
constexpr std::int32_t kFeedbackScale = 29491;

/// What the time moves per sample and unit of distance, in 1/4096.
constexpr std::int32_t kTimeGlide = 3;

/// The index of the longest note shorter than a line of `lineSamples` at `bpm`; the last one when none is.
unsigned longestNote(int bpm, unsigned lineSamples) {
  const std::int64_t limit = std::int64_t{bpm} * lineSamples;
  const auto fits = [limit](std::int32_t length) { return length < limit; };
  const auto found = std::find_if(kNoteLengths.rbegin(), kNoteLengths.rend(), fits);
  const auto fromTheEnd = found == kNoteLengths.rend() ? 0 : found - kNoteLengths.rbegin();
  return static_cast<unsigned>(kNoteCount - 1) - static_cast<unsigned>(fromTheEnd);
}

/// Between two samples of a line, 12 bits of fraction.
inline std::int32_t between(std::int32_t near, std::int32_t beyond, std::int32_t fraction) {
  return mulShift<12>(beyond - near, fraction) + near;
}

/// The input less what comes back, from 30 bits down to a sample.
inline std::int16_t lessTap(std::int32_t input, std::int32_t gain, std::int32_t tap) {
  return static_cast<std::int16_t>(saturate((mulShift<7>(gain, input) - (tap >> 7)) >> 8));
}

}  // namespace

int SivrayFxBpmSyncDelay::setParameter(unsigned index, int value) {
  if (index != kEdit1 && index != kEdit2) {
    return 0;
  }
  const int knob = value & 127;
  if (index == kEdit1) {
    edit1 = knob;
    computeTime();
  } else {
    edit2 = knob;
  }
  computeFeedback();
  return knob;
}

void SivrayFxBpmSyncDelay::setTempo(int tempoTenths) {
  bpm = std::max(tempoTenths / 10, 1);
  noteLimit = longestNote(bpm, kLineLength);
  computeTime();
}

void SivrayFxBpmSyncDelay::computeTime() {
  const std::size_t note = std::min<std::size_t>(noteLimit, delayNoteIndex(edit1));
  timeTarget = kNoteLengths[note] / bpm;
}

void SivrayFxBpmSyncDelay::computeFeedback() {
  const std::int32_t ceiling = kFullScale - (linearTable[static_cast<std::size_t>(edit1)] >> 3);
  const std::int32_t amount = mul15(ceiling, mul15(convexTable[static_cast<std::size_t>(edit2)], kFeedbackScale));
  feedback = amount;
  inputGain = kFullScale - (amount >> 1);
}

void SivrayFxBpmSyncDelay::reset() {
  lines = assigner->acquire();
  std::fill_n(lines, requiredSamples(), std::int16_t{0});
  // The right tap stays: the first sample of the right side still hears it.
  flow.tapLeft = 0;
  flow.inputGain.setNow(inputGain);
  flow.feedback.setNow(feedback);
  flow.time = wrapShiftLeft(timeTarget, 12);
}

void SivrayFxBpmSyncDelay::notify(int code) {
  if (code == kRestart) {
    reset();
  }
}

void SivrayFxBpmSyncDelay::process(StereoBlock& block, unsigned count) {
  const Targets targets{inputGain, feedback, timeTarget};
  Flow now = flow;
  const bool resting = now.inputGain.restsAt(targets.inputGain) && now.feedback.restsAt(targets.feedback);
  const std::int32_t k = glideFactor(immediate);
  std::int16_t* const line1 = lines;
  std::int16_t* const line2 = lines + kLineLength;
  for (unsigned i = 0; i < count; ++i) {
    if (!resting) {
      now.inputGain.glide(targets.inputGain, k);
      now.feedback.glide(targets.feedback, k);
    }
    const std::int16_t right = lessTap(block.right[i], now.inputGain.value(), now.tapRight);
    const std::int16_t left = lessTap(block.left[i], now.inputGain.value(), now.tapLeft);
    block.left[i] = left;
    block.right[i] = right;
    line1[now.writeIndex] = right;
    line2[now.writeIndex] = left;
    now.time = wrapAdd(now.time, wrapMul(wrapSub(targets.time, now.time >> 12), kTimeGlide));
    const unsigned near = (now.writeIndex - static_cast<unsigned>(now.time >> 12)) & kMask;
    const unsigned beyond = (near - 1) & kMask;
    const std::int32_t fraction = now.time & 4095;
    now.tapLeft = wrapMul(between(line1[near], line1[beyond], fraction), now.feedback.value());
    now.tapRight = wrapMul(between(line2[near], line2[beyond], fraction), now.feedback.value());
    now.writeIndex = (now.writeIndex + 1) & kMask;
  }
  flow = now;
}

}  // namespace tesh::bramel::plugin::sivray::effects
