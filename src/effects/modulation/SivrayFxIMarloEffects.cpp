// The three laws of the Marlo family. Every step is single precision, one operation after the other as written.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/SivrayFxIMarloEffects.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace tesh::bramel::plugin::sivray::effects {

namespace {

// What depends on the sample rate alone is computed in double precision and then kept as single.
constexpr double kSampleRate = 44100.0;
constexpr auto kRate = static_cast<float>(kSampleRate);
constexpr auto kChorusDepth = static_cast<float>(kSampleRate * 0.004267 * 0.2);
constexpr auto kPhaseDepth = static_cast<float>(kSampleRate * 0.004096 * 0.2);
constexpr auto kChorusBase = static_cast<float>(kSampleRate * 0.0042666);
constexpr auto kPhaseBase = static_cast<float>(kSampleRate * 0.001024);
constexpr auto kFastIncrement = static_cast<float>(20.8 / kSampleRate);
constexpr auto kSlowIncrement = static_cast<float>(1.08 / kSampleRate);
constexpr auto kStartDepth = static_cast<float>(0.0016 * kSampleRate);

/// Feedback factor of a one-pole smoother with the given corner.
float smootherCoefficient(double hertz) {
  const double x = 4.0 - 2.0 * std::cos(2.0 * std::numbers::pi * hertz / kSampleRate);
  return static_cast<float>((std::sqrt(x * x - 4.0) - x) * -0.5);
}

/// Feedback factor of a one-pole highpass with the given corner.
float highpassCoefficient(double hertz) {
  const double v = -2.0 * std::cos(2.0 * std::numbers::pi * hertz / kSampleRate);
  return static_cast<float>((std::sqrt(16.0 - 4.0 * v * v) - 4.0) / (2.0 * v));
}

float inputScaleOf(float coefficient) { return (coefficient + 1.0F) * 0.5F; }

const float kLfoCoefficient = smootherCoefficient(3.3865754);
const float kDryHighpass = highpassCoefficient(48.228771);
const float kWetHighpass = highpassCoefficient(32.152514);
const float kDryScale = inputScaleOf(kDryHighpass);
const float kWetScale = inputScaleOf(kWetHighpass);

/// Rounds what is too small to matter to 0, by way of the coarser grid around 1.0.
float flushed(float x) {
  const float lifted = x + 1.0F;
  return lifted - 1.0F;
}

float limited(float x) { return std::clamp(flushed(x), -1.0F, 1.0F); }

using Voices = float __attribute__((vector_size(16)));
using VoiceMasks = std::int32_t __attribute__((vector_size(16)));

/// A sine of w * pi / 2 for w in -1 .. 1, lifted to 0 .. 2.
Voices liftedSine(Voices phase) {
  const auto magnitude = std::bit_cast<Voices>(std::bit_cast<VoiceMasks>(phase) & 0x7FFFFFFF);
  const Voices w = magnitude - 1.0F;
  const Voices square = w * w;
  const Voices linear = w * 1.5703204F;
  const Voices cubic = square * 0.6421143F * w;
  const Voices fifth = square * square * w * 0.07186159F;
  return linear - cubic + fifth + 1.0000676F;
}

/// `value` less `amount` in the lanes of `mask`.
Voices lessWhere(VoiceMasks mask, Voices value, float amount) {
  const Voices amounts{amount, amount, amount, amount};
  return value - std::bit_cast<Voices>(mask & std::bit_cast<VoiceMasks>(amounts));
}

Voices wrappedPhase(Voices phase) { return lessWhere(phase > 2.0F, phase, 4.0F); }

}  // namespace

SivrayFxIMarloEffects::SivrayFxIMarloEffects(int effectMode) : mode(effectMode) { reset(); }

int SivrayFxIMarloEffects::setParameter(unsigned index, int value) {
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
  pending.post({static_cast<float>(edit1) / 127.0F, static_cast<float>(edit2) / 127.0F});
  return knob;
}

void SivrayFxIMarloEffects::reset() {
  leftChannel = {};
  rightChannel = {};
  writeIndex = 0;
  phase = 0.0F;
  depthSmooth = kStartDepth;
  spreadSmooth = 1.0F;
  constexpr Voices kStart{0.6666667F, -0.6666667F, -2.0F, -2.0F};
  leftBank = {kStart, kStart};
  rightBank = leftBank;
}

void SivrayFxIMarloEffects::notify(int code) {
  if (code == kMarloRestart || code == kRestart) {
    reset();
  }
}

void SivrayFxIMarloEffects::takeSettings() {
  if (!pending.takeInto(live)) {
    return;
  }
  rate = (live.speed * 6.875F + 0.125F) / kRate;
  depthStep = (live.speed * 0.375F + 0.125F) * 0.0128F * kRate * 0.002F;
  spreadStep = (live.spread * live.spread + 1.0F) * 0.002F;
}

void SivrayFxIMarloEffects::Channel::write(std::size_t at, float x) {
  line[at] = x;
  line[kLineLength] = line[0];
}

/// The line between two samples. A larger position is an older sample, because the write index falls.
float SivrayFxIMarloEffects::Channel::read(float position) const {
  constexpr auto kLength = static_cast<float>(kLineLength);
  const float wrapped = position >= kLength ? position - kLength : position;
  const auto whole = static_cast<std::int32_t>(wrapped);
  const auto i = static_cast<std::size_t>(whole);
  return line[i] + (line[i + 1] - line[i]) * (wrapped - static_cast<float>(whole));
}

