// The settings and the law of the tempo-synchronised delay.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/delays/SivrayFxBpmSyncDelay.h"

#include "effects/delays/BpmDelayStep.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/TempoTables.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

constexpr int kStartBpm = 120;

/// Largest feedback: 0.9 in Q15.
constexpr std::int32_t kFeedbackScale = 29491;

/// The time moves by this share of the distance per sample, in 1/4096: a time constant of 1365 samples, 31 ms.
constexpr std::int32_t kTimeGlide = 3;

/// The index of the longest note that fits a line at `bpm`; the last index if none fits.
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

/// The time (12 fractional bits) one sample later on its way to `target`, in whole samples.
inline std::int32_t nextTime(std::int32_t time, std::int32_t target) {
  return wrapAdd(time, wrapMul(wrapSub(target, time >> 12), kTimeGlide));
}

}  // namespace

/// A longer note reduces the feedback, by up to an eighth; more feedback reduces the input, by up to a half.
BpmSyncDelayLaw::Settings BpmSyncDelayLaw::settingsOf(const Knobs& knobs) {
  const int noteKnob = std::max(knobs.edit1, 0);
  const std::int32_t ceiling = kFullScale - (valueAt(linearTable, noteKnob) >> 3);
  const std::int32_t feedback = mul15(ceiling, mul15(valueAt(convexTable, knobs.edit2), kFeedbackScale));
  return {kFullScale - (feedback >> 1), feedback, timeOf(knobs, noteKnob)};
}

void BpmSyncDelayLaw::reset(const Settings& now) {
  // The right tap is kept: the right channel's first sample still uses it.
  taps.left = 0;
  time = wrapShiftLeft(now.time, 12);
}

BpmSyncDelayLaw::Taps BpmSyncDelayLaw::lastTaps() const {
  const unsigned position = writeIndex - 1;
  return {tapAt<OneSample>(*this, 0, position).v, tapAt<OneSample>(*this, 1, position).v, feedback.value()};
}

void BpmSyncDelayLaw::step(const Settings& to, std::int16_t& left, std::int16_t& right) {
  const auto outRight = lessTap<OneSample>({right}, inputGain.value(), {taps.right}, taps.feedback);
  const auto outLeft = lessTap<OneSample>({left}, inputGain.value(), {taps.left}, taps.feedback);
  outRight.store(&right);
  outLeft.store(&left);
  outRight.store(line(0) + writeIndex);
  outLeft.store(line(1) + writeIndex);
  moveOn(1);
  time = nextTime(time, to.time);
  taps = lastTaps();
}

/// The time must be at rest too, and the last taps must be ones that lanes can read. Lanes cannot read the sample just
/// written, which is in the same register, nor the oldest one, which that register overwrites.
bool BpmSyncDelayLaw::fitsLanes(const Settings& now) const {
  const unsigned age = static_cast<unsigned>(now.time) & (kLineLength - 1);
  return time >> 12 == now.time && age >= kMostLanes && age < kLineLength - 1 && taps == lastTaps();
}

const RunInLanes<BpmSyncDelayLaw> BpmSyncDelayLaw::runBaseline = runDelay<Samples128>;

void BpmSyncDelayLaw::skip(const Settings& to, unsigned count) {
  moveToRest(time, count, [&to](std::int32_t& moved) { moved = nextTime(moved, to.time); });
  taps = {0, 0, feedback.value()};
  moveOn(count);
}

template class TwoKnobEffect<BpmSyncDelayLaw>;

}  // namespace tesh::bramel::plugin::sivray::effects
