// Measurements of a kit: its loudness in a groove of its style, with and without its effect, the balance of its pads,
// and the pictures of its main drums.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "content/factory/Kit.h"
#include "content/levels/KitMeter.h"
#include "content/measure/Picture.h"

namespace sivray::content {

struct KitSound {
  std::string name;
  double loudness = 0.0;      ///< Integrated loudness of the groove by EBU R 128, in LUFS.
  double effectChange = 0.0;  ///< Loudness with the effect on, minus the loudness with it off, in dB.
  double wet = 0.0;           ///< Level of the difference that the effect makes, relative to the whole, in dB.
  double truePeak = 0.0;      ///< In dB of full scale, by EBU R 128.
  std::array<double, factory::kPads> pads{};  ///< Loudness of the loudest 400 ms of a full hit, in LUFS.
  std::vector<float> groove;                  ///< The mean of left and right.
  std::array<Picture, 4> pictures;            ///< Of kick, snare, closed and open hat.
  std::array<Picture, 4> dryPictures;         ///< As pictures, with the effect off.
};

/// Plays the groove and the pads of the meter's program `program`.
KitSound soundOf(KitMeter& meter, std::size_t program);

/// Returns the mean distance of the two kits' kicks, snares and hats: with the effects on or off, the lesser of the
/// two.
float distance(const KitSound& a, const KitSound& b);

/// Returns the loudness of each pad, in dB over the mean of the kit's pads.
std::array<double, factory::kPads> balanceOf(const KitSound& kit);

/// Plays the groove of `style` alone, on the meter's selected program.
StereoSound playStyle(KitMeter& meter, std::string_view style);

/// Prints a line for each kit, with marks where it breaks a rule, then the medians and the pairs of kits that sound
/// alike. Returns how often a rule is broken. The rules: kits differ by at most 1.5 dB in loudness, the effect changes
/// the loudness by at most 3 dB, the true peak is at most -0.5 dB, each pad's balance is within 6 dB of that pad's
/// median over all kits, and no two kits are closer than D 4.
int printKits(std::ostream& out, const std::vector<KitSound>& kits);

}  // namespace sivray::content
