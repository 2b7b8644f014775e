// Splits the filter into its phases and keeps the channels' history.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/resample/CFscBase.h"

#include <algorithm>

#include "registers/Registers128.h"

namespace tesh::bramel::vst {
namespace {

/// Interleaves left and right, four frames at a time; the last group of four may overlap the one before.
void interleave(const float* left, const float* right, float* to, std::size_t frames) {
  using R = cofu::registers::Registers128;
  constexpr std::size_t kFrames = 4;
  const auto writeAt = [=](std::size_t i) {
    const R::Floats lefts = R::loadFloats(left + i);
    const R::Floats rights = R::loadFloats(right + i);
    R::storeFloats(to + 2 * i, R::zipLow32(lefts, rights));
    R::storeFloats(to + 2 * i + kFrames, R::zipHigh32(lefts, rights));
  };
  if (frames >= kFrames) {
    for (std::size_t i = 0; i < frames - kFrames; i += kFrames) {
      writeAt(i);
    }
    writeAt(frames - kFrames);
    return;
  }
  for (std::size_t i = 0; i < frames; ++i) {
    to[2 * i] = left[i];
    to[2 * i + 1] = right[i];
  }
}

}  // namespace

CFscBase::CFscBase(std::size_t channelCount)
    : channels(std::min(channelCount, kMaxChannels)), history((channels + 1) / 2) {}

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
  tables.assign(static_cast<std::size_t>(phaseCount) * groupsApart(groups), {});
  for (std::int32_t phase = 0; phase < phaseCount; ++phase) {
    TapGroup* const ofPhase = tables.data() + static_cast<std::size_t>(phase) * groupsApart(groups);
    for (std::size_t i = 0; i < tapsPerPhase; ++i) {
      const std::size_t index = tapsPerPhase - 1 - i;
      const std::size_t lane = 2 * (i % 4);
      TapGroup& group = ofPhase[i / 4];
      group.phase[lane] = group.phase[lane + 1] = tap(phase, index);
      group.next[lane] = group.next[lane + 1] = tap(phase + 1, index);
    }
  }
  for (std::vector<float>& samples : history) {
    samples.resize(2 * (tapsPerPhase - 1 + 2 * kPartFrames));
  }
  reset();
}

float CFscBase::tap(std::int32_t phase, std::size_t index) const {
  return static_cast<float>(coefficients.value(phase + static_cast<std::int32_t>(index) * phaseCount));
}

void CFscBase::store(const float* const* inputs, std::size_t offset, std::size_t frames) {
  const std::size_t past = tapsPerPhase - 1;
  const bool isFull = writeIndex + frames > past + 2 * kPartFrames;
  for (std::size_t pair = 0; pair < history.size(); ++pair) {
    float* const samples = history[pair].data();
    if (isFull) {
      std::copy_n(samples + 2 * (writeIndex - past), 2 * past, samples);
    }
    interleave(inputs[2 * pair] + offset, inputs[rightOf(pair)] + offset, samples + 2 * (isFull ? past : writeIndex),
               frames);
  }
  writeIndex = (isFull ? past : writeIndex) + frames;
}

}  // namespace tesh::bramel::vst
