// The loops behind the parts: envelopes, glides, tones, modes, noise bands, clicks, oscillators.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/synth/Parts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <functional>

#include "content/synth/Filters.h"
#include "content/synth/Lanes.h"
#include "content/synth/Math.h"

namespace sivray::content {
namespace {

constexpr double kNyquist = kSampleRate / 2.0;
constexpr double kHighestMode = 20000.0;

/// Below this a falling level is set to zero, long before subnormal numbers would slow it down.
constexpr double kSilence = 1e-9;

/// Returns the factor per frame that falls to 1/e in `seconds`.
double fallPerFrame(double seconds) { return seconds <= 0.0 ? 0.0 : exponential(-1.0 / (seconds * kSampleRate)); }

/// Partials below this level are not rendered: a third of a 16-bit sample's last bit.
constexpr double kInaudible = 1e-5;

/// Returns the frames until a mode has become inaudible, at most `limit`.
std::size_t audibleFrames(const Mode& mode, std::size_t limit) {
  const double decades = logarithmOfTwo(std::max(std::abs(mode.gain) / kInaudible, 1.0)) * 0.3010299956639812;
  return std::min(framesOf(mode.t60 * decades / 3.0 + mode.attack) + 1, limit);
}

/// A decaying sine, four frames at a time. With r the fall and w the angle of a frame, each four follow from the eight
/// before: y[n + 8] = 2 r^4 cos(4 w) y[n + 4] - r^8 y[n].
template <typename Lanes>
class Partial {
 public:
  static constexpr std::size_t kFrames = 4;
  using Frames = std::array<Lanes, kFrames / kLanesOf<Lanes>>;

  /// Silence.
  Partial() = default;

  explicit Partial(const Mode& mode) : rise(mode.attack > 0.0 ? 1.0 / (mode.attack * kSampleRate) : 1.0) {
    const double angle = mode.hertz / kSampleRate;
    const double fall = decayPerFrame(mode.t60);
    const std::complex<double> turn{cosineOfTurns(angle) * fall, sineOfTurns(angle) * fall};
    std::complex<double> place{cosineOfTurns(mode.phase) * mode.gain, sineOfTurns(mode.phase) * mode.gain};
    for (Frames& half : halves) {
      for (std::size_t i = 0; i < kFrames; ++i) {
        half[i / kLanesOf<Lanes>][i % kLanesOf<Lanes>] = place.imag();
        place = product(place, turn);
      }
    }
    const std::complex<double> two = product(turn, turn);
    const std::complex<double> four = product(two, two);
    forward = 2.0 * four.real();
    back = four.real() * four.real() + four.imag() * four.imag();
    level = mode.attack > 0.0 ? 0.0 : 1.0;
  }

  bool hasRisen() const { return level == 1.0; }

  /// The next four frames are in each half of the eight by turns.
  const Frames& frames(std::size_t half) const { return halves[half]; }

  void advance(std::size_t half) {
    for (std::size_t i = 0; i < halves[half].size(); ++i) {
      halves[half][i] = forward * halves[1 - half][i] - back * halves[half][i];
    }
  }

  /// Lets the level rise over the next frames.
  void shape(Frames& frames) {
    for (Lanes& some : frames) {
      Lanes levels{};
      for (std::size_t i = 0; i < kLanesOf<Lanes>; ++i) {
        levels[i] = level;
        level = std::min(level + rise, 1.0);
      }
      some *= levels;
    }
  }

 private:
  static std::complex<double> product(const std::complex<double>& a, const std::complex<double>& b) {
    return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
  }

