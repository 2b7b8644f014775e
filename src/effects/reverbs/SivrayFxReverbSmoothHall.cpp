// The knobs and the per-sample law of the hall.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/reverbs/SivrayFxReverbSmoothHall.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/FixedPoint.h"
#include "effects/interfaces/KnobTables.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

using cofu::core::kFullScale;

// Three areas, one behind the other: the predelay line, the tank in rows of four, the diffuser in rows of four.
constexpr unsigned kPredelayMask = 65535;
constexpr unsigned kTankMask = 32767;
constexpr unsigned kDiffuserMask = 16383;
constexpr std::size_t kTankStart = kPredelayMask + 1;
constexpr std::size_t kDiffuserStart = kTankStart + kHallLanes * (kTankMask + 1);
constexpr std::size_t kMemorySamples = kDiffuserStart + kHallLanes * (kDiffuserMask + 1);

constexpr std::int32_t kInputScale = 9830;  ///< 0.3 in Q15.
constexpr std::int32_t kEarlyGain = 3932;   ///< 0.12 in Q15.
constexpr unsigned kPredelay = 442;         ///< 10 ms, and one sample.

std::size_t rowAt(std::uint32_t position, unsigned mask) { return kHallLanes * (position & mask); }

/// Lane k of the row that was written `delays[k]` samples ago.
inline Lanes gather(const std::int16_t* rows, const HallDelays& delays, std::uint32_t position, unsigned mask) {
  return Lanes{rows[rowAt(delays[0] + position, mask)], rows[rowAt(delays[1] + position, mask) + 1],
               rows[rowAt(delays[2] + position, mask) + 2], rows[rowAt(delays[3] + position, mask) + 3]};
}

}  // namespace

SivrayFxReverbSmoothHall::SivrayFxReverbSmoothHall()
    : dampers(loadRow(hallDampers().data())), coefficients(loadRow(kDiffuserCoefficients.data())) {
  gains = loadRow(hallGains(0).data());
  initParameters();
}

void SivrayFxReverbSmoothHall::activate() {
  BasicEffect::activate();
  if (memory.empty()) {
    // Whoever makes the effect wakes it before audio runs.
    cofu::core::mayWait([this] { memory = platform::ZeroedArray<std::int16_t>(kMemorySamples); });
  }
}

void SivrayFxReverbSmoothHall::reset() {
  activate();
  flow.diffuserInput = Lanes{};
  flow.diffuserOutput = Lanes{};
  flow.damper = Lanes{};
  level.setNow(pending.peek().level);
  if (std::exchange(hasWritten, false)) {
    std::fill_n(memory.data(), memory.size(), std::int16_t{0});
  }
}

void SivrayFxReverbSmoothHall::setParameter(unsigned index, float value) {
  BasicEffect::setParameter(index, value);
  if (index > 1) {
    return;
  }
  const auto knob = static_cast<unsigned>(std::lround(value * 127.0F)) & 127;
  (index == 0 ? decayKnob : levelKnob) = knob;
  pending.post({decayKnob, linearTable[levelKnob]});
}

void SivrayFxReverbSmoothHall::takeSettings() {
  if (pending.takeInto(live)) {
    gains = loadRow(hallGains(live.decayKnob).data());
  }
}

void SivrayFxReverbSmoothHall::processInt16(vimo::Int16Block in, vimo::Int16Block out, unsigned count) {
  hasWritten = true;
  for (unsigned start = 0; start < count; start += kControlGrid) {
    takeSettings();
    runGrid(in, out, start, std::min(count, start + kControlGrid));
  }
}

/// The early sound on top of the predelayed one.
std::int32_t SivrayFxReverbSmoothHall::diffusedInput(const Flow& now, std::int32_t mono) {
  std::int16_t* const predelay = memory.data();
  predelay[now.position & kPredelayMask] = static_cast<std::int16_t>(mono);
  const std::int32_t delayed = predelay[(kPredelay + now.position) & kPredelayMask];
  return cofu::core::saturate(delayed + cofu::core::mul15(mono, kEarlyGain));
}

/// One sample through diffuser and tank. Lanes 2 and 3 of the diffuser's output are the wet sound.
void SivrayFxReverbSmoothHall::step(Flow& now, std::int32_t mono) {
  std::int16_t* const diffuser = memory.data() + kDiffuserStart;
  std::int16_t* const tank = memory.data() + kTankStart;
  const std::uint32_t i = now.position;

  now.diffuserInput[0] = diffusedInput(now, mono);
  const Lanes tap = gather(diffuser, kDiffuserDelays, i, kDiffuserMask);
  const Lanes inner = mul15(coefficients, tap) + now.diffuserInput;
  storeRow(diffuser + rowAt(i, kDiffuserMask), saturate(inner));
  now.diffuserOutput = saturate(tap - mul15(coefficients, inner));
  now.diffuserInput[1] = now.diffuserOutput[0];

  const Lanes fed = Lanes{} + now.diffuserOutput[1];
  const Lanes comb = saturate(mul15(gather(tank, kTankDelays, i, kTankMask), gains) + fed);
  now.damper = saturate(mul15(now.damper + comb, dampers) - comb);
  storeRow(tank + rowAt(i, kTankMask), now.damper);

  now.diffuserInput[2] = cofu::core::saturate(sumOf(gather(tank, kTapsB, i, kTankMask)) >> 1);
  now.diffuserInput[3] = cofu::core::saturate(sumOf(gather(tank, kTapsA, i, kTankMask)) >> 1);
  now.position = i - 1;
}

void SivrayFxReverbSmoothHall::runGrid(vimo::Int16Block in, vimo::Int16Block out, unsigned start, unsigned end) {
  using cofu::core::mul15;
  using cofu::core::saturate;
  Flow now = flow;
  for (unsigned i = start; i < end; ++i) {
    if (state->tickListener != nullptr) {
      state->tickListener(*this);
    }
    level.glide(live.level, kGlide);
    const std::int32_t left = std::max<std::int32_t>(in.left[i], -kFullScale);
    const std::int32_t right = std::max<std::int32_t>(in.right[i], -kFullScale);
    step(now, saturate(mul15(left + right, kInputScale)));
    out.left[i] = static_cast<std::int16_t>(saturate(mul15(now.diffuserOutput[2], level.value()) + left));
    out.right[i] = static_cast<std::int16_t>(saturate(mul15(now.diffuserOutput[3], level.value()) + right));
  }
  flow = now;
}

}  // namespace tesh::bramel::plugin::sivray::effects
