// The two conversions by which one process operation stands for the other, in runs of the scratch area's size.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/interfaces/BasicEffect.h"

#include <algorithm>

namespace tesh::vimo {

namespace {

constexpr unsigned kRun = BasicEffectState::kRunSamples;

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
  std::int16_t* const scratch = state->int16Scratch.data();
  const Int16Block runIn{scratch, scratch + kRun};
  const Int16Block runOut{scratch + 2 * kRun, scratch + 3 * kRun};
  for (unsigned done = 0; done < count; done += kRun) {
    const unsigned run = std::min(count - done, kRun);
    std::transform(in.left + done, in.left + done + run, runIn.left, int16FromFloat);
    std::transform(in.right + done, in.right + done + run, runIn.right, int16FromFloat);
    processInt16(runIn, runOut, run);
    std::transform(runOut.left, runOut.left + run, out.left + done, floatFromInt16);
    std::transform(runOut.right, runOut.right + run, out.right + done, floatFromInt16);
  }
}

void BasicEffect::processInt16(Int16Block in, Int16Block out, unsigned count) {
  float* const scratch = state->floatScratch.data();
  const FloatBlock runIn{scratch, scratch + kRun};
  const FloatBlock runOut{scratch + 2 * kRun, scratch + 3 * kRun};
  for (unsigned done = 0; done < count; done += kRun) {
    const unsigned run = std::min(count - done, kRun);
    std::transform(in.left + done, in.left + done + run, runIn.left, floatFromInt16);
    std::transform(in.right + done, in.right + done + run, runIn.right, floatFromInt16);
    processFloat(runIn, runOut, run);
    std::transform(runOut.left, runOut.left + run, out.left + done, int16FromFloat);
    std::transform(runOut.right, runOut.right + run, out.right + done, int16FromFloat);
  }
}

}  // namespace tesh::vimo
