// Adds the squares in the order of the samples.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "LevelMeter.h"

namespace sivray::render {

void LevelMeter::add(const float* left, const float* right, int frames) {
  float most = peak;
  double sum = energy;
  for (int i = 0; i < frames; ++i) {
    most = std::max(most, std::max(std::abs(left[i]), std::abs(right[i])));
    sum += static_cast<double>(left[i]) * static_cast<double>(left[i]) +
           static_cast<double>(right[i]) * static_cast<double>(right[i]);
  }
  peak = most;
  energy = sum;
  frameCount += frames;
}

}  // namespace sivray::render
