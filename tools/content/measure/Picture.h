// A hit's picture, its spectrum over time in bands of equal width to the ear, and the distance D between two pictures.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>

#include "content/measure/Hit.h"
#include "sheet/Spectrum.h"

namespace sivray::content {

inline constexpr std::size_t kPictureBands = 40;    ///< Of equal width in mel, from 40 Hz to 16 kHz.
inline constexpr std::size_t kPictureMoments = 17;  ///< From 0 to 580 ms, closer together at the start.

/// Levels in dB: for each moment its bands from low to high. All pictures are scaled to the same total energy, so the
/// loudness of hits does not affect D. Levels more than 60 dB below the highest one are raised to that limit, which is
/// `floor`.
struct Picture {
  std::array<float, kPictureMoments * kPictureBands> levels{};
  float floor = 0.0F;
};

/// Draws pictures. Keeps its buffers, so each thread needs its own.
class PictureMaker {
 public:
  PictureMaker();

  /// In the picture of an empty hit all levels are at its floor.
  Picture pictureOf(const Hit& hit);

 private:
  struct Band {
    std::size_t first = 0;       ///< Bin of the first weight.
    std::vector<float> weights;  ///< A triangle over the bins.
  };

  Spectrum spectrum;
  std::array<Band, kPictureBands> bands;
  std::vector<float> padded;
};

/// Returns D: the mean difference in dB over all bands and moments in which at least one of the two is above its floor.
/// Two hits of one drum are about 2.9 apart.
float distance(const Picture& a, const Picture& b);

}  // namespace sivray::content
