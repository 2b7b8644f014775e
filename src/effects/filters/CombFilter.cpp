// The knob curves of the comb filter and its line.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/filters/CombFilter.h"

#include <algorithm>
#include <cmath>

#include "core/FixedPoint.h"
#include "effects/interfaces/PendingSettings.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

constexpr unsigned kMask = 2047;
constexpr std::int32_t kOutputLimit = 1073741823;

/// The delay by knob, a semitone a step, samples with 15 fractional bits.
const auto delayTable = [] {
  std::array<std::int32_t, 128> table{};
  for (std::size_t i = 0; i < table.size(); ++i) {
    table[i] = static_cast<std::int32_t>(44187388.0 * std::exp2(-static_cast<double>(i) / 12.0));
  }
  return table;
}();

/// The feedback by the sum of both knobs, 31 fractional bits.
const auto feedbackTable = [] {
  std::array<std::int32_t, 255> table{};
  for (std::size_t n = 0; n < table.size(); ++n) {
    const double decay = 195.11349 * std::exp2(-static_cast<double>(n) / 12.0);
    table[n] = static_cast<std::int32_t>(2147483648.0 * std::exp(-decay));
  }
  return table;
}();

/// Weight of an allpass-like interpolation at `fraction` (15 bits).
std::int32_t etaOf(std::int32_t fraction) { return ((32767 - fraction) * 32768) / (fraction + 32767); }

std::int64_t followed(std::int64_t target, std::int64_t targetShare, std::int64_t state, std::int64_t stateShare) {
  return (target * targetShare + state * stateShare) >> 15;
}

}  // namespace

CombFilter::CombFilter() { updateTargets(); }

int CombFilter::setEdit(unsigned index, int value) {
  if (index > 1) {
    return 0;
  }
  const int knob = value & 127;
  (index == 0 ? delayKnob : feedbackKnob) = knob;
  updateTargets();
  return knob;
}

void CombFilter::updateTargets() {
  delayTarget = delayTable[static_cast<std::size_t>(delayKnob)];
  const int sum = delayKnob + feedbackKnob;
  feedbackTarget = feedbackTable[static_cast<std::size_t>(sum)];
}

void CombFilter::reset() {
  left.output = 0;
  right.output = 0;
}

void CombFilter::process(StereoBlock& block, unsigned count) {
  for (unsigned start = 0; start < count; start += kControlGrid) {
    const unsigned end = std::min(count, start + kControlGrid);
    for (unsigned i = start; i < end;) {
      const unsigned run = glide() ? 1 : end - i;
      render(block, i, i + run);
      i += run;
    }
  }
}

/// Moves one sample towards the targets. Gives false when nothing moves any more.
bool CombFilter::glide() {
  const std::int64_t delay = followed(delayTarget, 28599, delayState, 4168);
  const std::int64_t feedback = followed(feedbackTarget, 32439, feedbackState, 328);
  const bool moved = delay != delayState || feedback != feedbackState;
  if (delay != delayState) {
    eta = etaOf(static_cast<std::int32_t>(delay & 32767));
  }
  delayState = delay;
  feedbackState = feedback;
  return moved;
}

void CombFilter::render(StereoBlock block, unsigned start, unsigned end) {
  const auto delay = static_cast<unsigned>(delayState >> 15);
  unsigned writeAt = write;
  unsigned readAt = read;
  const auto step = [&](std::array<std::int32_t, kLineLength>& line, std::int32_t& output, std::int16_t& sample) {
    const auto back = static_cast<std::int32_t>((feedbackState * output) >> 31);
    const std::int32_t v = back + sample * 32768;
    line[writeAt] = v;
    const std::int32_t a = line[readAt];
    const std::int32_t b = line[(readAt - 1) & kMask];
    // The correction stands on the scale of samples, the sound itself on that of the line.
    const std::int32_t correction = mul15((a >> 15) - (output >> 15), eta);
    output = std::clamp(wrapAdd(correction, b), -kOutputLimit, kOutputLimit);
    sample = static_cast<std::int16_t>(saturate(v >> 15));
  };
  std::int32_t outputLeft = left.output;
  std::int32_t outputRight = right.output;
  for (unsigned i = start; i < end; ++i) {
    step(left.line, outputLeft, block.left[i]);
    step(right.line, outputRight, block.right[i]);
    writeAt = (writeAt + 1) & kMask;
    readAt = (writeAt - delay) & kMask;
  }
  left.output = outputLeft;
  right.output = outputRight;
  write = writeAt;
  read = readAt;
}

}  // namespace tesh::bramel::plugin::sivray::effects
