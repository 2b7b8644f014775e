// Designs the resampler to the host's rate and fills the ring behind it.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/resample/UpPair.h"

#include <utility>

#include "core/EngineRate.h"
#include "host/resample/ConverterFilter.h"

namespace tesh::bramel::vst {

UpPair::UpPair() : resampler(2), engineOut(kEngineFrames), resampled(kHostFrames), ring(kRingFrames) {
  resampler.setAttenuation(kAttenuationDb);
  resampler.leaveRestOut();
}

void UpPair::setSampleRate(std::int32_t rate) {
  engineOut.makePresent(kUsualFrames);
  resampled.makePresent(kUsualFrames);
  ring.makePresent(kRingFrames);
  mostPerFrame = static_cast<std::size_t>(rate / cofu::core::kEngineRate) + 2;
  resampler.configure(kFilterLength, static_cast<std::int32_t>(cofu::core::kEngineRate), static_cast<float>(rate),
                      kCutoffHz, kUpPhases, 0.0);
}

void UpPair::clear() {
  if (std::exchange(silentInRing, kRingFrames) < kRingFrames) {
    ring.clear();
  }
}

void UpPair::joinIn(const UpPair& other, std::uint32_t read, std::uint32_t written) {
  resampler.reset();
  resampler.moveTo(other.resampler);
  for (std::uint32_t at = read; at != written; at = (at + 1) & kRingMask) {
    for (float* const samples : ring.channels()) {
      samples[at] = 0.0F;
    }
  }
  silentInRing = 0;  // The rest of the ring may still hold old sound.
}

}  // namespace tesh::bramel::vst
