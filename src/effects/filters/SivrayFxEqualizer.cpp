// The glide of the coefficients and the two sections, in single precision one operation after the other.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/filters/SivrayFxEqualizer.h"

#include <algorithm>

#include "effects/filters/EqualizerTables.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

constexpr float kTableScale = 3.0517578e-5F;
constexpr float kGlideShare = 0.003F;
constexpr float kMemoryLimit = 10.0F;
constexpr float kFullScaleFloat = 32767.0F;

/// What the memory loses per sample.
constexpr float kLossR = 0.9998779F;
constexpr float kLossS = 0.99993896F;

/// Takes away what is too small to matter, so that no value becomes subnormal.
inline float flushed(float x) {
  const float lifted = x + 1.0F;
  return lifted - 1.0F;
}

inline float limited(float x, float limit) {
  const float upper = x < limit ? x : limit;
  return upper > -limit ? upper : -limit;
}

float coefficient(std::int16_t entry) { return static_cast<float>(entry) * kTableScale; }

float glide(float from, float to, float share) {
  const float way = to - from;
  return from + way * share;
}

}  // namespace

int SivrayFxEqualizer::setParameter(unsigned index, int value) {
  if (index != kEdit1 && index != kEdit2) {
    return 0;
  }
  const int knob = value & 127;
  (index == kEdit1 ? edit1 : edit2) = knob;
  const LowShelfRow& low = lowShelfTable[static_cast<std::size_t>(edit1)];
  const HighShelfRow& high = highShelfTable[static_cast<std::size_t>(edit2)];
  pending.post({coefficient(low.feedforwardOld), coefficient(low.feedforward), coefficient(low.feedback),
                coefficient(high.feedback1), coefficient(high.gain), coefficient(high.feedback2)});
  return knob;
}

void SivrayFxEqualizer::notify(int code) {
  if (code == kRestart) {
    reset();
  }
}

void SivrayFxEqualizer::process(StereoBlock& block, unsigned count) {
  for (unsigned start = 0; start < count; start += kControlGrid) {
    pending.takeInto(live);
    renderGrid({block.left + start, block.right + start}, std::min(count - start, kControlGrid));
  }
}

SivrayFxEqualizer::Coefficients SivrayFxEqualizer::glided() const {
  const float share = immediate ? 1.0F : kGlideShare;
  return {glide(smoothed.lowFeedforwardOld, live.lowFeedforwardOld, share),
          glide(smoothed.lowFeedforward, live.lowFeedforward, share),
          glide(smoothed.lowFeedback, live.lowFeedback, share),
          glide(smoothed.highFeedback1, live.highFeedback1, share),
          glide(smoothed.highGain, live.highGain, share),
          glide(smoothed.highFeedback2, live.highFeedback2, share)};
}

void SivrayFxEqualizer::renderGrid(StereoBlock block, unsigned count) {
  for (unsigned i = 0; i < count;) {
    const Coefficients next = glided();
    // A glide whose step is lost in rounding has come to rest, and stays there for the whole run.
    const unsigned run = next == smoothed ? count - i : 1;
    smoothed = next;
    renderChannel(smoothed, left, block.left + i, run);
    renderChannel(smoothed, right, block.right + i, run);
    i += run;
  }
}

void SivrayFxEqualizer::renderChannel(const Coefficients& coefficients, Memory& memory, std::int16_t* samples,
                                      unsigned count) {
  const Coefficients k = coefficients;
  Memory m = memory;
  for (unsigned i = 0; i < count; ++i) {
    const float x = static_cast<float>(samples[i]) / kFullScaleFloat;
    m.a = flushed(x * k.highGain + k.highFeedback1 * m.a);
    const float oldB = m.b * kLossR;
    m.b = flushed(limited((m.a - oldB * kLossS * k.highFeedback2) * 4.0F, kMemoryLimit));
    const float low = m.b * k.lowFeedforward + oldB * k.lowFeedforwardOld - m.c * kLossS * kLossR * k.lowFeedback;
    m.c = flushed(limited(2.0F * low, kMemoryLimit));
    samples[i] = static_cast<std::int16_t>(limited(m.c, 1.0F) * kFullScaleFloat);
  }
  memory = m;
}

}  // namespace tesh::bramel::plugin::sivray::effects
