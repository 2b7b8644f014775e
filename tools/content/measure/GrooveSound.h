// Loudness, peaks and gaps of the demo's grooves, each played on its kit.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "content/demo/Groove.h"
#include "content/levels/KitMeter.h"
#include "content/measure/Loudness.h"

namespace sivray::content {

struct GrooveSound {
  std::string kit;
  StereoSound sound;
  double loudness = 0.0;  ///< Integrated, in LUFS.
  double truePeak = 0.0;  ///< In dB of full scale.
  double range = 0.0;     ///< Loudness range, in LU.
  double gap = 0.0;       ///< Seconds of the longest stretch below -50 dB of full scale.
};

/// Returns the hits of a groove, ordered by time.
std::vector<Stroke> strokesOf(const Groove& groove);

/// Plays a groove and the tail after its last bar. Throws std::runtime_error when the content has no such kit.
GrooveSound soundOf(KitMeter& meter, const Groove& groove);

/// Plays all grooves. The first item of the result is the whole suite, without a kit's name; the grooves follow in
/// order.
std::vector<GrooveSound> soundsOf(KitMeter& meter, const std::vector<Groove>& suite);

/// Prints a line for each groove, then for the suite.
void printGrooves(std::ostream& out, const std::vector<GrooveSound>& sounds);

}  // namespace sivray::content
