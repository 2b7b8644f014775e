// A feedback delay network behind all-pass diffusers.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/synth/Hall.h"

#include <array>
#include <cmath>

#include "content/synth/Filters.h"
#include "content/synth/Math.h"
#include "content/synth/Parts.h"

namespace sivray::content {
namespace {

constexpr std::size_t kLines = 8;
constexpr std::size_t kDiffusers = 4;
constexpr double kDiffusion = 0.62;

/// Added in the loop, so that decaying samples do not become subnormal numbers, which are slow.
constexpr double kFloor = 1e-20;

/// Delays in seconds, chosen without a common divisor.
constexpr std::array<double, kLines> kLineSeconds{0.0297, 0.0371, 0.0411, 0.0437, 0.0533, 0.0617, 0.0701, 0.0793};
constexpr std::array<double, kDiffusers> kDiffuserSeconds{0.0047, 0.0066, 0.0098, 0.0129};

/// A delay line of `size` frames.
class Line {
 public:
  explicit Line(double seconds) : frames(framesOf(seconds) + 1) {}

  double front() const { return frames[at]; }
  void put(double x) {
    frames[at] = x;
    at = at + 1 == frames.size() ? 0 : at + 1;
  }

 private:
  Signal frames;
  std::size_t at = 0;
};

/// An all-pass that spreads an onset over time without colouring it.
class Diffuser {
 public:
  explicit Diffuser(double seconds) : line(seconds) {}

  double next(double x) {
    const double held = line.front();
    const double in = x - kDiffusion * held;
    line.put(in);
    return held + kDiffusion * in;
  }

 private:
  Line line;
};

/// Mixes the lines by an orthogonal matrix, which preserves their energy.
void mixLines(std::array<double, kLines>& lines) {
  for (std::size_t half = 1; half < kLines; half *= 2) {
    for (std::size_t i = 0; i < kLines; ++i) {
      if ((i & half) == 0) {
        const double a = lines[i];
        const double b = lines[i + half];
        lines[i] = (a + b) * 0.7071067811865476;
        lines[i + half] = (a - b) * 0.7071067811865476;
      }
    }
  }
}

}  // namespace

void addHall(Signal& signal, Random own, const HallSettings& hall) {
  if (hall.amount <= 0.0) {
    return;
  }
  std::vector<Diffuser> diffusers;
  diffusers.reserve(kDiffusers);
  for (const double seconds : kDiffuserSeconds) {
    diffusers.emplace_back(seconds * own.between(0.9, 1.1));
  }
  std::vector<Line> lines;
  lines.reserve(kLines);
  std::array<double, kLines> loss{};
  for (std::size_t i = 0; i < kLines; ++i) {
    const double seconds = kLineSeconds[i] * own.between(0.95, 1.05);
    lines.emplace_back(seconds);
    loss[i] = factorOfDecibels(-60.0 * seconds / hall.seconds);
  }
  Signal source = signal;
  Biquad::highPass(150.0).run(source);
  const double pass = 1.0 - exponential(-6.283185307179586 * hall.bright / kSampleRate);
  std::array<double, kLines> dark{};
  Signal wet(signal.size());
  for (std::size_t n = 0; n < signal.size(); ++n) {
    double in = source[n];
    for (Diffuser& diffuser : diffusers) {
      in = diffuser.next(in);
    }
    std::array<double, kLines> out{};
    double sum = 0.0;
    for (std::size_t i = 0; i < kLines; ++i) {
      dark[i] += pass * (lines[i].front() * loss[i] - dark[i]);
      out[i] = dark[i];
      sum += (i & 1) == 0 ? out[i] : -out[i];
    }
    wet[n] = sum;
    mixLines(out);
    for (std::size_t i = 0; i < kLines; ++i) {
      lines[i].put(out[i] + in + kFloor);
    }
  }
  mixInto(signal, wet, hall.amount * 0.35);
}

}  // namespace sivray::content
