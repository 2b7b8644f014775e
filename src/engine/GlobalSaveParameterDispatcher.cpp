// The glide of the master gain, and the choice of the output loop.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/GlobalSaveParameterDispatcher.h"

#include <algorithm>

#include "engine/MasterLevelTable.h"
#include "platform/CpuFeatures.h"

namespace tesh::bramel::plugin::sivray {
namespace {

constexpr double kGainScale = 16384.0;
constexpr int kStride = 4;

}  // namespace

OutputKernel bestOutputKernel() {
  switch (platform::bestVectorSet()) {
    case platform::VectorSet::avx2:
      return avx2OutputKernel();
    case platform::VectorSet::sse41:
      return sse41OutputKernel();
    case platform::VectorSet::baseline:
      break;
  }
  return baselineOutputKernel();
}

GlobalSaveParameterDispatcher::GlobalSaveParameterDispatcher() {
  std::transform(kMasterGains.begin(), kMasterGains.end(), table.begin(),
                 [](double gain) { return static_cast<std::int16_t>(gain * kGainScale); });
}

int GlobalSaveParameterDispatcher::setValue(int index, std::int32_t* value) {
  if (index == 0) {
    outputTarget.store(table[static_cast<std::size_t>(*value & 127)], std::memory_order_relaxed);
  }
  return group.setValue(index, value);
}

std::int32_t GlobalSaveParameterDispatcher::glide(std::int32_t target) {
  outputGain = (outputGain * 32665 + target * 102) >> 15;
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

void GlobalSaveParameterDispatcher::render(OutputBlock block) {
  const std::int32_t target = outputTarget.load(std::memory_order_relaxed);
  int i = 0;
  for (std::int32_t before = outputGain - 1; i < block.frames && before != outputGain; ++i) {
    before = outputGain;
    const std::int32_t gain = glide(target);
    const std::int32_t* const dry = block.mix + i * kStride;
    block.left[i] = static_cast<float>(shapeOutput(sumBuses(dry[0], block.effectLeft[i]), gain)) * kFloatScale;
    block.right[i] = static_cast<float>(shapeOutput(sumBuses(dry[1], block.effectRight[i]), gain)) * kFloatScale;
  }
  // A step that moved nothing moves nothing until the target changes.
  kernel({block.mix + i * kStride, block.effectLeft + i, block.effectRight + i, block.left + i, block.right + i,
          block.frames - i},
         outputGain);
}

}  // namespace tesh::bramel::plugin::sivray