/// The smoothed triangle at `lfoPhase`.
float SivrayFxIMarloEffects::Channel::followTriangle(float lfoPhase) {
  const float twice = 2.0F * lfoPhase;
  const float t = lfoPhase >= 0.5F ? twice - 1.0F : 1.0F - twice;
  lfo = t + (lfo - t) * kLfoCoefficient;
  return lfo;
}

float SivrayFxIMarloEffects::Highpass::run(float x, float coefficient, float inputScale) {
  const float scaled = inputScale * x;
  output = flushed(coefficient * output + scaled - previousInput);
  previousInput = scaled;
  return output;
}

float SivrayFxIMarloEffects::chorus(Channel& channel, float lfoPhase, float x) const {
  const float s = channel.followTriangle(lfoPhase);
  const float y = channel.read(s * kChorusDepth + static_cast<float>(writeIndex) + kChorusBase);
  const float dry = channel.dry.run(x, kDryHighpass, kDryScale);
  const float wet = channel.wet.run(y, kWetHighpass, kWetScale);
  return limited((wet * 0.66666F + dry) * 0.75F);
}

float SivrayFxIMarloEffects::phaser(Channel& channel, float lfoPhase, float x) const {
  const float s = channel.followTriangle(lfoPhase);
  const float y = channel.read(s * kPhaseDepth + static_cast<float>(writeIndex) + kPhaseBase);
  return limited((y + x) * 0.75F);
}

float SivrayFxIMarloEffects::ensemble(const Channel& channel, const Bank& bank) const {
  const Voices fast = liftedSine(bank.fast) * 0.499966F * 0.0833333F;
  const Voices slow = liftedSine(bank.slow) * 0.499966F;
  const Voices position = (fast + slow) * depthSmooth + static_cast<float>(writeIndex);
  constexpr auto kLength = static_cast<float>(kLineLength);
  const Voices wrapped = lessWhere(position >= kLength, position, kLength);
  const VoiceMasks whole = __builtin_convertvector(wrapped, VoiceMasks);
  const Voices fraction = wrapped - __builtin_convertvector(whole, Voices);
  const auto at = [&](int voice, int offset) {
    const std::int32_t index = whole[voice] + offset;
    return channel.line[static_cast<std::size_t>(index)];
  };
  const Voices older{at(0, 1), at(1, 1), at(2, 1), 0.0F};
  const Voices newer{at(0, 0), at(1, 0), at(2, 0), 0.0F};
  const Voices y = newer + (older - newer) * fraction;
  return limited((y[0] + y[1] + y[2]) * 0.66666F);
}

/// The left bank runs; the right one stands a distance away from it that the spread sets.
void SivrayFxIMarloEffects::advanceEnsemble() {
  const float distance = (spreadSmooth - 1.0F) * 0.666667F;
  leftBank.fast = wrappedPhase(leftBank.fast + kFastIncrement);
  leftBank.slow = wrappedPhase(leftBank.slow + kSlowIncrement);
  rightBank.fast = wrappedPhase(leftBank.fast + distance);
  rightBank.slow = wrappedPhase(leftBank.slow + distance);
}

void SivrayFxIMarloEffects::advance() {
  depthSmooth = depthSmooth * 0.998F + depthStep;
  spreadSmooth = spreadSmooth * 0.998F + spreadStep;
}

float SivrayFxIMarloEffects::rightPhase() const {
  const float p = phase - (spreadSmooth - 1.0F) * 0.5F;
  return p < 0.0F ? p + 1.0F : p;
}

template <int kMode>
void SivrayFxIMarloEffects::render(std::int16_t* left, std::int16_t* right, unsigned count) {
  for (unsigned i = 0; i < count; ++i) {
    advance();
    const float inLeft = flushed(static_cast<float>(left[i]) / 32767.0F);
    const float inRight = flushed(static_cast<float>(right[i]) / 32767.0F);
    leftChannel.write(writeIndex, inLeft);
    rightChannel.write(writeIndex, inRight);
    float outLeft = 0.0F;
    float outRight = 0.0F;
    if constexpr (kMode == 3) {
      advanceEnsemble();
      outLeft = ensemble(leftChannel, leftBank);
      outRight = ensemble(rightChannel, rightBank);
    } else {
      phase -= rate;
      phase = phase < 0.0F ? phase + 1.0F : phase;
      constexpr auto kLaw = kMode == 1 ? &SivrayFxIMarloEffects::chorus : &SivrayFxIMarloEffects::phaser;
      outLeft = (this->*kLaw)(leftChannel, phase, inLeft);
      outRight = (this->*kLaw)(rightChannel, rightPhase(), inRight);
    }
    left[i] = static_cast<std::int16_t>(outLeft * 32767.0F);
    right[i] = static_cast<std::int16_t>(outRight * 32767.0F);
    writeIndex = (writeIndex - 1) & (kLineLength - 1);
  }
}

void SivrayFxIMarloEffects::process(StereoBlock& block, unsigned count) {
  for (unsigned start = 0; start < count; start += kControlGrid) {
    takeSettings();
    const unsigned run = std::min(count - start, kControlGrid);
    std::int16_t* const left = block.left + start;
    std::int16_t* const right = block.right + start;
    switch (mode) {
      case 1:
        render<1>(left, right, run);
        break;
      case 2:
        render<2>(left, right, run);
        break;
      default:
        render<3>(left, right, run);
        break;
    }
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
