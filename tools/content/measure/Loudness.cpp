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

constexpr auto kRate = static_cast<unsigned long>(tesh::cofu::core::kEngineRate);
constexpr std::size_t kPiece = kRate / 10;  ///< Steps of the search for the loudest 400 ms.

struct Close {
  void operator()(ebur128_state* closed) const { ebur128_destroy(&closed); }
};

}  // namespace

Loudness loudnessOf(const StereoSound& sound) {
  const std::unique_ptr<ebur128_state, Close> state(
      ebur128_init(2, kRate, EBUR128_MODE_M | EBUR128_MODE_I | EBUR128_MODE_TRUE_PEAK));
  if (state == nullptr) {
    throw std::runtime_error("libebur128 cannot measure here");
  }
  Loudness result{.integrated = -100.0, .momentary = -100.0, .truePeak = -100.0};
  std::vector<float> frames(2 * sound.left.size());
  for (std::size_t i = 0; i < sound.left.size(); ++i) {
    frames[2 * i] = sound.left[i];
    frames[2 * i + 1] = sound.right[i];
  }
  for (std::size_t i = 0; i < sound.left.size(); i += kPiece) {
    ebur128_add_frames_float(state.get(), &frames[2 * i], std::min<std::size_t>(kPiece, sound.left.size() - i));
    double loudness = 0.0;
    ebur128_loudness_momentary(state.get(), &loudness);
    result.momentary = std::max(result.momentary, loudness);
  }
  ebur128_loudness_global(state.get(), &result.integrated);
  double left = 0.0;
  double right = 0.0;
  ebur128_true_peak(state.get(), 0, &left);
  ebur128_true_peak(state.get(), 1, &right);
  result.truePeak = decibelsOf(std::max(left, right));
  return result;
}

}  // namespace sivray::content
