// Plays kits and measures them.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/measure/KitSound.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "content/levels/Balance.h"
#include "content/levels/StyleGrooves.h"
#include "content/measure/GrooveSound.h"
#include "content/measure/Loudness.h"

namespace sivray::content {
namespace {

constexpr double kTail = 2.0;  ///< Seconds after the groove.

/// Kick, snare, closed and open hat.
constexpr std::array<std::size_t, 4> kMainPads{0, 2, 6, 7};

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

/// Plays full hits on the main pads.
std::array<Picture, 4> picturesOf(KitMeter& meter) {
  constexpr double kPictureSeconds = 1.0;  // Longer than a picture.
  std::array<Picture, 4> pictures;
  PictureMaker maker;
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    const Stroke stroke{0.0, factory::padNote(kMainPads[i]), kFullVelocity};
    pictures[i] = maker.pictureOf(hitFrom(middleOf(meter.play({&stroke, 1}, kPictureSeconds))));
  }
  return pictures;
}

float meanDistance(const std::array<Picture, 4>& a, const std::array<Picture, 4>& b) {
  float sum = 0.0F;
  for (std::size_t i = 0; i < a.size(); ++i) {
    sum += distance(a[i], b[i]);
  }
  return sum / static_cast<float>(a.size());
}

}  // namespace

StereoSound playStyle(KitMeter& meter, std::string_view style) {
  const Groove& groove = grooveOf(style);
  meter.setTempo(groove.tempo);
  return meter.play(strokesOf(groove), groove.seconds() + kTail);
}

KitSound soundOf(KitMeter& meter, std::size_t program) {
  constexpr double kSecondsHeard = 4.0;  // Reversed sounds are loudest at their end.
  meter.select(program);
  KitSound kit;
  kit.name = meter.programName(program);
  for (std::size_t pad = 0; pad < factory::kPads; ++pad) {
    const Stroke stroke{0.0, factory::padNote(pad), kFullVelocity};
    kit.pads[pad] = momentaryLoudness(meter.play({&stroke, 1}, kSecondsHeard));
  }
  kit.pictures = picturesOf(meter);

  const std::string style = meter.programStyle(program);
  const StereoSound with = playStyle(meter, style);
  meter.setMacro(factory::kEffectSwitchMacro, 0.0F);
  kit.dryPictures = picturesOf(meter);
  const StereoSound without = playStyle(meter, style);
  kit.loudness = integratedLoudness(with);
  kit.truePeak = truePeak(with);
  kit.effectChange = kit.loudness - integratedLoudness(without);
  kit.wet = 0.5 * (decibelsOf(energyOf(difference(with, without))) - decibelsOf(energyOf(with)));
  kit.groove = middleOf(with);
  return kit;
}

float distance(const KitSound& a, const KitSound& b) {
  return std::min(meanDistance(a.pictures, b.pictures), meanDistance(a.dryPictures, b.dryPictures));
}

std::array<double, factory::kPads> balanceOf(const KitSound& kit) {
  auto balance = kit.pads;
  const double mean = std::accumulate(balance.begin(), balance.end(), 0.0) / static_cast<double>(balance.size());
  std::ranges::for_each(balance, [=](double& pad) { pad -= mean; });
  return balance;
}

}  // namespace sivray::content
