// The split of the filter into its phases, and the history of the channels.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/resample/CFscBase.h"

#include <algorithm>

namespace tesh::bramel::vst {

CFscBase::CFscBase(std::size_t channelCount) : channels(std::min(channelCount, kMaxChannels)), history(channels) {}

void CFscBase::reset() {
  for (std::vector<float>& samples : history) {
    std::fill(samples.begin(), samples.end(), 0.0F);
  }
  writeIndex = tapsPerPhase - 1;
  silentFrames = tapsPerPhase - 1;
}

void CFscBase::buildTables(std::int32_t length, std::int32_t rate, std::int32_t cutoffHz, std::int32_t newPhases,
                           std::int32_t newStep, double gainDb) {
  phaseCount = std::clamp(newPhases, 1, kMaxPhases);
  phaseStep = newStep;
  prototypeLength = std::max(length, 1);
  coefficients.setOversampling(phaseCount);
  design(prototypeLength, rate, cutoffHz, gainDb);

  tapsPerPhase = static_cast<std::size_t>(((prototypeLength - 1 + phaseCount) / phaseCount + 3) & ~3);
  const std::size_t groups = tapsPerPhase / 4;
  tables.assign(static_cast<std::size_t>(phaseCount) * groups, {});
  for (std::int32_t phase = 0; phase < phaseCount; ++phase) {
    TablePair* const pairs = tables.data() + static_cast<std::size_t>(phase) * groups;
    for (std::size_t i = 0; i < tapsPerPhase; ++i) {
      const std::size_t index = tapsPerPhase - 1 - i;
      pairs[i / 4].phase[i % 4] = tap(phase, index);
      pairs[i / 4].next[i % 4] = tap(phase + 1, index);
    }
  }
  for (std::vector<float>& samples : history) {
    samples.resize(tapsPerPhase - 1 + 2 * kPartFrames);
  }
  reset();
}

float CFscBase::tap(std::int32_t phase, std::size_t index) const {
  return static_cast<float>(coefficients.value(phase + static_cast<std::int32_t>(index) * phaseCount));
}

void CFscBase::store(const float* const* inputs, std::size_t offset, std::size_t frames) {
  const std::size_t past = tapsPerPhase - 1;
  const bool isFull = writeIndex + frames > past + 2 * kPartFrames;
  for (std::size_t c = 0; c < channels; ++c) {
    float* const samples = history[c].data();
    if (isFull) {
      std::copy_n(samples + writeIndex - past, past, samples);
    }
    std::copy_n(inputs[c] + offset, frames, samples + (isFull ? past : writeIndex));
  }
  writeIndex = (isFull ? past : writeIndex) + frames;
}

}  // namespace tesh::bramel::vst
