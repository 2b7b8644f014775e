// The parameters common to all models, and the processing after the model.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/waves/Finish.h"

#include <algorithm>
#include <cmath>

#include "content/synth/Filters.h"
#include "content/synth/Hall.h"
#include "content/synth/Math.h"
#include "content/synth/Parts.h"
#include "content/synth/Room.h"

namespace sivray::content {
namespace {

/// The sound ends where its decay is this far below the peak.
constexpr double kEndDecibels = -60.0;

/// The fade at the start: too short to soften an attack, long enough to start at zero.
constexpr std::size_t kFadeInFrames = 12;
constexpr std::size_t kReversedFadeInFrames = 200;
constexpr double kShortestFade = 0.005;
constexpr double kLongestFade = 0.08;

/// The share of a sound that the final fade takes: the first if the sound has decayed by itself, the second if it is
/// cut.
constexpr double kFadeShare = 0.15;
constexpr double kRingingFadeShare = 0.35;

constexpr std::uint64_t kStrokeSeed = 7919;

/// Renders the strokes one after the other, each with its own random numbers.
Signal playStrokes(const Model& model, const Parameters& p, std::uint64_t seed, int channel) {
  const std::vector<double>& strokes = p.list("strokes");
  const std::vector<double>& gains = p.list("strokegains");
  Signal signal(framesOf(p.seconds("length")));
  for (std::size_t i = 0; i < strokes.size(); ++i) {
    const std::size_t start = framesOf(strokes[i] * 0.001);
    if (start >= signal.size() || (i > 0 && strokes[i] == 0.0)) {
      continue;
    }
    Signal stroke(signal.size() - start);
    model.make(stroke, p, Dice(seed + i * kStrokeSeed, channel));
    const double gain = factorOfDecibels(gains[std::min(i, gains.size() - 1)]);
    for (std::size_t frame = 0; frame < stroke.size(); ++frame) {
      signal[start + frame] += stroke[frame] * gain;
    }
  }
  return signal;
}

/// Scales all channels by one factor, to a largest absolute sample of 1.
void normaliseTogether(Sound& sound) {
  const double peak = peakOf(sound);
  for (Signal& channel : sound) {
    for (double& sample : channel) {
      sample = peak > 0.0 ? sample / peak : 0.0;
    }
  }
}

/// Reduces the sample rate and the resolution, with quantisation steps that grow with the level as in early samplers.
void crush(Signal& signal, double hertz, double bits) {
  const double step = hertz / kSampleRate;
  const double scale = powerOfTwo(bits - 1.0);
  double clock = 1.0;
  double held = 0.0;
  for (double& sample : signal) {
    if (clock >= 1.0) {
      clock -= 1.0;
      const double root = std::floor(std::sqrt(std::abs(sample)) * scale + 0.5) / scale;
      held = std::copysign(root * root, sample);
    }
    clock += step;
    sample = held;
  }
}

void crushAndDrive(Signal& signal, const Parameters& p) {
  if (p["clock"] < kSampleRate || p["bits"] < 16.0) {
    crush(signal, p["clock"], p["bits"]);
  }
  if (p["drive"] > 0.0) {
    const double gain = factorOfDecibels(p["drive"]);
    for (double& sample : signal) {
      sample = saturate(sample * gain);
    }
  }
}

void filter(Sound& sound, const Parameters& p) {
  for (int i = 0; i < static_cast<int>(p["steep"]); ++i) {
    Biquad::highPass(p["lowcut"]).run(sound);
  }
  if (p["highcut"] < 20000.0) {
    Biquad::lowPass(p["highcut"]).run(sound);
  }
  if (p["shelf"] != 0.0) {
    Biquad::highShelf(p["shelfhz"], p["shelf"]).run(sound);
  }
}

void gate(Signal& signal, const Parameters& p) {
  if (signal.size() <= framesOf(p.seconds("gate"))) {
    return;
  }
  Envelope envelope({0.0, p.seconds("gate"), p.seconds("gatems"), 0.0});
  for (double& sample : signal) {
    sample *= envelope.next();
  }
}

/// Cuts the inaudible end, then fades both ends.
void trim(Sound& sound, std::size_t fadeIn) {
  const double quiet = peakOf(sound) * factorOfDecibels(kEndDecibels);
  std::size_t frames = 2 * fadeIn;
  for (const Signal& channel : sound) {
    const auto loud = [quiet](double sample) { return std::abs(sample) > quiet; };
    const auto last = std::find_if(channel.rbegin(), channel.rend(), loud);
    frames = std::max(frames, static_cast<std::size_t>(channel.rend() - last));
  }
  const double seconds = static_cast<double>(frames) / kSampleRate;
  const bool isRinging = frames + framesOf(kShortestFade) > sound.front().size();
  const double fadeSeconds =
      isRinging ? seconds * kRingingFadeShare : std::clamp(seconds * kFadeShare, kShortestFade, kLongestFade);
  const std::size_t fade = std::min(framesOf(fadeSeconds), frames - fadeIn);
  for (Signal& channel : sound) {
    channel.resize(frames);
    for (std::size_t i = 0; i < fadeIn; ++i) {
      channel[i] *= static_cast<double>(i) / static_cast<double>(fadeIn);
    }
    for (std::size_t i = 0; i < fade; ++i) {
      channel[frames - 1 - i] *= 0.5 - 0.5 * cosineOfTurns(static_cast<double>(i) / static_cast<double>(fade) * 0.5);
    }
  }
}

}  // namespace

const std::vector<ParameterRule>& commonRules() {
  static const std::vector<ParameterRule> rules{
      {"length", {1500}, 20, 5900},        // Longest duration.
      {"width", {0}, 0, 1},                // 0 makes a mono wave.
      {"strokes", {0, 0}, 0, 3000},        // Times of the strokes.
      {"strokegains", {0, 0}, -40, 6},     // Their levels in dB; further strokes take the last number.
      {"bits", {16}, 3, 16},               // Resolution.
      {"clock", {44100}, 2000, 44100},     // Reduced sample rate in Hz.
      {"drive", {0}, 0, 48},               // Saturation in dB.
      {"lowcut", {22}, 10, 12000},         // High-pass in Hz,
      {"steep", {1}, 1, 4},                // and the number of passes.
      {"highcut", {20000}, 100, 20000},    // Low-pass in Hz.
      {"shelf", {0}, -24, 24},             // High shelf in dB.
      {"shelfhz", {5000}, 200, 16000},     //
      {"room", {0}, 0, 2},                 // A small room around it.
      {"roomms", {250}, 20, 1200},         //
      {"roombright", {7000}, 300, 18000},  //
      {"early", {0}, 0, 2},                // Its first reflections, within 30 ms.
      {"hall", {0}, 0, 2},                 // A hall around it.
      {"hallms", {1500}, 100, 8000},       //
      {"hallbright", {6000}, 300, 18000},  //
      {"gate", {5900}, 1, 5900},           // Start of a choke,
      {"gatems", {60}, 1, 2000},           // and its duration.
      {"reverse", {0}, 0, 1},              // 1 plays it backwards.
      {"trim", {0}, -12, 3}};              // Level relative to its category in dB.
  return rules;
}

Sound makeSound(const Model& model, const Parameters& p, std::uint64_t seed) {
  Sound sound;
  const int channels = p["width"] > 0.0 ? 2 : 1;
  for (int channel = 0; channel < channels; ++channel) {
    sound.push_back(playStrokes(model, p, seed, channel));
  }
  normaliseTogether(sound);
  for (Signal& signal : sound) {
    crushAndDrive(signal, p);
  }
  filter(sound, p);
  for (int channel = 0; channel < channels; ++channel) {
    Signal& signal = sound[static_cast<std::size_t>(channel)];
    const Random own = Dice(seed, channel).own;
    addRoom(signal, own, {p["room"], p.seconds("roomms"), p["roombright"], p["early"]});
    addHall(signal, own, {p["hall"], p.seconds("hallms"), p["hallbright"]});
  }
  Biquad::highPass(20.0).run(sound);
  for (Signal& signal : sound) {
    gate(signal, p);
  }
  const bool isReversed = p["reverse"] > 0.5;
  trim(sound, isReversed ? kReversedFadeInFrames : kFadeInFrames);
  if (isReversed) {
    for (Signal& signal : sound) {
      std::reverse(signal.begin(), signal.end());
    }
  }
  return sound;
}

}  // namespace sivray::content
