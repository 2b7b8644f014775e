// The knobs and the per-sample law of the room reverb.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/reverbs/SivrayFxReverb.h"

#include <algorithm>

#include "effects/interfaces/KnobTables.h"

namespace tesh::bramel::plugin::sivray::effects {

using cofu::core::mul15;
using cofu::core::saturate;

namespace {

/// The louder the wet sound, the more goes in: an eighth of full scale at nothing, a quarter at full level.
constexpr std::int32_t inputGainFor(std::int32_t level) { return ((level << 12) >> 15) + 4096; }

}  // namespace

int SivrayFxReverb::setParameter(unsigned index, int value) {
  if (index != kEdit1 && index != kEdit2) {
    return 0;
  }
  const int knob = value & 127;
  (index == kEdit1 ? edit1 : edit2) = knob;
  pending.post({((convexTable[static_cast<std::size_t>(edit1)] * 5) >> 4) + 20480,
                squareTable[static_cast<std::size_t>(edit2)]});
  return knob;
}

void SivrayFxReverb::reset() {
  network.setMemory(assigner->acquire());
  network.clear();
  feedback.setNow(live.feedback);
  level.setNow(live.level);
  inputGain = inputGainFor(live.level);
}

void SivrayFxReverb::notify(int code) {
  if (code == kRestart) {
    reset();
  }
}

void SivrayFxReverb::process(StereoBlock& block, unsigned count) {
  for (unsigned start = 0; start < count; start += kControlGrid) {
    pending.takeInto(live);
    runGrid(block, start, std::min(count, start + kControlGrid));
  }
}

void SivrayFxReverb::glide() {
  const std::int32_t k = glideFactor(immediate);
  if (!level.restsAt(live.level)) {
    level.glide(live.level, k);
    inputGain = inputGainFor(level.value());
  }
  if (!feedback.restsAt(live.feedback)) {
    feedback.glide(live.feedback, k);
  }
}

void SivrayFxReverb::runGrid(StereoBlock block, unsigned start, unsigned end) {
  ReverbNetwork net = network;
  for (unsigned i = start; i < end; ++i) {
    glide();
    const std::int32_t left = block.left[i];
    const std::int32_t right = block.right[i];
    const std::int32_t wetLevel = level.value();
    const ReverbNetwork::Output wet = net.step(mul15(left + right, inputGain), feedback.value());
    block.right[i] = static_cast<std::int16_t>(saturate(right + mul15(wetLevel, wet.late)));
    block.left[i] = static_cast<std::int16_t>(saturate(left + mul15(mul15(wet.early, wetLevel), kEarlyGain)));
  }
  network = net;
}

}  // namespace tesh::bramel::plugin::sivray::effects
