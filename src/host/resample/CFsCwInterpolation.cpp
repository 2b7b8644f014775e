// The resampler's loop over the kernel and over silent input.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/resample/CFsCwInterpolation.h"

#include <algorithm>
#include <bit>

namespace tesh::bramel::vst {

namespace {

/// Whether all samples are zero. Compares 32 at a time and stops at the first that has sound.
bool isZero(const float* samples, std::size_t frames) {
  constexpr std::size_t kLook = 32;
  const auto isZeroUpTo = [samples](std::size_t start, std::size_t end) {
    std::uint32_t bits = 0;
    for (std::size_t i = start; i < end; ++i) {
      bits |= std::bit_cast<std::uint32_t>(samples[i]);
    }
    return bits << 1 == 0;  // -0.0 is zero too
  };
  if (frames < kLook) {
    return isZeroUpTo(0, frames);
  }
  for (std::size_t i = 0; i + kLook < frames; i += kLook) {
    if (!isZeroUpTo(i, i + kLook)) {
      return false;
    }
  }
  return isZeroUpTo(frames - kLook, frames);
}

}  // namespace

CFsCwInterpolation::CFsCwInterpolation(std::size_t channelCount, const ResampleKernel& resampleKernel)
    : CFscBase(channelCount), run(resampleKernel.run) {}

void CFsCwInterpolation::reset() {
  CFscBase::reset();
  position = {};
}

void CFsCwInterpolation::configure(std::int32_t length, std::int32_t fromRate, float toRate, std::int32_t cutoffHz,
                                   std::int32_t newPhases, double gainDb) {
  constexpr double kUnitsPerPhase = 1U << kPhaseFractionBits;
  buildTables(length, fromRate, cutoffHz, newPhases, 1, gainDb);
  steps = StepRun();
  const double exactStep =
      static_cast<double>(fromRate) * static_cast<double>(phases()) * kUnitsPerPhase / static_cast<double>(toRate);
  if (!(exactStep >= 1.0 && exactStep < 4294967296.0)) {
    return;
  }
  const auto wholeStep = static_cast<std::uint32_t>(exactStep);
  ResampleStep step;
  step.unitsPerInput = static_cast<std::uint32_t>(phases()) << kPhaseFractionBits;
  step.inputs = wholeStep / step.unitsPerInput;
  step.units = wholeStep % step.unitsPerInput;
  step.fraction = static_cast<float>(exactStep - static_cast<double>(wholeStep));
  steps = StepRun(step);
}

std::size_t CFsCwInterpolation::process(const float* const* inputs, float* const* outputs, std::size_t frames,
                                        bool isKnownSilent) {
  if (channels == 0 || steps.step().unitsPerInput == 0) {
    position = {};
    return 0;
  }
  const bool isWritten = !leavesRestOut || frames > kPartFrames;
  std::size_t made = 0;
  resting = true;
  for (std::size_t done = 0; done < frames;) {
    const std::size_t part = std::min(frames - done, kPartFrames);
    const bool wasSilent = hasSilentHistory();
    const bool isPartSilent = isKnownSilent || isSilent(inputs, done, part);
    silentFrames = isPartSilent ? std::min(silentFrames + part, tapsPerPhase) : 0;
    if (isPartSilent && wasSilent) {
      made += rest(isWritten ? outputs : nullptr, made, part);
    } else {
      resting = false;
      store(inputs, done, part);
      made += filter(outputs, made, part);
    }
    done += part;
  }
  return made;
}

bool CFsCwInterpolation::isSilent(const float* const* inputs, std::size_t offset, std::size_t frames) const {
  return std::all_of(inputs, inputs + channels,
                     [offset, frames](const float* samples) { return isZero(samples + offset, frames); });
}

/// Runs the kernel over the newest `frames` frames of the history, one pair of channels at a time.
std::size_t CFsCwInterpolation::filter(float* const* outputs, std::size_t made, std::size_t frames) {
  const ResamplePosition start = position;
  std::size_t result = 0;
  for (std::size_t pair = 0; 2 * pair < channels; ++pair) {
    position = start;
    result = run({tables.data(), tapsPerPhase / 4, &steps, window(pair, frames), outputs[2 * pair] + made,
                  outputs[rightOf(pair)] + made, frames},
                 position);
  }
  position.input -= frames;
  return result;
}

/// Moves the position past `frames` silent frames, and writes zeros to `outputs` unless it is null.
std::size_t CFsCwInterpolation::rest(float* const* outputs, std::size_t made, std::size_t frames) {
  const std::size_t count = steps.pass(position, frames);
  for (std::size_t c = 0; outputs != nullptr && c < channels; ++c) {
    std::fill_n(outputs[c] + made, count, 0.0F);
  }
  return count;
}

}  // namespace tesh::bramel::vst
