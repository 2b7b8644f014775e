// The knobs of the hall, and its runs.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/reverbs/SivrayFxReverbSmoothHall.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/VectorCode.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/reverbs/HallStep.h"

namespace tesh::bramel::plugin::sivray::effects {

SivrayFxReverbSmoothHall::SivrayFxReverbSmoothHall() { initParameters(); }

void SivrayFxReverbSmoothHall::activate() {
  BasicEffect::activate();
  if (memory.empty()) {
    // The first wake comes before audio runs.
    cofu::core::mayWait([this] { memory = platform::ZeroedArray<std::int16_t>(HallFlow::kMemorySamples); });
    flow.memory = memory.data();
  }
}

void SivrayFxReverbSmoothHall::reset() {
  activate();
  flow.firstDiffused = 0;
  flow.dampers.last = {};
  flow.level.setNow(pending.peek().level);
  if (std::exchange(hasWritten, false)) {
    std::fill_n(memory.data(), memory.size(), std::int16_t{0});
  }
}

void SivrayFxReverbSmoothHall::setParameter(unsigned index, float value) {
  BasicEffect::setParameter(index, value);
  if (index > 1) {
    return;
  }
  const auto knob = static_cast<unsigned>(std::lround(value * kTopKnob)) & kTopKnob;
  (index == 0 ? decayKnob : levelKnob) = knob;
  pending.postMade([this] { return Settings{hallGains[decayKnob], linearTable[levelKnob]}; });
}

void SivrayFxReverbSmoothHall::processInt16(vimo::Int16Block in, vimo::Int16Block out, unsigned count) {
  hasWritten = true;
  vimo::copyBlock(in, out, count);
  for (unsigned start = 0; start < count; start += kControlGrid) {
    if (Settings now; pending.takeInto(now)) {
      flow.gains = now.gains;
      flow.levelTarget = now.level;
    }
    runGrid(out.left + start, out.right + start, std::min(count - start, kControlGrid));
  }
}

void SivrayFxReverbSmoothHall::runGrid(std::int16_t* left, std::int16_t* right, unsigned count) {
  unsigned done = 0;
  const bool ticks = state->tickListener != nullptr;
  if (!ticks && widest != platform::VectorSet::none) {
    if constexpr (SIVRAY_FOR_X86) {
      done = widest == platform::VectorSet::avx2 ? runAvx2(flow, left, right, count) : 0;
    }
    done += done < count ? runBaseline(flow, left + done, right + done, count - done) : 0;
  }
  while (done < count) {
    if (ticks) {
      state->tickListener(*this);
    }
    done += runLanes<OneSample>(flow, left + done, right + done, ticks ? 1 : count - done);
  }
}

const RunInLanes<HallFlow> SivrayFxReverbSmoothHall::runBaseline = runLanes<Samples128>;

}  // namespace tesh::bramel::plugin::sivray::effects
