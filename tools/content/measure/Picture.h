// A hit's picture, which is its spectrum over time as the ear divides it, and the distance D between two pictures.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>

#include "content/measure/Hit.h"
#include "sheet/Spectrum.h"

namespace sivray::content {

inline constexpr std::size_t kPictureBands = 40;    ///< Of equal width in mel, from 40 Hz to 16 kHz.
inline constexpr std::size_t kPictureMoments = 17;  ///< From 0 to 580 ms, closer together at the start.

/// Levels in dB, moment by moment, each with its bands from low to high. All pictures have the same energy in total, so
/// that they compare whatever the levels of the hits. What lies more than 60 dB below the strongest place is lifted to
/// that level, which is `floor`.
struct Picture {
  std::array<float, kPictureMoments * kPictureBands> levels{};
  float floor = 0.0F;
};

/// Draws pictures. One for each thread: it keeps its buffers.
class PictureMaker {
 public:
  PictureMaker();

  /// The picture of an empty hit is all at its floor.
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

/// Returns D: the mean difference in dB over all places where at least one of the two is above its floor. Two hits of
/// one drum are about 2.9 apart.
float distance(const Picture& a, const Picture& b);

}  // namespace sivray::content
