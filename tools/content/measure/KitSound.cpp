// Plays kits and measures them.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/measure/KitSound.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "content/levels/Balance.h"
#include "content/measure/Loudness.h"

namespace sivray::content {
namespace {

constexpr double kSixteenth = 60.0 / 110.0 / 4.0;  ///< A sixteenth at 110 beats a minute, in seconds.
constexpr int kStepsPerBar = 16;
constexpr int kBars = 4;
constexpr double kTail = 2.0;
constexpr double kSeconds = kSixteenth * kStepsPerBar * kBars + kTail;

/// Kick, snare, closed and open hat.
constexpr std::array<std::size_t, 4> kMainPads{0, 2, 6, 7};

/// A bar of the groove: pad, step, velocity. The cymbal plays in the first bar only, the tom in the last.
struct Beat {
  int pad, step, velocity;
};
constexpr int kCymbalPad = 4;
constexpr int kTomPad = 5;
constexpr Beat kBar[]{{0, 0, 120},  {4, 0, 110}, {6, 0, 100},  {6, 2, 75},   {6, 4, 100}, {2, 4, 120},  {1, 6, 90},
                      {6, 6, 75},   {0, 7, 90},  {6, 8, 100},  {0, 10, 115}, {6, 10, 75}, {2, 12, 120}, {3, 12, 100},
                      {6, 12, 100}, {5, 13, 90}, {7, 14, 100}, {5, 14, 100}, {5, 15, 110}};

std::vector<Stroke> groove() {
  std::vector<Stroke> strokes;
  for (int bar = 0; bar < kBars; ++bar) {
    for (const auto& [pad, step, velocity] : kBar) {
      if ((pad != kCymbalPad || bar == 0) && (pad != kTomPad || bar == kBars - 1)) {
        strokes.push_back({kSixteenth * (bar * kStepsPerBar + step), factory::kFirstPadNote + pad, velocity});
      }
    }
  }
  return strokes;
}

double energyOf(const StereoSound& sound) {
  return std::inner_product(sound.left.begin(), sound.left.end(), sound.left.begin(), 0.0) +
         std::inner_product(sound.right.begin(), sound.right.end(), sound.right.begin(), 0.0);
}

StereoSound difference(StereoSound a, const StereoSound& b) {
  std::ranges::transform(a.left, b.left, a.left.begin(), std::minus{});
  std::ranges::transform(a.right, b.right, a.right.begin(), std::minus{});
  return a;
}

std::vector<float> middleOf(StereoSound sound) {
  std::ranges::transform(sound.left, sound.right, sound.left.begin(), [](float l, float r) { return 0.5F * (l + r); });
  return std::move(sound.left);
}

}  // namespace

double grooveLoudness(KitMeter& meter) { return integratedLoudness(meter.play(groove(), kSeconds)); }

KitSound soundOf(KitMeter& meter, std::size_t program) {
  constexpr double kHitSeconds = 4.0;  // Reversed sounds are loudest at their end.
  meter.select(program);
  KitSound kit;
  kit.name = meter.programName(program);
  PictureMaker maker;
  for (std::size_t pad = 0; pad < factory::kPads; ++pad) {
    const Stroke stroke{0.0, factory::kFirstPadNote + static_cast<int>(pad), kFullVelocity};
    StereoSound sound = meter.play({&stroke, 1}, kHitSeconds);
    kit.pads[pad] = momentaryLoudness(sound);
    if (const auto main = std::ranges::find(kMainPads, pad); main != kMainPads.end()) {
      kit.pictures[static_cast<std::size_t>(main - kMainPads.begin())] =
          maker.pictureOf(hitFrom(middleOf(std::move(sound))));
    }
  }

  const std::vector<Stroke> strokes = groove();
  const StereoSound with = meter.play(strokes, kSeconds);
  meter.setMacro(factory::kEffectSwitchMacro, 0.0F);
  const StereoSound without = meter.play(strokes, kSeconds);
  kit.loudness = integratedLoudness(with);
  kit.truePeak = truePeak(with);
  kit.effectChange = kit.loudness - integratedLoudness(without);
  kit.wet = 0.5 * (decibelsOf(energyOf(difference(with, without))) - decibelsOf(energyOf(with)));
  kit.groove = middleOf(with);
  return kit;
}

float distance(const KitSound& a, const KitSound& b) {
  float sum = 0.0F;
  for (std::size_t i = 0; i < a.pictures.size(); ++i) {
    sum += distance(a.pictures[i], b.pictures[i]);
  }
  return sum / static_cast<float>(a.pictures.size());
}

}  // namespace sivray::content
