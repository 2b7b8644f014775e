// Target loudness for each pad, and the search for the levels that reach it.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/levels/Balance.h"

#include <algorithm>
#include <cmath>
#include <sstream>

#include "content/factory/MacroLayout.h"

namespace sivray::content {
namespace {

/// Target loudness of a full hit by pad, in dB of full scale: kick, percussion, snare, clap, cymbal, tom, closed and
/// open hat.
constexpr std::array<double, factory::kPads> kLoudness{-17.0, -22.0, -19.5, -20.5, -22.5, -19.0, -25.5, -24.5};

constexpr int kMostLevel = 127;
constexpr int kRounds = 6;
constexpr double kCloseEnough = 0.1;

/// Returns the gain in dB that brings a pad to its loudness, limited so that its peak stays in the window.
double moveOf(const HitMeasure& hit, double loudness) {
  const double peak = decibelsOf(hit.peak);
  return std::clamp(peak + loudness - decibelsOf(hit.loudness), kLowestPeak, kHighestPeak) - peak;
}

int balancedLevel(KitMeter& meter, std::size_t pad, int level) {
  constexpr double kDecibelsPerDecadeOfLevel = 40.0;  // The engine squares the level.
  const std::size_t macro = pad * factory::kMacrosPerPad + factory::kLevel;
  for (int round = 0; round < kRounds; ++round) {
    meter.setMacro(macro, static_cast<float>(level) / static_cast<float>(kMostLevel));
    const HitMeasure hit = meter.hit({factory::kFirstPadNote + static_cast<int>(pad)}, kFullVelocity, kListenSeconds);
    const double move = moveOf(hit, kLoudness[pad]);
    const double wanted = std::max(level, 1) * std::pow(10.0, move / kDecibelsPerDecadeOfLevel);
    const int next = std::clamp(static_cast<int>(std::lround(wanted)), 1, kMostLevel);
    if (std::abs(move) < kCloseEnough || next == level) {
      break;
    }
    level = next;
  }
  return level;
}

}  // namespace

double decibelsOf(double factor) { return 20.0 * std::log10(std::max(factor, 1.0e-6)); }

std::array<int, factory::kPads> balancedLevels(KitMeter& meter, const factory::Kit& kit) {
  std::array<int, factory::kPads> levels{};
  for (std::size_t pad = 0; pad < factory::kPads; ++pad) {
    levels[pad] = balancedLevel(meter, pad, kit.pads[pad].level);
  }
  return levels;
}

std::string withLevels(const std::string& text, const factory::Kit& kit,
                       const std::array<int, factory::kPads>& levels) {
  static const std::string kSetting = "level=";
  std::istringstream lines(text);
  std::string line;
  std::string result;
  for (int number = 1; std::getline(lines, line); ++number) {
    const auto pad = std::ranges::find(kit.pads, number, &factory::KitPad::line);
    const std::size_t place = line.find(kSetting);
    if (pad != kit.pads.end() && place != std::string::npos) {
      const std::size_t digits = place + kSetting.size();
      const std::size_t end = std::min(line.find_first_not_of("0123456789+", digits), line.size());
      const std::string level = std::to_string(levels[static_cast<std::size_t>(pad - kit.pads.begin())]);
      line.replace(digits, end - digits, level);
    }
    result += line + "\n";
  }
  return result;
}

}  // namespace sivray::content
