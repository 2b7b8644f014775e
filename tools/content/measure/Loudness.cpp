// Measures through libebur128.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/measure/Loudness.h"

#include <ebur128.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <vector>

#include "content/levels/Balance.h"
#include "core/EngineRate.h"

namespace sivray::content {
namespace {

constexpr auto kLoudnessRate = static_cast<unsigned long>(tesh::cofu::core::kEngineRate);
constexpr double kLeastLoudness = -100.0;

struct Close {
  void operator()(ebur128_state* closed) const { ebur128_destroy(&closed); }
};
using State = std::unique_ptr<ebur128_state, Close>;

State measure(const StereoSound& sound, int mode) {
  State state(ebur128_init(2, kLoudnessRate, mode));
  if (state == nullptr) {
    throw std::runtime_error("libebur128 cannot measure here");
  }
  std::vector<float> frames(2 * sound.left.size());
  for (std::size_t i = 0; i < sound.left.size(); ++i) {
    frames[2 * i] = sound.left[i];
    frames[2 * i + 1] = sound.right[i];
  }
  ebur128_add_frames_float(state.get(), frames.data(), sound.left.size());
  return state;
}

}  // namespace

double integratedLoudness(const StereoSound& sound) {
  double loudness = kLeastLoudness;
  ebur128_loudness_global(measure(sound, EBUR128_MODE_I).get(), &loudness);
  return std::max(loudness, kLeastLoudness);
}

double loudnessRange(const StereoSound& sound) {
  double range = 0.0;
  ebur128_loudness_range(measure(sound, EBUR128_MODE_LRA).get(), &range);
  return range;
}

double truePeak(const StereoSound& sound) {
  const State state = measure(sound, EBUR128_MODE_TRUE_PEAK);
  double left = 0.0;
  double right = 0.0;
  ebur128_true_peak(state.get(), 0, &left);
  ebur128_true_peak(state.get(), 1, &right);
  return decibelsOf(std::max(left, right));
}

}  // namespace sivray::content
