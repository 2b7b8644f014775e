// The knobs of the state-variable filter and the coefficients that its ramps lead to.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/filters/SivrayFxTolvanFilter.h"

#include <algorithm>

#include "effects/filters/CutoffTables.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

constexpr std::int64_t kOne24 = 16777216;
constexpr std::int32_t kHalf24 = 8388608;

/// Above this cutoff the resonance is taken back.
constexpr std::int32_t kResonanceKnee = 1367566549;

/// 2147314568 * (1 - (1 - knob / 127)^2), truncated, exactly, in integers.
std::int32_t resonanceOf(int knob) {
  const std::int64_t rest = 127 - knob;
  return static_cast<std::int32_t>(2147314568 * (127 * 127 - rest * rest) / (127 * 127));
}

/// 1.0 up to a very high resonance, a half at the highest.
std::int32_t inputGainOf(std::int32_t resonance) {
  const std::int32_t room = std::min((lanes::kFull24 - (resonance >> 7)) * 64, lanes::kFull24);
  return ((room >> 1) + kHalf24) >> 9;
}

TolvanMode modeOf(int number) {
  return number == 0 ? TolvanMode::kLowpass : (number == 1 ? TolvanMode::kHighpass : TolvanMode::kBandpass);
}

}  // namespace

SivrayFxTolvanFilter::SivrayFxTolvanFilter(int modeNumber) : mode(modeOf(modeNumber)) {}

SivrayFxTolvanFilter::Settings SivrayFxTolvanFilter::settingsOf(int cutoffKnob, int resonanceKnob) {
  const std::int32_t resonance = resonanceOf(resonanceKnob);
  return {cutoffTable[static_cast<std::size_t>(cutoffKnob)], resonance, inputGainOf(resonance)};
}

int SivrayFxTolvanFilter::setParameter(unsigned index, int value) {
  if (index != kEdit1 && index != kEdit2) {
    return 0;
  }
  const int knob = value & 127;
  (index == kEdit1 ? edit1 : edit2) = knob;
  pending.post(settingsOf(edit1, edit2));
  return knob;
}

void SivrayFxTolvanFilter::reset() {
  pending.raise();
  clearFilter();
}

void SivrayFxTolvanFilter::notify(int code) {
  if (code == kRestart) {
    clearFilter();
  }
}

void SivrayFxTolvanFilter::clearFilter() { state = {}; }

void SivrayFxTolvanFilter::process(StereoBlock& block, unsigned count) {
  for (unsigned start = 0; start < count; start += kControlGrid) {
    pending.takeInto(live);
    aimRamps();
    renderGrid(block.left + start, block.right + start, std::min(count - start, kControlGrid));
  }
}

void SivrayFxTolvanFilter::aimRamps() {
  const std::int64_t above = std::max(live.cutoff - kResonanceKnee, 0);
  const std::int64_t takenBack = (((above * above) >> 31) >> 7) * 3 >> 1;
  const std::int64_t d = ((kOne24 - takenBack) * (live.resonance >> 7)) >> 24;
  damping.aimAt(static_cast<std::int32_t>(((kOne24 - (live.cutoff >> 8)) * (kOne24 - d)) >> 24));
  frequency.aimAt(static_cast<std::int32_t>((((d >> 1) + kHalf24) * (live.cutoff >> 7)) >> 24));
}

void SivrayFxTolvanFilter::renderGrid(std::int16_t* left, std::int16_t* right, unsigned count) {
  switch (mode) {
    case TolvanMode::kLowpass:
      return renderTolvan<TolvanMode::kLowpass>(state, damping, frequency, live.inputGain, left, right, count);
    case TolvanMode::kHighpass:
      return renderTolvan<TolvanMode::kHighpass>(state, damping, frequency, live.inputGain, left, right, count);
    case TolvanMode::kBandpass:
      return renderTolvan<TolvanMode::kBandpass>(state, damping, frequency, live.inputGain, left, right, count);
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
