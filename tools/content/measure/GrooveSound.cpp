// Turns grooves into strokes and moves, plays them, and prints the measurements.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/measure/GrooveSound.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <stdexcept>

#include "content/levels/Balance.h"
#include "core/EngineRate.h"

namespace sivray::content {
namespace {

constexpr double kSecondsPerMinute = 60.0;
constexpr float kHighestValue = 127.0F;
constexpr double kDeadAir = -50.0;  ///< In dB of full scale.

std::size_t programOf(const KitMeter& meter, const std::string& kit) {
  for (std::size_t program = 0; program < meter.programCount(); ++program) {
    if (meter.programName(program) == kit) {
      return program;
    }
  }
  throw std::runtime_error("the content has no kit '" + kit + "'");
}

std::vector<MacroMove> movesOf(KitMeter& meter, const Groove& groove) {
  const auto& controller = meter.instrument().controller();
  std::vector<MacroMove> moves;
  std::ranges::transform(groove.moves, std::back_inserter(moves), [&](const GrooveMove& move) {
    const auto macro = controller.macroForController(static_cast<std::uint8_t>(move.controller));
    return MacroMove{move.beat * kSecondsPerMinute / groove.tempo, static_cast<std::size_t>(macro),
                     static_cast<float>(move.value) / kHighestValue};
  });
  std::ranges::stable_sort(moves, {}, &MacroMove::seconds);
  return moves;
}

double longestGap(const StereoSound& sound) {
  const auto quiet = static_cast<float>(std::pow(10.0, kDeadAir / 20.0));
  std::size_t longest = 0;
  std::size_t lastLoud = 0;
  for (std::size_t i = 0; i < sound.left.size(); ++i) {
    if (std::max(std::abs(sound.left[i]), std::abs(sound.right[i])) > quiet) {
      longest = std::max(longest, i - lastLoud);
      lastLoud = i;
    }
  }
  return static_cast<double>(std::max(longest, sound.left.size() - lastLoud)) / tesh::cofu::core::kEngineRate;
}

void measure(GrooveSound& groove) {
  groove.loudness = integratedLoudness(groove.sound);
  groove.truePeak = truePeak(groove.sound);
  groove.range = loudnessRange(groove.sound);
  groove.gap = longestGap(groove.sound);
}

}  // namespace

std::vector<Stroke> strokesOf(const Groove& groove) {
  std::vector<Stroke> strokes;
  std::ranges::transform(groove.hits, std::back_inserter(strokes), [&](const GrooveHit& hit) {
    return Stroke{hit.beat * kSecondsPerMinute / groove.tempo, hit.note, hit.velocity};
  });
  std::ranges::stable_sort(strokes, {}, &Stroke::seconds);
  return strokes;
}

GrooveSound soundOf(KitMeter& meter, const Groove& groove) {
  meter.select(programOf(meter, groove.kit));
  meter.setTempo(groove.tempo);
  GrooveSound result;
  result.kit = groove.kit;
  result.sound = meter.play(strokesOf(groove), groove.seconds(), movesOf(meter, groove));
  const auto frames = static_cast<std::size_t>(groove.seconds() * tesh::cofu::core::kEngineRate);
  result.sound.left.resize(frames);
  result.sound.right.resize(frames);
  measure(result);
  return result;
}

std::vector<GrooveSound> soundsOf(KitMeter& meter, const std::vector<Groove>& suite) {
  std::vector<GrooveSound> sounds(1);
  StereoSound whole;
  for (const Groove& groove : suite) {
    sounds.push_back(soundOf(meter, groove));
    const StereoSound& part = sounds.back().sound;
    whole.left.insert(whole.left.end(), part.left.begin(), part.left.end());
    whole.right.insert(whole.right.end(), part.right.begin(), part.right.end());
  }
  sounds[0].sound = std::move(whole);
  measure(sounds[0]);
  return sounds;
}

void printGrooves(std::ostream& out, const std::vector<GrooveSound>& sounds) {
  out << "groove on                 LUFS     dBTP   range LU  below -50 dB, s  seconds\n";
  for (const GrooveSound& groove : sounds) {
    std::array<char, 96> line{};
    std::snprintf(line.data(), line.size(), "%-24s%6.1f%9.1f%11.1f%17.2f%9.1f\n",
                  groove.kit.empty() ? "The whole suite" : groove.kit.c_str(), groove.loudness, groove.truePeak,
                  groove.range, groove.gap,
                  static_cast<double>(groove.sound.left.size()) / tesh::cofu::core::kEngineRate);
    out << line.data();
  }
}

}  // namespace sivray::content
