// The law of the Marlo phase effect.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/MarloPhase.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

/// How far the triangle moves the tap to each side (36.1 samples), and where it rests (45.2 samples, 1.02 ms).
constexpr auto kDepth = static_cast<float>(cofu::core::kEngineRate * 0.004096 * 0.2);
constexpr auto kBase = static_cast<float>(cofu::core::kEngineRate * 0.001024);

constexpr float kSumGain = 0.75F;

}  // namespace

void MarloPhase::step(const Settings& to, std::int16_t& left, std::int16_t& right) {
  sweep.advance(to);
  lines.step(left, right, [this](float inLeft, float inRight, float& outLeft, float& outRight) {
    const float at = lines.writePosition();
    outLeft = limited((lines.leftLine.read(sweep.left() * kDepth + at + kBase) + inLeft) * kSumGain);
    outRight = limited((lines.rightLine.read(sweep.right() * kDepth + at + kBase) + inRight) * kSumGain);
  });
}

template class TwoKnobEffect<MarloPhase>;

}  // namespace tesh::bramel::plugin::sivray::effects
