// The tube stage's curve. Every step is single precision but for the exponential itself.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/dynamics/Kilnode.h"

#include <algorithm>
#include <cmath>

#include "effects/dynamics/Exponential.h"

namespace tesh::bramel::plugin::fxkit {

namespace {

/// Share of the distance that drive and mix move per sample: a time constant of 333 samples (7.6 ms).
constexpr float kGlide = 0.003F;

/// Drive at full gain, and what the input is multiplied by at a drive of 1.0.
constexpr float kDrivePerGain = 0.25F;
constexpr float kInputScale = 12.0F;

/// How fast the curve nears its height: it has come within 0.25 % of it at an input of 1.0.
constexpr float kSteepness = 6.0F;

/// The two halves of the wave saturate at slightly different heights.
constexpr float kUpperHeight = 0.755F;
constexpr float kLowerHeight = 0.765F;

float bent(float x) {
  const float rise = 1.0F - exponentialOfNegative(-kSteepness * std::fabs(x));
  return x >= 0.0F ? rise * kUpperHeight : -rise * kLowerHeight;
}

float tube(float in, float drive, float mix) {
  const float y = bent(drive * in * kInputScale);
  return std::clamp((1.0F - mix) * in + mix * y, -1.0F, 1.0F);
}

/// A value on its way to 0 ends there before its arithmetic becomes slow: below this it changes no 16-bit sample.
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
  const float driveTo = driveTarget;
  const float mixTo = mixTarget;
  drive = ended(drive, driveTo);
  mix = ended(mix, mixTo);
  for (unsigned i = 0; i < count; ++i) {
    if (state->tickListener != nullptr) {
      state->tickListener(*this);
    }
    drive += (driveTo - drive) * kGlide;
    mix += (mixTo - mix) * kGlide;
    out.left[i] = tube(in.left[i], drive, mix);
    out.right[i] = tube(in.right[i], drive, mix);
  }
}

}  // namespace tesh::bramel::plugin::fxkit
