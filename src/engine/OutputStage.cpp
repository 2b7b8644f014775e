// The buses of a block, separated eight frames at a time, the output stage in the registers that every processor has,
// and the choice of a kernel for it.
// and the choice of a kernel for it.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/OutputStage.h"

#include <algorithm>
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

constexpr int kLanes = 8;

/// One frame of four channels.
Integers frameAt(const std::int32_t* mix, int frame) { return R::loadAligned(mix + 4 * frame); }

/// The four channels of a frame and of the next one, as eight words.
Integers twoFrames(const std::int32_t* mix) { return R::packed32(frameAt(mix, 0), frameAt(mix, 1)); }

/// The dry channels of four frames, left in the lower half and right in the upper.
Integers fourDryFrames(const std::int32_t* mix) {
  const Integers first = R::zipLow32(frameAt(mix, 0), frameAt(mix, 1));
  const Integers second = R::zipLow32(frameAt(mix, 2), frameAt(mix, 3));
  return R::packed32(R::zipLow64(first, second), R::zipHigh64(first, second));
}

/// Four frames with the words of each channel together: left in the lower half of each vector, right in the upper.
struct FourFrames {
  Integers dry;
  Integers wet;

  explicit FourFrames(const std::int32_t* mix) {
    const Integers first = twoFrames(mix);
    const Integers second = twoFrames(mix + 8);
    const Integers even = R::zipLow16(first, second);
    const Integers odd = R::zipHigh16(first, second);
    dry = R::zipLow16(even, odd);
    wet = R::zipHigh16(even, odd);
  }
};

std::int16_t wordOf(std::int32_t x) { return static_cast<std::int16_t>(std::clamp(x, -32768, 32767)); }

/// Calls `split(frame)` for vectors of frames that cover all of them, of which the last overlaps the one before.
/// Returns false if the frames do not fill a vector.
template <typename Split>
bool splitVectors(int frames, Split split) {
  if (frames < kLanes) {
    return false;
  }
  for (int i = 0; i < frames - kLanes; i += kLanes) {
    split(i);
  }
  split(frames - kLanes);
  return true;
}

}  // namespace

void splitBuses(const std::int32_t* mix, BusSamples dry, BusSamples wet, int frames) {
  const bool isDone = splitVectors(frames, [&](int i) {
    const FourFrames first(mix + 4 * i);
    const FourFrames second(mix + 4 * i + 16);
    R::store(dry.left + i, R::zipLow64(first.dry, second.dry));
    R::store(dry.right + i, R::zipHigh64(first.dry, second.dry));
    R::store(wet.left + i, R::zipLow64(first.wet, second.wet));
    R::store(wet.right + i, R::zipHigh64(first.wet, second.wet));
  });
  for (int i = 0; !isDone && i < frames; ++i) {
    dry.left[i] = wordOf(mix[4 * i]);
    dry.right[i] = wordOf(mix[4 * i + 1]);
    wet.left[i] = wordOf(mix[4 * i + 2]);
    wet.right[i] = wordOf(mix[4 * i + 3]);
  }
}

void splitDry(const std::int32_t* mix, BusSamples dry, int frames) {
  const bool isDone = splitVectors(frames, [&](int i) {
    const Integers first = fourDryFrames(mix + 4 * i);
    const Integers second = fourDryFrames(mix + 4 * i + 16);
    R::store(dry.left + i, R::zipLow64(first, second));
    R::store(dry.right + i, R::zipHigh64(first, second));
  });
  for (int i = 0; !isDone && i < frames; ++i) {
    dry.left[i] = wordOf(mix[4 * i]);
    dry.right[i] = wordOf(mix[4 * i + 1]);
  }
}

void clearBuses(BusSamples dry, BusSamples wet, int frames) {
  for (std::int16_t* const channel : {dry.left, dry.right, wet.left, wet.right}) {
    std::fill_n(channel, frames, std::int16_t{0});
  }
}

void renderOutputBaseline(const std::int16_t* dry, const std::int16_t* wet, float* out, int frames, std::int32_t gain) {
  renderLanes<R>(dry, wet, out, frames, gain);
}

std::span<const OutputKernel> outputKernels() { return kKernels; }

const OutputKernel& bestOutputKernel() { return platform::bestKernel(kKernels); }

}  // namespace tesh::bramel::plugin::sivray
