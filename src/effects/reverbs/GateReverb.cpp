// The gate's four rules, and the per-sample law of the gate reverb.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/reverbs/GateReverb.h"

#include <algorithm>

#include "effects/interfaces/KnobTables.h"

namespace tesh::bramel::plugin::sivray::effects {

using cofu::core::mul15;
using cofu::core::saturate;
using cofu::core::wrapAbs;

namespace {

constexpr int kStartHold = 30;
constexpr int kStartLevel = 100;

constexpr std::int32_t kThreshold = 3276;                                 ///< A tenth of full scale.
constexpr std::int32_t kPeakDecay = 32741;                                ///< Q15 per sample.
constexpr std::int32_t kInputLevel = squareTable[80] >> 2;                ///< Q15.
constexpr std::int32_t kFeedback = ((convexTable[63] * 5) >> 4) + 20480;  ///< Q15.

/// Shares of the remaining distance per sample, 24-bit fractions.
constexpr std::int64_t kAttack = 15544301;
constexpr std::int64_t kRelease = 16762526;

/// The attack aims above full gain, so that it gets there.
constexpr std::int32_t kAttackAim = 39320;

/// The counter runs from 2^31 - 1 to 0 in 1 ms at knob 0 and in 1 s at 127.
std::int32_t holdStepFor(int knob) {
  const double position = knob / 127.0;
  return static_cast<std::int32_t>(2147483647 / (44.1 * (1 + 999 * (position * position))));
}

}  // namespace

void ReverbGate::countHold(std::int32_t holdStep) {
  holdCounter -= holdStep;
  if (holdCounter < 0) {
    holdCounter = kHoldStart;
    state = State::release;
  }
}

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
  peak = std::max({wrapAbs(left), wrapAbs(right), mul15(peak, kPeakDecay)});
  moveState(holdStep);
  if (state == State::attack) {
    const auto rise = static_cast<std::int32_t>((kAttack * (kAttackAim - gain)) >> 24);
    gain = std::min(gain + rise, cofu::core::kFullScale);
  } else if (state == State::release) {
    gain = static_cast<std::int32_t>((kRelease * gain) >> 24);
  }
  return gain;
}

GateReverb::GateReverb() : hold(kStartHold), wetLevel(kStartLevel), live(settingsFor(kStartHold, kStartLevel)) {}

GateReverb::Settings GateReverb::settingsFor(int hold, int wetLevel) {
  return {holdStepFor(hold), squareTable[static_cast<std::size_t>(wetLevel)]};
}

int GateReverb::setEdit(unsigned index, int value) {
  if (index > 1) {
    return 0;
  }
  const int knob = value & 127;
  (index == 0 ? hold : wetLevel) = knob;
  pending.post(settingsFor(hold, wetLevel));
  return knob;
}

void GateReverb::reset() {
  network.clear();
  level.setNow(live.level);
  gate.reset();
}

void GateReverb::process(StereoBlock& block, unsigned count) {
  for (unsigned start = 0; start < count; start += kControlGrid) {
    pending.takeInto(live);
    runGrid(block, start, std::min(count, start + kControlGrid));
  }
}

void GateReverb::runGrid(StereoBlock block, unsigned start, unsigned end) {
  const std::int32_t k = glideFactor(immediate);
  ReverbNetwork net = network;
  ReverbGate inputGate = gate;
  for (unsigned i = start; i < end; ++i) {
    level.glide(live.level, k);
    const std::int32_t left = block.left[i];
    const std::int32_t right = block.right[i];
    const ReverbNetwork::Output wet = net.step(mul15(left + right, kInputLevel), kFeedback);
    const std::int32_t gain = inputGate.step(left, right, live.holdStep);
    const std::int32_t late = mul15(mul15(gain, wet.late), level.value());
    const std::int32_t early = mul15(mul15(mul15(gain, wet.early), level.value()), kEarlyGain);
    block.right[i] = static_cast<std::int16_t>(saturate(right + late));
    block.left[i] = static_cast<std::int16_t>(saturate(left + early));
  }
  network = net;
  gate = inputGate;
}

}  // namespace tesh::bramel::plugin::sivray::effects
