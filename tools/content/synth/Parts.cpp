// The loops behind the parts: envelopes, glides, tones, modes, noise bands, clicks, oscillators.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/synth/Parts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <iterator>

#include "content/synth/Filters.h"
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

/// Decaying sines by complex rotation; several run side by side in vectors.
class Rotors {
 public:
  static constexpr std::size_t kLanes = 8;

  /// Restarts a lane with a mode.
  void set(std::size_t lane, const Mode& mode) {
    const double turn = mode.hertz / kSampleRate;
    const double fall = decayPerFrame(mode.t60);
    Four& four = fours[lane / kInFour];
    const std::size_t i = lane % kInFour;
    four.cosine[i] = cosineOfTurns(turn) * fall;
    four.sine[i] = sineOfTurns(turn) * fall;
    four.x[i] = cosineOfTurns(mode.phase) * mode.gain;
    four.y[i] = sineOfTurns(mode.phase) * mode.gain;
    four.step[i] = mode.attack > 0.0 ? 1.0 / (mode.attack * kSampleRate) : 1.0;
    four.level[i] = mode.attack > 0.0 ? 0.0 : 1.0;
  }

  /// Whether all lanes have reached their full level.
  bool haveRisen() const { return fours[0].hasRisen() && fours[1].hasRisen(); }

  double nextWhileRising() { return fours[0].nextWhileRising() + fours[1].nextWhileRising(); }

  /// Adds as many frames as a vector has lanes. All lanes must have risen.
  void addNext(double* samples) {
    Doubles first, second, sums;
    fours[0].next(first);
    fours[1].next(second);
    std::memcpy(&sums, samples, sizeof(sums));
    sums += first + second;
    std::memcpy(samples, &sums, sizeof(sums));
  }

  static constexpr std::size_t kInFour = kLanes / 2;

 private:
  using Doubles = double __attribute__((vector_size(kInFour * sizeof(double))));

  struct Four {
    bool hasRisen() const { return level[0] == 1.0 && level[1] == 1.0 && level[2] == 1.0 && level[3] == 1.0; }

    void turn() {
      const Doubles turned = x * cosine - y * sine;
      y = x * sine + y * cosine;
      x = turned;
    }

    double nextWhileRising() {
      const Doubles out = y * level;
      const Doubles risen = level + step;
      const Doubles full = Doubles{} + 1.0;
      level = risen > full ? full : risen;
      turn();
      return (out[0] + out[1]) + (out[2] + out[3]);
    }

    /// Gives the sums of the next four frames, each added up as above.
    void next(Doubles& sums) {
      Doubles early, late;
      nextPair(early);
      nextPair(late);
      sums = __builtin_shufflevector(early, late, 0, 1, 4, 5) + __builtin_shufflevector(early, late, 2, 3, 6, 7);
    }

    /// Gives the sums of the first two lanes in two frames, then those of the others.
    void nextPair(Doubles& sums) {
      const Doubles first = y;
      turn();
      const Doubles second = y;
      turn();
      sums = __builtin_shufflevector(first, second, 0, 4, 2, 6) + __builtin_shufflevector(first, second, 1, 5, 3, 7);
    }

    Doubles cosine{}, sine{}, x{}, y{}, step{};
    Doubles level = Doubles{} + 1.0;  // Lanes that nobody sets are silent, and must not seem to rise.
  };

  std::array<Four, 2> fours{};
};

/// Rotors, and the frames for which they are heard.
struct RotorGroup {
  Rotors rotors;
  std::size_t frames = 0;
};

// A quarter of the time that the factory sounds take is spent here. Two groups run at once, because each frame waits
// for the one before; a sample takes up the first before the second. With AVX2 the rotors stay in registers; the sums
// are the same.
#if defined(__linux__) && defined(__x86_64__) && !defined(__clang__)
[[gnu::target_clones("avx2", "default"), gnu::flatten]]
#endif
void addRotors(double* samples, const RotorGroup& first, const RotorGroup& second) {
  Rotors a = first.rotors;
  Rotors b = second.rotors;
  const std::size_t both = std::min(first.frames, second.frames);
  std::size_t frame = 0;
  const auto addOne = [&] {
    samples[frame] += a.nextWhileRising();
    samples[frame] += b.nextWhileRising();
    ++frame;
  };
  while (frame < both && !(a.haveRisen() && b.haveRisen())) {
    addOne();
  }
  for (; frame + Rotors::kInFour <= both; frame += Rotors::kInFour) {
    a.addNext(samples + frame);
    b.addNext(samples + frame);
  }
  while (frame < both) {
    addOne();
  }
  Rotors& longer = first.frames > both ? a : b;
  const std::size_t end = std::max(first.frames, second.frames);
  for (; frame < end && !longer.haveRisen(); ++frame) {
    samples[frame] += longer.nextWhileRising();
  }
  for (; frame + Rotors::kInFour <= end; frame += Rotors::kInFour) {
    longer.addNext(samples + frame);
  }
  for (; frame < end; ++frame) {
    samples[frame] += longer.nextWhileRising();
  }
}

/// Up to four modes that follow a glide, side by side in a vector. Each lane computes what addTone does, and a sample
/// takes the lanes up one after another.
class GlidingModes {
 public:
  static constexpr std::size_t kLanes = 4;

