// A loop that compilers vectorise.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "SampleWords.h"

#include <algorithm>

namespace sivray::render {

void toWords(const float* samples, int frames, int bits, int* words) {
  // Adding this number rounds to whole numbers, because the last bit of the sum's mantissa then counts units.
  constexpr double kRoundsToUnits = 6755399441055744.0;  // 1.5 * 2^52
  const auto scale = static_cast<double>(1U << (bits - 1));
  const int lastBit = 1 << (32 - bits);
  for (int i = 0; i < frames; ++i) {
    const double limited = std::min(std::max(-scale, static_cast<double>(samples[i]) * scale), scale - 1.0);
    words[i] = static_cast<int>((limited + kRoundsToUnits) - kRoundsToUnits) * lastBit;
  }
}

}  // namespace sivray::render
