// The gate's rules, and the settings and the law of the gate reverb.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/reverbs/GateReverb.h"

#include "core/EngineRate.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/reverbs/NetworkStep.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

/// Peak at which the gate opens: a tenth of full scale.
constexpr std::int32_t kThreshold = 3276;

/// Share of the peak that is kept per sample, Q15: a time constant of 1214 samples (28 ms).
constexpr std::int32_t kPeakKept = 32741;

/// Per sample, in 24-bit fractions: the share of the distance by which the gate opens (0.9265, so within two samples),
/// and the share that it keeps while it closes (0.99912, a time constant of 26 ms).
constexpr std::int64_t kAttackShare = 15544301;
constexpr std::int64_t kReleaseKept = 16762526;

/// Target of the attack: 1.2, above full gain, so that full gain is reached.
constexpr std::int32_t kAttackAim = 39320;

/// The hold at knob 0, and its increase up to knob 127 along a square curve; milliseconds.
constexpr double kLeastHold = 1;
constexpr double kHoldSpan = 999;

constexpr double kSamplesPerMillisecond = kEngineRate / 1000.0;

/// The step by which the counter runs from its start to 0 within the hold.
std::int32_t holdStepFor(int knob) {
  const double position = static_cast<double>(knob) / kTopKnob;
  const double hold = kLeastHold + kHoldSpan * (position * position);
  return static_cast<std::int32_t>(ReverbGate::kHoldStart / (kSamplesPerMillisecond * hold));
}

}  // namespace

void ReverbGate::countHold(std::int32_t holdStep) {
  holdCounter -= holdStep;
  if (holdCounter < 0) {
    holdCounter = kHoldStart;
    state = State::release;
  }
}

/// A loud peak opens a gate that is not in its hold. During the hold, each loud peak restarts the counter.
void ReverbGate::moveState(std::int32_t holdStep) {
  if (peak < kThreshold) {
    if (state != State::release) {
      state = State::hold;
      countHold(holdStep);
    }
    return;
  }
  holdCounter = kHoldStart;
  if (state == State::hold) {
    countHold(holdStep);
  } else {
    state = State::attack;
  }
}

std::int32_t ReverbGate::step(std::int32_t left, std::int32_t right, std::int32_t holdStep) {
  peak = std::max({wrapAbs(left), wrapAbs(right), mul15(peak, kPeakKept)});
  moveState(holdStep);
  if (state == State::attack) {
    const auto rise = static_cast<std::int32_t>((kAttackShare * (kAttackAim - gain)) >> 24);
    gain = std::min(gain + rise, kFullScale);
  } else if (state == State::release) {
    gain = static_cast<std::int32_t>((kReleaseKept * gain) >> 24);
  }
  return gain;
}

void ReverbGate::follow(const std::int16_t* left, const std::int16_t* right, std::int16_t* gains, unsigned count,
                        std::int32_t holdStep) {
  ReverbGate now = *this;  // A copy, which the compiler keeps in registers.
  for (unsigned i = 0; i < count; ++i) {
    gains[i] = static_cast<std::int16_t>(now.step(left[i], right[i], holdStep));
  }
  *this = now;
}

GateReverb::Settings GateReverb::settingsOf(const Knobs& knobs) {
  return {holdStepFor(knobs.edit1), valueAt(squareTable, knobs.edit2)};
}

void GateReverb::step(const Settings&, std::int16_t& left, std::int16_t& right) {
  runGated<OneSample>(*this, &left, &right, 1);
}

const RunInLanes<GateReverb> GateReverb::runBaseline = runGated<Samples128>;

void GateReverb::skip(const Settings& to, unsigned count) {
  moveToRest(gate, count, [&to](ReverbGate& moved) { moved.step(0, 0, to.holdStep); });
  moveOn(count);
}

template class TwoKnobEffect<GateReverb>;

}  // namespace tesh::bramel::plugin::sivray::effects
