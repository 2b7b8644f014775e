// The moving tap, its inversion and the feedback of the chorus/flanger.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/SivrayFxChorusFlanger.h"

#include <algorithm>

#include "core/FixedPoint.h"
#include "effects/modulation/LfoTables.h"
#include "effects/modulation/TriangleLfo.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

/// The first quarter of the knob brings the wet signal in.
std::int32_t wetOfKnob(int knob) { return std::min(1024 * knob, kFullScale); }

/// The rest of the knob raises the feedback.
std::int32_t feedbackOfKnob(int knob) { return knob <= 32 ? 0 : (knob - 32) * 32440 / 95; }

/// Delay in samples, 16 fractional bits: 3 to 336.5 samples.
std::int32_t delayOf(std::int32_t follow) { return follow * 667 + 196608; }

/// A one-pole smoothing of 1/256.
std::int32_t followed(std::int32_t triangleValue, std::int32_t follow) {
  return saturate((triangleValue + follow * 255) >> 8);
}

}  // namespace

int SivrayFxChorusFlanger::setParameter(unsigned index, int value) {
  const int knob = value & 127;
  switch (index) {
    case kEdit1:
      edit1 = knob;
      break;
    case kEdit2:
      edit2 = knob;
      break;
    default:
      return 0;
  }
  const auto step = static_cast<std::int32_t>(lfoTable[static_cast<std::size_t>(edit1.load())]);
  pending.post({step, feedbackOfKnob(edit2), wetOfKnob(edit2)});
  return knob;
}

void SivrayFxChorusFlanger::reset() {
  leftChannel = {};
  rightChannel = {};
  feedback.setNow(live.feedback);
  wet.setNow(live.wet);
  phase = 0;
}

void SivrayFxChorusFlanger::notify(int code) {
  if (code == kMarloRestart || code == kRestart) {
    reset();
  }
}

template <bool kResting>
void SivrayFxChorusFlanger::render(std::int16_t* left, std::int16_t* right, unsigned count) {
  constexpr std::uint32_t kMask = kLineLength - 1;
  const std::int32_t k = glideFactor(immediate);
  SmoothedValue feedbackNow = feedback;
  SmoothedValue wetNow = wet;
  std::int32_t phaseNow = phase;
  std::uint32_t write = writeIndex;

  const auto step = [&](Channel& channel, std::int32_t channelPhase, std::int16_t& sample) {
    channel.follow = followed(triangle(channelPhase), channel.follow);
    const std::int32_t delay = delayOf(channel.follow);
    const std::uint32_t read = write - static_cast<std::uint32_t>(delay >> 16);
    const std::int32_t a = channel.line[read & kMask];
    const std::int32_t b = channel.line[(read - 1) & kMask];
    const std::int32_t tap = leak(leak(leak(a + mulShift<16>(b - a, delay & 65535))));
    const std::int32_t in = sample;
    channel.line[write] = static_cast<std::int16_t>(saturate(in + mul15(feedbackNow.value(), tap)));
    sample = static_cast<std::int16_t>(saturate(in + mul15(wetNow.value(), tap)));
  };

  for (unsigned i = 0; i < count; ++i) {
    if constexpr (!kResting) {
      wetNow.glide(live.wet, k);
      feedbackNow.glide(live.feedback, k);
    }
    phaseNow = wrapAdd(phaseNow, live.lfoStep);
    step(leftChannel, phaseNow, left[i]);
    step(rightChannel, wrapAdd(phaseNow, kRightPhaseLead), right[i]);
    write = (write + 1) & kMask;
  }
  feedback = feedbackNow;
  wet = wetNow;
  phase = phaseNow;
  writeIndex = write;
}

void SivrayFxChorusFlanger::process(StereoBlock& block, unsigned count) {
  for (unsigned start = 0; start < count; start += kControlGrid) {
    pending.takeInto(live);
    const unsigned run = std::min(count - start, kControlGrid);
    if (feedback.restsAt(live.feedback) && wet.restsAt(live.wet)) {
      render<true>(block.left + start, block.right + start, run);
    } else {
      render<false>(block.left + start, block.right + start, run);
    }
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
