// The smoothing of the master gain, and the output stage over a block.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/GlobalSaveParameterDispatcher.h"

#include <algorithm>

#include "engine/MasterLevelTable.h"

namespace tesh::bramel::plugin::sivray {
namespace {

constexpr int kStride = 4;  ///< Channels of the interleaved block.

}  // namespace

GlobalSaveParameterDispatcher::GlobalSaveParameterDispatcher() {
  std::transform(kMasterGains.begin(), kMasterGains.end(), table.begin(),
                 [](double gain) { return static_cast<std::int16_t>(gain * kUnityGain); });
}

int GlobalSaveParameterDispatcher::setValue(int index, std::int32_t* value) {
  if (index == 0) {
    outputTarget.store(table[static_cast<std::size_t>(*value & kTopLevel)], std::memory_order_relaxed);
  }
  return group.setValue(index, value);
}

std::int32_t GlobalSaveParameterDispatcher::glide(std::int32_t target) {
  // One-pole smoother in Q15: 102 / 32768 of the distance a sample, a time constant of 7 ms. The two factors add up to
  // 32767, so that the rounding always pulls downwards and a gain settles a little below its target.
  constexpr std::int32_t kKept = 32665;
  constexpr std::int32_t kTaken = 102;
  outputGain = (outputGain * kKept + target * kTaken) >> 15;
  return outputGain;
}

void GlobalSaveParameterDispatcher::processAudio(std::int32_t* block, int frames) {
  const std::int32_t target = outputTarget.load(std::memory_order_relaxed);
  for (int i = 0; i < frames; ++i) {
    const std::int32_t gain = glide(target);
    for (int channel = 2; channel < kStride; ++channel) {
      block[i * kStride + channel] = shapeOutput(block[i * kStride + channel], gain);
    }
  }
}

void GlobalSaveParameterDispatcher::skip(int frames) {
  const std::int32_t target = outputTarget.load(std::memory_order_relaxed);
  std::int32_t before = outputGain;
  for (int i = 0; i < frames && glide(target) != before; ++i) {
    before = outputGain;
  }
}

void GlobalSaveParameterDispatcher::render(const std::int16_t* dry, BusSamples wet, OutputChannels out, int frames) {
  const std::int32_t target = outputTarget.load(std::memory_order_relaxed);
  const bool isWet = wet.left != nullptr;
  int i = 0;
  // Once a step leaves the gain unchanged, so do all later ones until the target changes.
  for (std::int32_t before = outputGain; i < frames && glide(target) != before; ++i) {
    before = outputGain;
    out.left[i] = outputSample(dry[2 * i], isWet ? wet.left[i] : 0, before);
    out.right[i] = outputSample(dry[2 * i + 1], isWet ? wet.right[i] : 0, before);
  }
  kernel.render(dry + 2 * i, wet.from(i), {out.left + i, out.right + i}, frames - i, outputGain);
}

}  // namespace tesh::bramel::plugin::sivray
