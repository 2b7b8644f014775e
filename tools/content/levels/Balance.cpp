// Measures the loudness of each pad and of the whole kit, and searches for the levels that give the wanted ones.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/levels/Balance.h"

#include <algorithm>
#include <cmath>
#include <sstream>

#include "content/factory/MacroLayout.h"
#include "content/measure/KitSound.h"
#include "content/measure/Loudness.h"

namespace sivray::content {
namespace {

/// Loudness of the loudest 400 ms of a full hit, relative to each other, in dB: kick, percussion, snare, clap, cymbal,
/// tom, closed and open hat. Medians of the first 83 kits, whose pads were set individually.
constexpr std::array<double, factory::kPads> kRoles{1.0, -1.0, 0.8, 0.3, 1.8, 0.2, -3.3, -0.2};

constexpr double kGrooveLoudness = -22.5;  ///< Of every kit, in LUFS.
constexpr double kGroovePeak = -0.8;       ///< At most, in dB of full scale.
constexpr double kHalfOfCompressor = 1.3;  ///< In dB.
constexpr int kMostLevel = 127;
constexpr int kRounds = 5;
constexpr int kRoundsPerHit = 3;                    ///< Hits are played in the first of them alone.
constexpr double kHitSeconds = 4.0;                 // Reversed sounds are loudest at their end.
constexpr double kDecibelsPerDecadeOfLevel = 40.0;  // The engine squares the level.

/// The loudness of a full hit, in dB.
struct HitLoudness {
  double peak = 0.0;
  double loudest = 0.0;  ///< In its loudest 400 ms.
};

HitLoudness loudnessOf(const StereoSound& hit) {
  float top = 0.0F;
  for (std::size_t i = 0; i < hit.left.size(); ++i) {
    top = std::max({top, std::abs(hit.left[i]), std::abs(hit.right[i])});
  }
  return {decibelsOf(static_cast<double>(top)), momentaryLoudness(hit)};
}

int movedLevel(int level, double decibels) {
  const double wanted = std::max(level, 1) * std::pow(10.0, decibels / kDecibelsPerDecadeOfLevel);
  return std::clamp(static_cast<int>(std::lround(wanted)), 1, kMostLevel);
}

/// Returns the gain in dB that gives a hit the wanted loudness, unless its peak would leave the allowed range.
double moveOf(const HitLoudness& hit, double loudness) {
  return std::clamp(hit.peak + loudness - hit.loudest, kLowestPeak, kHighestPeak) - hit.peak;
}

}  // namespace

double decibelsOf(double factor) { return 20.0 * std::log10(std::max(factor, 1.0e-6)); }

std::array<int, factory::kPads> balancedLevels(KitMeter& meter, const factory::Kit& kit) {
  std::array<int, factory::kPads> levels{};
  std::ranges::transform(kit.pads, levels.begin(), &factory::KitPad::level);
  // A compressor would cancel each change of level. Such a kit is balanced with the effect off, softer by half of the
  // effect's gain.
  const bool isCompressed = kit.effect == "Compressor";
  meter.setMacro(factory::kEffectSwitchMacro, isCompressed ? 0.0F : 1.0F);
  const double goal = kGrooveLoudness - (isCompressed ? kHalfOfCompressor : 0.0);
  double aim = goal;
  std::array<HitLoudness, factory::kPads> hits;
  for (int round = 0; round < kRounds; ++round) {
    for (std::size_t pad = 0; pad < factory::kPads; ++pad) {
      HitLoudness& hit = hits[pad];
      // With effects that distort, a hit's loudness changes by less than its level.
      if (round % kRoundsPerHit == 0) {
        const Stroke stroke{0.0, factory::padNote(pad), kFullVelocity};
        hit = loudnessOf(meter.play({&stroke, 1}, kHitSeconds));
      }
      const int level = movedLevel(levels[pad], moveOf(hit, aim + kRoles[pad]));
      const double gain = kDecibelsPerDecadeOfLevel * std::log10(static_cast<double>(level) / std::max(levels[pad], 1));
      hit = {hit.peak + gain, hit.loudest + gain};
      levels[pad] = level;
      meter.setMacro(pad * factory::kMacrosPerPad + factory::kLevel,
                     static_cast<float>(level) / static_cast<float>(kMostLevel));
    }
    // Sounds that are longer than the measured 400 ms make the groove louder than its hits suggest.
    const StereoSound groove = playStyle(meter, kit.comment);
    aim += std::min(goal - integratedLoudness(groove), kGroovePeak - truePeak(groove));
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
