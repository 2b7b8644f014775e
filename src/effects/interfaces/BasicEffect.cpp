// The stored parameters, and the conversions by which either process operation can serve as the other.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/interfaces/BasicEffect.h"

#include <algorithm>

#include "registers/Registers128.h"

namespace tesh::vimo {

namespace {

void convert(const std::int16_t* from, float* to, unsigned count) {
  std::transform(from, from + count, to, floatFromInt16);
}

/// Like int16FromFloat, for eight samples at a time: the compiler does not turn those comparisons into minimum and
/// maximum.
void convert(const float* from, std::int16_t* to, unsigned count) {
  using R = cofu::registers::Registers128;
  const auto wholeOf = [](const float* samples) {
    const R::Floats notAbove = R::minFloats(R::loadFloats(samples), R::allFloats(1.0F));
    return R::truncated(R::maxFloats(notAbove, R::allFloats(-1.0F)) * R::allFloats(kInt16FullScale));
  };
  unsigned i = 0;
  for (; i + 8 <= count; i += 8) {
    R::store(to + i, R::packed32(wholeOf(from + i), wholeOf(from + i + 4)));
  }
  std::transform(from + i, from + count, to + i, int16FromFloat);
}

/// Runs `process` on copies of the block in its own sample type, as many samples at a time as fit the scratch area.
template <typename InnerBlock, typename Block, typename Scratch, typename Process>
void processConverted(Block in, Block out, unsigned count, Scratch& scratch, Process process) {
  constexpr unsigned kRun = BasicEffectState::kRunSamples;
  auto* const area = scratch.data();
  const InnerBlock runIn{area, area + kRun};
  const InnerBlock runOut{area + 2 * kRun, area + 3 * kRun};
  for (unsigned done = 0; done < count; done += kRun) {
    const unsigned run = std::min(count - done, kRun);
    convert(in.left + done, runIn.left, run);
    convert(in.right + done, runIn.right, run);
    process(runIn, runOut, run);
    convert(runOut.left, out.left + done, run);
    convert(runOut.right, out.right + done, run);
  }
}

}  // namespace

BasicEffect::BasicEffect() : state(std::make_unique<BasicEffectState>(*this)) {}

BasicEffect::~BasicEffect() = default;

float BasicEffect::parameter(unsigned index) const {
  return index < state->parameters.size() ? state->parameters[index].load() : 0.0F;
}

void BasicEffect::setParameter(unsigned index, float value) {
  if (index < state->parameters.size()) {
    state->parameters[index] = value;
  }
}

void BasicEffect::initParameters() {
  const unsigned count = parameterCount();
  state->parameters.assign(count, 0.0F);
  for (unsigned i = 0; i < count; ++i) {
    setParameter(i, 0.0F);
  }
}

void BasicEffect::processFloat(FloatBlock in, FloatBlock out, unsigned count) {
  processConverted<Int16Block>(in, out, count, state->int16Scratch, [this](auto... run) { processInt16(run...); });
}

void BasicEffect::processInt16(Int16Block in, Int16Block out, unsigned count) {
  processConverted<FloatBlock>(in, out, count, state->floatScratch, [this](auto... run) { processFloat(run...); });
}

}  // namespace tesh::vimo
