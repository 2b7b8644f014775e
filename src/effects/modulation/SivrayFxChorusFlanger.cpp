// The settings, the moving tap and the feedback of the chorus/flanger.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/SivrayFxChorusFlanger.h"

#include "core/FixedPoint.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/ShortLeak.h"
#include "effects/modulation/LfoTables.h"
#include "effects/modulation/TriangleLfo.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

constexpr std::uint32_t kMask = ChorusFlangerLaw::Channel::kLineLength - 1;

/// The first quarter of the Depth knob brings the wet signal in, 1/32 a step; the rest raises the feedback to 0.99.
constexpr int kFullWetKnob = 32;
constexpr std::int32_t kWetPerKnob = 1024;
constexpr std::int32_t kLargestFeedback = 32440;

/// A one-pole smoothing of the triangle at `phase` by 1/256 per sample. It needs no limit: of values up to 32768 and
/// 32767 it makes 32767 at most.
std::int32_t followed(std::int32_t phase, std::int32_t follow) { return (triangle(phase) + follow * 255) >> 8; }

}  // namespace

ChorusFlangerLaw::Settings ChorusFlangerLaw::settingsOf(const Knobs& knobs) {
  const int above = std::max(knobs.edit2 - kFullWetKnob, 0);
  return {static_cast<std::int32_t>(valueAt(lfoTable, knobs.edit1)), above * kLargestFeedback / (127 - kFullWetKnob),
          std::min(kWetPerKnob * knobs.edit2, kFullScale)};
}

void ChorusFlangerLaw::stepChannel(Channel& channel, std::int32_t channelPhase, std::int16_t& sample) const {
  channel.follow = followed(channelPhase, channel.follow);
  const std::int32_t delay = channel.follow * kDelayPerTriangle + kLeastDelay;
  const std::uint32_t read = writeIndex - static_cast<std::uint32_t>(delay >> 16);
  const std::int32_t a = channel.line[read & kMask];
  const std::int32_t b = channel.line[(read - 1) & kMask];
  const std::int32_t tap = shortLeak(shortLeakTwice(a + mulShift<16>(b - a, delay & 65535)));
  const std::int32_t in = sample;
  channel.line[writeIndex] = static_cast<std::int16_t>(saturate(in + mul15(feedback.value(), tap)));
  channel.line[Channel::kLineLength] = channel.line[0];
  sample = static_cast<std::int16_t>(saturate(in + mul15(wet.value(), tap)));
}

void ChorusFlangerLaw::step(const Settings& to, std::int16_t& left, std::int16_t& right) {
  phase = wrapAdd(phase, to.lfoStep);
  stepChannel(leftChannel, phase, left);
  stepChannel(rightChannel, wrapAdd(phase, kRightPhaseLead), right);
  writeIndex = (writeIndex + 1) & kMask;
}

void ChorusFlangerLaw::skip(const Settings& to, unsigned count) {
  for (unsigned i = 0; i < count; ++i) {
    phase = wrapAdd(phase, to.lfoStep);
    leftChannel.follow = followed(phase, leftChannel.follow);
    rightChannel.follow = followed(wrapAdd(phase, kRightPhaseLead), rightChannel.follow);
  }
  writeIndex = (writeIndex + count) & kMask;
}

template class TwoKnobEffect<ChorusFlangerLaw>;

}  // namespace tesh::bramel::plugin::sivray::effects
