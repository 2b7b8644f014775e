// The stored parameters, and the conversions that let either process operation serve for the other.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/interfaces/BasicEffect.h"

#include <algorithm>

namespace tesh::vimo {

namespace {

/// Runs `process` on copies of the block in its own sample type, as many samples at a time as the scratch area holds.
template <typename InnerBlock, typename Block, typename Scratch, typename ToInner, typename ToOuter, typename Process>
void processConverted(Block in, Block out, unsigned count, Scratch& scratch, ToInner toInner, ToOuter toOuter,
                      Process process) {
  constexpr unsigned kRun = BasicEffectState::kRunSamples;
  auto* const area = scratch.data();
  const InnerBlock runIn{area, area + kRun};
  const InnerBlock runOut{area + 2 * kRun, area + 3 * kRun};
  for (unsigned done = 0; done < count; done += kRun) {
    const unsigned run = std::min(count - done, kRun);
    std::transform(in.left + done, in.left + done + run, runIn.left, toInner);
    std::transform(in.right + done, in.right + done + run, runIn.right, toInner);
    process(runIn, runOut, run);
    std::transform(runOut.left, runOut.left + run, out.left + done, toOuter);
    std::transform(runOut.right, runOut.right + run, out.right + done, toOuter);
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
  const auto process = [this](Int16Block from, Int16Block to, unsigned run) { processInt16(from, to, run); };
  processConverted<Int16Block>(in, out, count, state->int16Scratch, int16FromFloat, floatFromInt16, process);
}

void BasicEffect::processInt16(Int16Block in, Int16Block out, unsigned count) {
  const auto process = [this](FloatBlock from, FloatBlock to, unsigned run) { processFloat(from, to, run); };
  processConverted<FloatBlock>(in, out, count, state->floatScratch, floatFromInt16, int16FromFloat, process);
}

}  // namespace tesh::vimo
