// The settings and the law of the chorus/flanger.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/SivrayFxChorusFlanger.h"

#include "core/FixedPoint.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/modulation/ChorusFlangerStep.h"
#include "registers/Registers128.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

/// The first quarter of the Depth knob raises the wet level, by 1/32 a step; the rest raises the feedback up to 0.99.
constexpr int kFullWetKnob = 32;
constexpr std::int32_t kWetPerKnob = 1024;
constexpr std::int32_t kLargestFeedback = 32440;

}  // namespace

ChorusFlangerLaw::Settings ChorusFlangerLaw::settingsOf(const Knobs& knobs) {
  const int above = std::max(knobs.edit2 - kFullWetKnob, 0);
  return {static_cast<std::int32_t>(valueAt(lfoTable, knobs.edit1)),
          above * kLargestFeedback / (kTopKnob - kFullWetKnob), std::min(kWetPerKnob * knobs.edit2, kFullScale)};
}

void ChorusFlangerLaw::step(const Settings& to, std::int16_t& left, std::int16_t& right) {
  using lanes::OneWord;
  followTriangles(*this, to.lfoStep, 1);
  const auto before = undelayed<OneWord>(*this);
  runChannel(*this, leftChannel.line.data(), before, delaysAt(OneWord{leftChannel.follow}), &left);
  runChannel(*this, rightChannel.line.data(), before, delaysAt(OneWord{rightChannel.follow}), &right);
  moveIndex(1);
}

const RunInLanes<ChorusFlangerLaw> ChorusFlangerLaw::runBaseline = runFlanger<cofu::registers::Registers128>;

void ChorusFlangerLaw::skip(const Settings& to, unsigned count) {
  followTriangles(*this, to.lfoStep, count);
  moveIndex(count);
}

template class TwoKnobEffect<ChorusFlangerLaw>;

}  // namespace tesh::bramel::plugin::sivray::effects
