// What a kit sounds like: its loudness in a groove of its style, with and without its effect, the balance of its pads,
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
  double loudness = 0.0;                      ///< Integrated loudness of the groove by EBU R 128, in LUFS.
  double effectChange = 0.0;                  ///< Loudness with the effect on over that with it off, in dB.
  double wet = 0.0;                           ///< What the effect adds or takes away, relative to the whole, in dB.
  double truePeak = 0.0;                      ///< In dB of full scale, by EBU R 128.
  std::array<double, factory::kPads> pads{};  ///< Loudness of the loudest 400 ms of a full hit, in LUFS.
  std::vector<float> groove;                  ///< The middle of both sides.
  std::array<Picture, 4> pictures;            ///< Of kick, snare, closed and open hat.
  std::array<Picture, 4> dryPictures;         ///< The same with the effect off.
};

/// Plays the groove and the pads of the meter's program `program`.
KitSound soundOf(KitMeter& meter, std::size_t program);

/// Returns the mean distance of the two kits' kicks, snares and hats, with the effects on or off, whichever is less.
float distance(const KitSound& a, const KitSound& b);

/// Returns how loud each pad is, in dB over the mean of the kit's pads.
std::array<double, factory::kPads> balanceOf(const KitSound& kit);

/// Plays the groove of `style` alone, on the meter's selected program.
StereoSound playStyle(KitMeter& meter, std::string_view style);

/// Prints a line for each kit, with marks where it breaks a rule, then the medians and the pairs of kits that sound
/// alike. Returns how often a rule is broken. The rules: loudness at most 1.5 dB apart from any other kit's, the effect
/// changes it by at most 3 dB, true peak at most -0.5 dB, pads within 6 dB of their role, which is the median of that
/// pad's balance over all kits, no two kits closer than D 4.
int printKits(std::ostream& out, const std::vector<KitSound>& kits);

}  // namespace sivray::content