  explicit GlidingModes(std::span<const Mode> modes) {
    for (std::size_t i = 0; i < modes.size(); ++i) {
      hertz[i] = modes[i].hertz;
      gain[i] = modes[i].gain;
      phase[i] = modes[i].phase - std::floor(modes[i].phase);
      attack[i] = static_cast<double>(framesOf(modes[i].attack));
      fall[i] = decayPerFrame(modes[i].t60);
      level[i] = 1.0;
    }
  }

  void addTo(Signal& signal, std::span<const double> ratios) {
    const Doubles zero{};
    const Doubles one = zero + 1.0;
    const Doubles highest = zero + kNyquist;
    const auto risen =
        static_cast<std::size_t>(std::max(std::max(attack[0], attack[1]), std::max(attack[2], attack[3])));
    for (std::size_t frame = 0; frame < signal.size(); ++frame) {
      Doubles wave = level;
      if (frame < risen) {
        rise(static_cast<double>(frame), wave);
      } else {
        level *= fall;
        level = level < kSilence ? zero : level;
      }
      Doubles sine;
      sineOfPhases(sine);
      wave = gain * wave * sine;
      signal[frame] = (((signal[frame] + wave[0]) + wave[1]) + wave[2]) + wave[3];
      const Doubles gliding = hertz * ratios[frame];
      phase += (gliding > highest ? highest : gliding) / kSampleRate;
      phase -= phase >= 1.0 ? one : zero;
      if (level[0] + level[1] + level[2] + level[3] == 0.0) {
        return;
      }
    }
  }

 private:
  using Doubles = double __attribute__((vector_size(kLanes * sizeof(double))));

  /// Gives the levels of a frame in which not all lanes have risen.
  void rise(double frame, Doubles& levels) {
    for (std::size_t i = 0; i < kLanes; ++i) {
      if (frame < attack[i]) {
        levels[i] = frame / attack[i];
      } else {
        level[i] *= fall[i];
        level[i] = level[i] < kSilence ? 0.0 : level[i];
      }
    }
  }

  /// As sineOfTurns of the phases.
  void sineOfPhases(Doubles& sine) const {
    const Doubles half = Doubles{} + 0.5;
    sine = phase - (phase + half >= 1.0 ? Doubles{} + 1.0 : Doubles{});
    sine = sine > 0.25 ? half - sine : sine;
    sine = sine < -0.25 ? -half - sine : sine;
    replaceBySine(sine);
  }

  Doubles hertz{}, gain{}, phase{}, attack{}, fall{}, level{};
};

}  // namespace

Envelope::Envelope(const Shape& shape)
    : delayFrames(framesOf(shape.delay)),
      attackFrames(framesOf(shape.attack)),
      holdFrames(framesOf(shape.hold)),
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
    phase -= std::floor(phase);
  }
}

void addModes(Signal& signal, std::span<const Mode> modes) {
  std::vector<Mode> heard;
  std::copy_if(modes.begin(), modes.end(), std::back_inserter(heard),
               [](const Mode& mode) { return mode.hertz < kHighestMode; });
  // Lanes of one group end together: those that are heard for as long belong side by side.
  const auto longer = [&](const Mode& a, const Mode& b) {
    return audibleFrames(a, signal.size()) > audibleFrames(b, signal.size());
  };
  std::stable_sort(heard.begin(), heard.end(), longer);
  std::vector<RotorGroup> groups((heard.size() + Rotors::kLanes - 1) / Rotors::kLanes);
  for (std::size_t i = 0; i < heard.size(); ++i) {
    RotorGroup& group = groups[i / Rotors::kLanes];
    group.rotors.set(i % Rotors::kLanes, heard[i]);
    group.frames = std::max(group.frames, audibleFrames(heard[i], signal.size()));
  }
  for (std::size_t i = 0; i < groups.size(); i += 2) {
    addRotors(signal.data(), groups[i], i + 1 < groups.size() ? groups[i + 1] : RotorGroup{});
  }
}

void addModes(Signal& signal, std::span<const Mode> modes, const Glide& glide) {
  std::vector<double> ratios(signal.size());
  GlideRatio ratio(glide);
  std::ranges::generate(ratios, [&] { return ratio.next(); });
  for (std::size_t i = 0; i < modes.size(); i += GlidingModes::kLanes) {
    GlidingModes(modes.subspan(i, std::min(GlidingModes::kLanes, modes.size() - i))).addTo(signal, ratios);
  }
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

double BandLimited::correction(double phase, double step) {
  if (phase < step) {
    const double t = phase / step;
    return t + t - t * t - 1.0;
  }
  if (phase > 1.0 - step) {
    const double t = (phase - 1.0) / step;
    return t * t + t + t + 1.0;
  }
  return 0.0;
}

void BandLimited::advance(double step) {
  phase += step;
  phase -= std::floor(phase);
}

double BandLimited::square(double hertz) {
  const double step = std::min(hertz / kSampleRate, 0.49);
  const double opposite = phase < 0.5 ? phase + 0.5 : phase - 0.5;
  const double out = (phase < 0.5 ? 1.0 : -1.0) + correction(phase, step) - correction(opposite, step);
  advance(step);
  return out;
}

double BandLimited::saw(double hertz) {
  const double step = std::min(hertz / kSampleRate, 0.49);
  const double out = 2.0 * phase - 1.0 - correction(phase, step);
  advance(step);
  return out;
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
