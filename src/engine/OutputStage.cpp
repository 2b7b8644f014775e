// Splits a bus into channels, eight frames at a time; the output stage in the registers that every processor has, and
// the choice of a kernel.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/OutputStage.h"

#include <array>

#include "core/VectorCode.h"
#include "engine/OutputRun.h"
#include "registers/Registers128.h"

namespace tesh::bramel::plugin::sivray {
namespace {

using platform::VectorSet;

#if SIVRAY_FOR_X86
constexpr std::array<OutputKernel, 2> kKernels{
    {{"SSE2", VectorSet::baseline, renderOutputBaseline}, {"AVX2", VectorSet::avx2, renderOutputAvx2}}};
#else
constexpr std::array<OutputKernel, 1> kKernels{{{"NEON", VectorSet::baseline, renderOutputBaseline}}};
#endif

using R = cofu::registers::Registers128;
using Integers = R::Integers;

}  // namespace

void splitChannels(const std::int16_t* words, BusSamples channels, int frames) {
  constexpr int kFrames = 8;
  const auto splitAt = [&](int i) {
    const Integers first = R::swappedMiddles16(R::load(words + 2 * i));
    const Integers second = R::swappedMiddles16(R::load(words + 2 * i + kFrames));
    R::store(channels.left + i, R::evens32(first, second));
    R::store(channels.right + i, R::odds32(first, second));
  };
  if (frames < kFrames) {
    for (int i = 0; i < frames; ++i) {
      channels.left[i] = words[2 * i];
      channels.right[i] = words[2 * i + 1];
    }
    return;
  }
  for (int i = 0; i < frames - kFrames; i += kFrames) {
    splitAt(i);
  }
  splitAt(frames - kFrames);
}

void renderOutputBaseline(const std::int16_t* dry, BusSamples wet, OutputChannels out, int frames, std::int32_t gain) {
  renderLanes<R>(dry, wet, out, frames, gain);
}

std::span<const OutputKernel> outputKernels() { return kKernels; }

const OutputKernel& bestOutputKernel() { return platform::bestKernel(kKernels); }

}  // namespace tesh::bramel::plugin::sivray
