// The smoothing of the tube stage's drive and mix, and its runs of samples.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/dynamics/Kilnode.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/VectorCode.h"
#include "effects/dynamics/TubeCurve.h"

namespace tesh::bramel::plugin::fxkit {

namespace {

/// Share of the distance that drive and mix move per sample: a time constant of 333 samples (7.6 ms).
constexpr float kGlide = 0.003F;

/// Drive at full gain.
constexpr float kDrivePerGain = 0.25F;

/// Samples per run.
constexpr unsigned kRun = 64;

/// Fills `values` with the next smoothed samples from `value` to `target`, and sets `value` to the last one.
void glide(float& value, float target, float* values, unsigned count) {
  for (unsigned i = 0; i < count; ++i) {
    const float before = value;
    value += (target - value) * kGlide;
    if (value == before) {
      // Rounding keeps the value where it is from now on.
      std::fill(values + i, values + count, value);
      return;
    }
    values[i] = value;
  }
}

/// Processes samples by the tube curve. The arrays may be read up to the next multiple of 4.
void throughTube(bool hasAvx2, float* samples, const float* drives, const float* mixes, unsigned count) {
  if constexpr (SIVRAY_FOR_X86) {
    if (hasAvx2) {
      throughTubeAvx2(samples, drives, mixes, (count + 3) & ~3U);
      return;
    }
  }
  for (unsigned i = 0; i < count; ++i) {
    samples[i] = tube<OneValue>(samples[i], drives[i], mixes[i]);
  }
}

/// Flushes a value that decays to 0: below this limit it changes no 16-bit sample, and subnormal arithmetic would be
/// slow.
float ended(float value, float target) {
  constexpr float kInaudible = 1e-30F;
  return target == 0.0F && std::fabs(value) < kInaudible ? 0.0F : value;
}

}  // namespace

Kilnode::Kilnode() { initParameters(); }

void Kilnode::reset() {
  drive = driveTarget;
  mix = mixTarget;
}

void Kilnode::setParameter(unsigned index, float value) {
  BasicEffect::setParameter(index, value);
  if (index == 0) {
    driveTarget = value * kDrivePerGain;
    mixTarget = value;
  }
}

void Kilnode::processFloat(vimo::FloatBlock in, vimo::FloatBlock out, unsigned count) {
  drive = ended(drive, driveTarget);
  mix = ended(mix, mixTarget);
  const bool ticks = state->tickListener != nullptr;
  const unsigned longest = ticks ? 1 : kRun;
  float samples[kRun]{};
  float drives[kRun]{};
  float mixes[kRun]{};
  for (unsigned start = 0; start < count; start += longest) {
    if (ticks) {
      state->tickListener(*this);
    }
    const unsigned run = std::min(count - start, longest);
    glide(drive, driveTarget, drives, run);
    glide(mix, mixTarget, mixes, run);
    for (const auto& [from, to] :
         {std::pair{in.left + start, out.left + start}, {in.right + start, out.right + start}}) {
      std::copy_n(from, run, samples);
      throughTube(hasAvx2, samples, drives, mixes, run);
      std::copy_n(samples, run, to);
    }
  }
}

}  // namespace tesh::bramel::plugin::fxkit
