// Random echoes in stretches, each darker than the one before.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/synth/Room.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "content/synth/Filters.h"
#include "content/synth/Math.h"

namespace sivray::content {
namespace {

constexpr double kEchoesPerSecond = 1400.0;
constexpr double kFirstEcho = 0.003;

/// A section of the tail: its end as a share of the tail's length, and its low-pass cut-off as a share of the first
/// one.
struct Stretch {
  double end, brightness;
};
constexpr std::array<Stretch, 3> kStretches{{{0.15, 1.0}, {0.45, 0.55}, {1.0, 0.28}}};

struct Echo {
  double seconds, gain;
};

/// Returns echoes at irregular times with falling levels, of total power 1.
std::vector<Echo> echoesOf(double seconds, Random& dice) {
  std::vector<Echo> echoes;
  double power = 0.0;
  for (double at = kFirstEcho; at < seconds; at += dice.between(0.3, 1.7) / kEchoesPerSecond) {
    const double gain = factorOfDecibels(-60.0 * at / seconds) * (dice.unit() < 0.5 ? -1.0 : 1.0);
    echoes.push_back({at, gain});
    power += gain * gain;
  }
  for (Echo& echo : echoes) {
    echo.gain /= std::sqrt(power);
  }
  return echoes;
}

/// The first reflections: where they come, in seconds, and how much each is below the one before, in dB.
constexpr double kEarlyFrom = 0.005;
constexpr double kEarlyTo = 0.03;
constexpr int kReflections = 6;
constexpr double kReflectionFall = 1.5;

void addEarly(Signal& signal, Random own, const RoomSettings& room) {
  Signal source = signal;
  Biquad::highPass(120.0).run(source);
  Biquad::lowPass(room.bright).run(source);
  constexpr double kApart = (kEarlyTo - kEarlyFrom) / kReflections;
  for (int i = 0; i < kReflections; ++i) {
    const std::size_t offset = framesOf(kEarlyFrom + (i + own.unit()) * kApart);
    const double gain = room.early * factorOfDecibels(-kReflectionFall * i);
    for (std::size_t frame = offset; frame < signal.size(); ++frame) {
      signal[frame] += source[frame - offset] * gain;
    }
  }
}

}  // namespace

void addRoom(Signal& signal, Random own, const RoomSettings& room) {
  if (room.early > 0.0) {
    addEarly(signal, own, room);
  }
  if (room.amount <= 0.0) {
    return;
  }
  const std::vector<Echo> echoes = echoesOf(room.seconds, own);
  Signal source = signal;
  Biquad::highPass(120.0).run(source);
  auto echo = echoes.begin();
  for (const Stretch& stretch : kStretches) {
    Signal dark = source;
    Biquad::lowPass(room.bright * stretch.brightness).run(dark);
    for (; echo != echoes.end() && echo->seconds < room.seconds * stretch.end; ++echo) {
      const std::size_t offset = framesOf(echo->seconds);
      const double gain = echo->gain * room.amount;
      for (std::size_t i = offset; i < signal.size(); ++i) {
        signal[i] += dark[i - offset] * gain;
      }
    }
  }
}

}  // namespace sivray::content