  std::array<Frames, 2> halves{};
  double forward = 0.0;
  double back = 0.0;
  double rise = 1.0;
  double level = 1.0;
};

/// Partials that run side by side. What they add is the sum of two pairs.
template <typename Lanes>
using Four = std::array<Partial<Lanes>, 4>;

/// Adds the next frames, whose number is a multiple of eight.
template <typename Lanes>
void addFour(std::span<double> samples, Four<Lanes>& running) {
  Four<Lanes> four = running;
  const auto add = [&samples, &four](auto shape) {
    for (double* to = samples.data(); to != samples.data() + samples.size();) {
      for (const std::size_t half : {0U, 1U}) {
        std::array<typename Partial<Lanes>::Frames, 4> out{};
        for (std::size_t i = 0; i < out.size(); ++i) {
          out[i] = four[i].frames(half);
          shape(four[i], out[i]);
        }
        for (std::size_t i = 0; i < out[0].size(); ++i, to += kLanesOf<Lanes>) {
          Lanes sum;
          load(sum, to);
          sum += (out[0][i] + out[1][i]) + (out[2][i] + out[3][i]);
          store(to, sum);
        }
        for (Partial<Lanes>& partial : four) {
          partial.advance(half);
        }
      }
    }
  };
  if (std::ranges::all_of(four, &Partial<Lanes>::hasRisen)) {
    add([](auto&, auto&) {});
  } else {
    add([](auto& partial, auto& frames) { partial.shape(frames); });
  }
  running = four;
}

/// Adds the sums of both fours.
template <typename Lanes>
void addEight(std::span<double> samples, std::array<Four<Lanes>, 2>& fours) {
  constexpr std::size_t kStretch = 1024;
  constexpr std::size_t kStep = 2 * Partial<Lanes>::kFrames;
  std::array<double, kStretch> sums;
  while (!samples.empty()) {
    const std::size_t count = std::min(samples.size(), kStretch);
    sums.fill(0.0);
    for (Four<Lanes>& four : fours) {
      addFour<Lanes>(std::span(sums).first((count + kStep - 1) / kStep * kStep), four);
    }
    for (std::size_t i = 0; i < count; ++i) {
      samples[i] += sums[i];
    }
    samples = samples.subspan(count);
  }
}

/// A mode, and the frames for which it is heard.
struct HeardMode {
  const Mode* mode;
  std::size_t frames;
};

template <typename Lanes>
void addHeard(Signal& signal, std::span<const HeardMode> modes) {
  for (auto next = modes.begin(); next != modes.end();) {
    const std::size_t frames = next->frames;
    std::array<Four<Lanes>, 2> fours;
    for (Four<Lanes>& four : fours) {
      for (Partial<Lanes>& partial : four) {
        if (next != modes.end()) {
          partial = Partial<Lanes>(*next++->mode);
        }
      }
    }
    addEight<Lanes>(std::span(signal).first(frames), fours);
  }
}

/// Modes that follow a glide, as many as there are lanes. Each lane computes what addTone does, and a sample takes the
/// lanes up one after another.
template <typename Lanes>
class GlidingModes {
 public:
  explicit GlidingModes(std::span<const Mode> modes) {
    for (std::size_t i = 0; i < modes.size(); ++i) {
      hertz[i] = modes[i].hertz;
      gain[i] = modes[i].gain;
      phase[i] = modes[i].phase - std::floor(modes[i].phase);
      attack[i] = static_cast<double>(framesOf(modes[i].attack));
      fall[i] = decayPerFrame(modes[i].t60);
      level[i] = 1.0;
      risen = std::max(risen, framesOf(modes[i].attack));
    }
  }

  void addTo(Signal& signal, std::span<const double> ratios) {
    const Lanes zero{};
    const Lanes one = zero + 1.0;
    const Lanes highest = zero + kNyquist;
    for (std::size_t frame = 0; frame < signal.size() && !isOver(); ++frame) {
      Lanes wave = level;
      if (frame < risen) {
        rise(static_cast<double>(frame), wave);
      } else {
        level *= fall;
        level = level < kSilence ? zero : level;
      }
      Lanes sine;
      sineOfPhases(sine);
      wave = gain * wave * sine;
      for (std::size_t i = 0; i < kLanesOf<Lanes>; ++i) {
        signal[frame] += wave[i];
      }
      const Lanes gliding = hertz * ratios[frame];
      phase += (gliding > highest ? highest : gliding) / kSampleRate;
      phase -= phase >= 1.0 ? one : zero;
    }
  }

