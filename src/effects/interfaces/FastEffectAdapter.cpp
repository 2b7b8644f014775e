// The wrapper's decisions to sleep and to wake.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/interfaces/FastEffectAdapter.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tesh::vimo {

namespace {

/// Whether any sample is not 0. The loop ORs all samples and tests them once, so it has no branch.
bool sounds(Int16Block block, unsigned count) {
  unsigned bits = 0;
  for (unsigned i = 0; i < count; ++i) {
    bits |= static_cast<unsigned>(block.left[i] | block.right[i]);
  }
  return bits != 0;
}

/// Whether any sample exceeds the threshold.
bool sounds(FloatBlock block, unsigned count) {
  constexpr float kThreshold = 1e-5F;
  float peak = 0.0F;
  for (unsigned i = 0; i < count; ++i) {
    peak = std::max(peak, std::max(std::fabs(block.left[i]), std::fabs(block.right[i])));
  }
  return peak > kThreshold;
}

}  // namespace

FastEffectAdapter::FastEffectAdapter(std::unique_ptr<BasicEffect> innerEffect) : inner(std::move(innerEffect)) {
  initParameters();
}

void FastEffectAdapter::setParameter(unsigned index, float value) {
  BasicEffect::setParameter(index, value);
  inner->setParameter(index, value);
}

template <typename Block, typename Process>
void FastEffectAdapter::processAwake(Block in, Block out, unsigned count, Process process) {
  if (sleeping != 0) {
    copyBlock(in, out, count);
    if (!sounds(in, count)) {
      return;
    }
    silentCountdown = kHoldSamples;
    sleeping = 0;
  }
  process();
  if (sounds(out, count)) {
    silentCountdown = kHoldSamples;
  } else if (silentCountdown <= count) {
    silentCountdown = 0;
    sleeping = 1;
  } else {
    silentCountdown -= count;
  }
}

void FastEffectAdapter::processFloat(FloatBlock in, FloatBlock out, unsigned count) {
  processAwake(in, out, count, [&] { inner->processFloat(in, out, count); });
}

void FastEffectAdapter::processInt16(Int16Block in, Int16Block out, unsigned count) {
  processAwake(in, out, count, [&] { inner->processInt16(in, out, count); });
}

}  // namespace tesh::vimo
