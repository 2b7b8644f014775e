// The block loop of the output stage, compiled once per instruction set: each including file names its function.
// SPDX-License-Identifier: GPL-3.0-or-later
// It is plain code for the compiler's vectoriser; the lanes are frames.
namespace {

void renderOutput(const OutputBlock& block, std::int32_t gain) {
  const std::int32_t* const mix = block.mix;
  const std::int16_t* const wetLeft = block.effectLeft;
  const std::int16_t* const wetRight = block.effectRight;
  float* const __restrict left = block.left;
  float* const __restrict right = block.right;
  const int frames = block.frames;
  for (int i = 0; i < frames; ++i) {
    left[i] = static_cast<float>(shapeOutput(sumBuses(mix[4 * i], wetLeft[i]), gain)) * kFloatScale;
    right[i] = static_cast<float>(shapeOutput(sumBuses(mix[4 * i + 1], wetRight[i]), gain)) * kFloatScale;
  }
}

}  // namespace
