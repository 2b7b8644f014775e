// Turns grooves into strokes and moves, plays them, and prints what was measured.
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

std::size_t programOf(const KitMeter& meter, const std::string& kit) {
  for (std::size_t program = 0; program < meter.programCount(); ++program) {
    if (meter.programName(program) == kit) {
      return program;
    }
  }
  throw std::runtime_error("the content has no kit '" + kit + "'");
}

std::vector<Stroke> strokesOf(const Groove& groove) {
  std::vector<Stroke> strokes;
  std::ranges::transform(groove.hits, std::back_inserter(strokes), [&](const GrooveHit& hit) {
    return Stroke{hit.beat * kSecondsPerMinute / groove.tempo, hit.note, hit.velocity};
  });
  std::ranges::stable_sort(strokes, {}, &Stroke::seconds);
  return strokes;
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

double peakAtEnd(const StereoSound& sound) {
  constexpr auto kFrames = static_cast<std::size_t>(tesh::cofu::core::kEngineRate * 0.05);
  float peak = 0.0F;
  for (const auto* side : {&sound.left, &sound.right}) {
    std::for_each(side->end() - static_cast<std::ptrdiff_t>(std::min(kFrames, side->size())), side->end(),
                  [&](float sample) { peak = std::max(peak, std::abs(sample)); });
  }
  return decibelsOf(static_cast<double>(peak));
}

}  // namespace

GrooveSound soundOf(KitMeter& meter, const Groove& groove) {
  meter.select(programOf(meter, groove.kit));
  meter.setTempo(groove.tempo);
  GrooveSound result;
  result.kit = groove.kit;
  result.sound = meter.play(strokesOf(groove), groove.seconds(), movesOf(meter, groove));
  const auto frames = static_cast<std::size_t>(groove.seconds() * tesh::cofu::core::kEngineRate);
  result.sound.left.resize(frames);
  result.sound.right.resize(frames);
  result.loudness = integratedLoudness(result.sound);
  result.truePeak = truePeak(result.sound);
  result.rest = peakAtEnd(result.sound);
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
  sounds[0].loudness = integratedLoudness(whole);
  sounds[0].truePeak = truePeak(whole);
  sounds[0].rest = peakAtEnd(whole);
  sounds[0].sound = std::move(whole);
  return sounds;
}

void printGrooves(std::ostream& out, const std::vector<GrooveSound>& sounds) {
  out << "groove on                 LUFS     dBTP   at its end, dB  seconds\n";
  for (const GrooveSound& groove : sounds) {
    std::array<char, 96> line{};
    std::snprintf(line.data(), line.size(), "%-24s%6.1f%9.1f%11.0f%15.1f\n",
                  groove.kit.empty() ? "The whole suite" : groove.kit.c_str(), groove.loudness, groove.truePeak,
                  groove.rest, static_cast<double>(groove.sound.left.size()) / tesh::cofu::core::kEngineRate);
    out << line.data();
  }
}

}  // namespace sivray::content