 private:
  /// Gives the levels of a frame in which not all lanes have risen.
  void rise(double frame, Lanes& levels) {
    for (std::size_t i = 0; i < kLanesOf<Lanes>; ++i) {
      if (frame < attack[i]) {
        levels[i] = frame / attack[i];
      } else {
        level[i] *= fall[i];
        level[i] = level[i] < kSilence ? 0.0 : level[i];
      }
    }
  }

  /// As sineOfTurns of the phases.
  void sineOfPhases(Lanes& sine) const {
    const Lanes half = Lanes{} + 0.5;
    sine = phase - (phase + half >= 1.0 ? Lanes{} + 1.0 : Lanes{});
    sine = sine > 0.25 ? half - sine : sine;
    sine = sine < -0.25 ? -half - sine : sine;
    replaceBySine(sine);
  }

  bool isOver() const {
    double sum = 0.0;
    for (std::size_t i = 0; i < kLanesOf<Lanes>; ++i) {
      sum += level[i];
    }
    return sum == 0.0;
  }

  Lanes hertz{}, gain{}, phase{}, attack{}, fall{}, level{};
  std::size_t risen = 0;
};

template <typename Lanes>
void addGliding(Signal& signal, std::span<const Mode> modes, std::span<const double> ratios) {
  for (std::size_t i = 0; i < modes.size(); i += kLanesOf<Lanes>) {
    GlidingModes<Lanes>(modes.subspan(i, std::min(kLanesOf<Lanes>, modes.size() - i))).addTo(signal, ratios);
  }
}

}  // namespace

Envelope::Envelope(const Shape& shape)
    : delayFrames(content::framesOf(shape.delay)),
      attackFrames(content::framesOf(shape.attack)),
      holdFrames(content::framesOf(shape.hold)),
      factor(decayPerFrame(shape.t60)) {}

double Envelope::next() {
  const std::size_t at = frame++;
  if (at < delayFrames) {
    return 0.0;
  }
  if (at < delayFrames + attackFrames) {
    return static_cast<double>(at - delayFrames) / static_cast<double>(attackFrames);
  }
  if (at < delayFrames + attackFrames + holdFrames) {
    return 1.0;
  }
  const double now = level;
  level *= factor;
  if (level < kSilence) {
    level = 0.0;
  }
  return now;
}

std::size_t Envelope::framesOf(const Shape& shape, std::size_t limit) {
  Envelope envelope(shape);
  std::size_t frames = 0;
  for (; frames < limit && !envelope.isOver(); ++frames) {
    envelope.next();
  }
  return frames;
}

GlideRatio::GlideRatio(const Glide& glide)
    : bend(glide.bend),
      bendFactor(fallPerFrame(glide.bendTime)),
      snap(glide.snap),
      snapFactor(fallPerFrame(glide.snapTime)) {}

double GlideRatio::next() {
  const double ratio = 1.0 + bend + snap;
  bend = std::abs(bend) < kSilence ? 0.0 : bend * bendFactor;
  snap = std::abs(snap) < kSilence ? 0.0 : snap * snapFactor;
  return ratio;
}

void addTone(Signal& signal, const Tone& tone) {
  if (tone.gain == 0.0) {
    return;
  }
  GlideRatio ratio(tone.glide);
  Envelope envelope(tone.shape);
  double phase = tone.phase;
  const double drive = 1.0 + 9.0 * tone.fold;
  const double makeUp = 1.0 / saturate(drive);
  for (double& sample : signal) {
    if (envelope.isOver()) {
      return;
    }
    const double wave = sineOfTurns(phase);
    sample += tone.gain * envelope.next() * (tone.fold > 0.0 ? saturate(wave * drive) * makeUp : wave);
    phase += std::min(tone.hertz * ratio.next(), kNyquist) / kSampleRate;
    phase -= wholeBelow(phase);
  }
}

void addModes(Signal& signal, std::span<const Mode> modes) {
  std::vector<HeardMode> heard;
  for (const Mode& mode : modes) {
    if (mode.hertz < kHighestMode) {
      heard.push_back({&mode, audibleFrames(mode, signal.size())});
    }
  }
  // Those that run side by side end together: the ones that are heard for as long.
  std::ranges::stable_sort(heard, std::greater(), &HeardMode::frames);
  runInLanes([&]<typename Lanes>(std::type_identity<Lanes>) { addHeard<Lanes>(signal, heard); });
}

void addModes(Signal& signal, std::span<const Mode> modes, const Glide& glide) {
  std::vector<double> ratios(signal.size());
  GlideRatio ratio(glide);
  std::ranges::generate(ratios, [&] { return ratio.next(); });
  runInLanes([&]<typename Lanes>(std::type_identity<Lanes>) { addGliding<Lanes>(signal, modes, ratios); });
}

void addNoise(Signal& signal, Noise noise, const NoiseBand& band) {
  if (band.gain == 0.0) {
    return;
  }
  const double low = std::clamp(band.low, 10.0, 18000.0);
  const double high = std::clamp(band.high, low * 1.05, 20000.0);
  const Biquad highPass = Biquad::highPass(low);
  const Biquad lowPass = Biquad::lowPass(high);
  const double gain = band.gain * std::sqrt(kNyquist / (high - low));
  Envelope envelope(band.shape);
  // As many filters as the compiler knows of stay in registers.
  const auto addThrough = [&](auto... filters) {
    for (double& sample : signal) {
      if (envelope.isOver()) {
        return;
      }
      double x = noise.next();
      ((x = filters.next(x)), ...);
      sample += x * gain * envelope.next();
    }
  };
  if (band.poles == 1) {
    addThrough(highPass, lowPass);
  } else {
    addThrough(highPass, lowPass, highPass, lowPass);
  }
}

void addClick(Signal& signal, Noise noise, const Click& click) {
  const std::size_t frames = std::min(framesOf(click.seconds), signal.size());
  double phase = 0.0;
  for (std::size_t i = 0; i < frames; ++i) {
    const double place = static_cast<double>(i) / static_cast<double>(frames);
    const double window = (0.5 - 0.5 * cosineOfTurns(std::sqrt(place))) * 1.2;
    const double tone = sineOfTurns(phase);
    signal[i] += click.gain * window * (tone + click.noise * (noise.next() * 0.7 - tone));
    phase += click.hertz * (1.5 - place) / kSampleRate;
  }
}

void mixInto(Signal& to, const Signal& from, double gain) {
  const std::size_t frames = std::min(to.size(), from.size());
  for (std::size_t i = 0; i < frames; ++i) {
    to[i] += from[i] * gain;
  }
}

double rmsOf(const Signal& signal) {
  double sum = 0.0;
  for (const double sample : signal) {
    sum += sample * sample;
  }
  return signal.empty() ? 0.0 : std::sqrt(sum / static_cast<double>(signal.size()));
}

double peakOf(const Sound& sound) {
  double peak = 0.0;
  for (const Signal& channel : sound) {
    for (const double sample : channel) {
      peak = std::max(peak, std::abs(sample));
    }
  }
  return peak;
}

void normalise(Signal& signal, double peak) {
  double highest = 0.0;
  for (const double sample : signal) {
    highest = std::max(highest, std::abs(sample));
  }
  if (highest > 0.0) {
    for (double& sample : signal) {
      sample *= peak / highest;
    }
  }
}

}  // namespace sivray::content
