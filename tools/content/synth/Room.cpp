// Random echoes in sections, each darker than the one before.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/synth/Room.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <span>
#include <vector>

#include "content/synth/Filters.h"
#include "content/synth/Lanes.h"
#include "content/synth/Math.h"

namespace sivray::content {
namespace {

constexpr double kEchoesPerSecond = 1400.0;
constexpr double kFirstEcho = 0.003;
constexpr double kLowest = 120.0;  ///< Hz: walls reflect nothing below this.

/// A section of the tail: its end as a share of the tail's length, and its low-pass cut-off as a share of the first
/// one.
struct Stretch {
  double end, brightness;
};
constexpr std::array<Stretch, 3> kStretches{{{0.15, 1.0}, {0.45, 0.55}, {1.0, 0.28}}};

struct Echo {
  double seconds, gain;
};

/// Echoes, ordered by offset.
struct Tap {
  std::size_t offset;  ///< Frames.
  double gain;
};

/// Adds the source at each tap; each sample adds the taps in their order. Several samples go through the taps together,
/// so that their sums stay in registers.
template <typename Lanes>
void addTapsIn(Signal& signal, const Signal& source, std::span<const Tap> taps) {
  constexpr std::size_t kTogether = 24;
  constexpr std::size_t kRegisters = kTogether / kLanesOf<Lanes>;
  std::size_t start = 0;
  const auto addLate = [&](auto tap, std::size_t end) {
    for (; tap != taps.end() && tap->offset < end; ++tap) {
      for (std::size_t frame = std::max(start, tap->offset); frame < end; ++frame) {
        signal[frame] += source[frame - tap->offset] * tap->gain;
      }
    }
  };
  for (; start + kTogether <= signal.size(); start += kTogether) {
    std::array<Lanes, kRegisters> sums;
#pragma GCC unroll 12
    for (std::size_t i = 0; i < kRegisters; ++i) {
      load(sums[i], signal.data() + start + i * kLanesOf<Lanes>);
    }
    auto tap = taps.begin();
    for (; tap != taps.end() && tap->offset <= start; ++tap) {
      const double* const from = source.data() + (start - tap->offset);
#pragma GCC unroll 12
      for (std::size_t i = 0; i < kRegisters; ++i) {
        Lanes samples;
        load(samples, from + i * kLanesOf<Lanes>);
        sums[i] += samples * tap->gain;
      }
    }
#pragma GCC unroll 12
    for (std::size_t i = 0; i < kRegisters; ++i) {
      store(signal.data() + start + i * kLanesOf<Lanes>, sums[i]);
    }
    addLate(tap, start + kTogether);
  }
  addLate(taps.begin(), signal.size());
}

void addTaps(Signal& signal, const Signal& source, std::span<const Tap> taps) {
  runInLanes([&]<typename Lanes>(std::type_identity<Lanes>) { addTapsIn<Lanes>(signal, source, taps); });
}

/// Returns echoes at irregular times with falling levels and a total power of 1.
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

/// The first reflections: their times in seconds, and the drop in level from each to the next, in dB.
constexpr double kEarlyFrom = 0.005;
constexpr double kEarlyTo = 0.03;
constexpr int kReflections = 6;
constexpr double kReflectionFall = 1.5;

void addEarly(Signal& signal, Random own, const RoomSettings& room) {
  Signal source = signal;
  Biquad::runInTurn(source, Biquad::highPass(kLowest), Biquad::lowPass(room.bright));
  constexpr double kApart = (kEarlyTo - kEarlyFrom) / kReflections;
  std::array<Tap, kReflections> taps{};
  for (std::size_t i = 0; i < taps.size(); ++i) {
    const auto number = static_cast<double>(i);
    taps[i] = {framesOf(kEarlyFrom + (number + own.unit()) * kApart),
               room.early * factorOfDecibels(-kReflectionFall * number)};
  }
  addTaps(signal, source, taps);
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
  Biquad high = Biquad::highPass(kLowest);
  std::array<Biquad, kStretches.size()> low;
  std::array<Signal, kStretches.size()> dark;
  for (std::size_t i = 0; i < dark.size(); ++i) {
    low[i] = Biquad::lowPass(room.bright * kStretches[i].brightness);
    dark[i].resize(signal.size());
  }
  for (std::size_t frame = 0; frame < signal.size(); ++frame) {
    const double x = high.next(signal[frame]);
    for (std::size_t i = 0; i < dark.size(); ++i) {
      dark[i][frame] = low[i].next(x);
    }
  }
  auto echo = echoes.begin();
  for (std::size_t i = 0; i < dark.size(); ++i) {
    std::vector<Tap> taps;
    for (; echo != echoes.end() && echo->seconds < room.seconds * kStretches[i].end; ++echo) {
      taps.push_back({framesOf(echo->seconds), echo->gain * room.amount});
    }
    addTaps(signal, dark[i], taps);
  }
}

}  // namespace sivray::content
