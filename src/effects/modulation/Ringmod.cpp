// The oscillator and the doubling output stage of the ring modulator.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/Ringmod.h"

#include <algorithm>

#include "core/FixedPoint.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

/// Largest value of 30 bits: the carrier's 1.0 with its 15 fractional bits.
constexpr std::int32_t kCarrierOne = 1073741823;

/// Limit before the output is halved back by one bit less than it was scaled.
constexpr std::int32_t kOutputLimit = 536870911;

/// How much of the carrier is the sine: all of it from a frequency of 128 on.
std::int32_t sineShare(const SmoothedValue& frequency) {
  const std::int64_t share = static_cast<std::int64_t>(frequency.state) << 8;
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(share, -kCarrierOne, kCarrierOne));
}

/// A sine made of two parabolas; its peak is about 16384.
std::int32_t parabolicSine(std::int32_t phase) {
  const std::int32_t p = phase >> 15;
  const std::int32_t q = phase >> 16;
  return mul15(32767 - std::abs(p), q) + q;
}

std::int16_t ring(std::int32_t carrier, std::int32_t in, std::int32_t dry, std::int32_t wet) {
  const std::int32_t y = wrapAdd(wrapMul(mul15(carrier, in), wet), wrapMul(dry, in));
  return static_cast<std::int16_t>(std::clamp(y, -kOutputLimit, kOutputLimit) >> 14);
}

}  // namespace

int Ringmod::setEdit(unsigned index, int value) {
  const int knob = value & 127;
  switch (index) {
    case 0:
      frequencyKnob = knob;
      break;
    case 1:
      balanceKnob = knob;
      break;
    default:
      return 0;
  }
  pending.post({frequencyOfKnob(frequencyKnob), linearTable[static_cast<std::size_t>(balanceKnob.load())]});
  return knob;
}

void Ringmod::reset() {
  frequency.setNow(live.frequency);
  balance.setNow(live.balance);
  phase = 0;
}

template <bool kResting>
void Ringmod::render(std::int16_t* left, std::int16_t* right, unsigned count) {
  const std::int32_t k = glideFactor(immediate);
  SmoothedValue f = frequency;
  SmoothedValue b = balance;
  std::int32_t ph = phase;
  for (unsigned i = 0; i < count; ++i) {
    if constexpr (!kResting) {
      b.glide(live.balance, k);
      f.glide(live.frequency, k);
    }
    const std::int32_t dry = (kCarrierOne - b.state) >> 15;
    const std::int32_t wet = b.value();
    ph = wrapAdd(ph, f.state);
    const std::int32_t m = sineShare(f);
    const std::int32_t carrier = saturate(mul15(m >> 15, parabolicSine(ph)) + ((kCarrierOne - m) >> 15));
    left[i] = ring(carrier, left[i], dry, wet);
    right[i] = ring(carrier, right[i], dry, wet);
  }
  frequency = f;
  balance = b;
  phase = ph;
}

void Ringmod::process(StereoBlock& block, unsigned count) {
  for (unsigned start = 0; start < count; start += kControlGrid) {
    pending.takeInto(live);
    const unsigned run = std::min(count - start, kControlGrid);
    if (frequency.restsAt(live.frequency) && balance.restsAt(live.balance)) {
      render<true>(block.left + start, block.right + start, run);
    } else {
      render<false>(block.left + start, block.right + start, run);
    }
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
