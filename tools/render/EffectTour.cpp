// The effect's edit values in the tour, its thirty renderings, and their picture.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "EffectTour.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <filesystem>

#include "RenderError.h"
#include "Session.h"
#include "core/EngineRate.h"
#include "effects/EffectTable.h"
#include "sheet/SpectrogramSheet.h"
#include "viewmodels/texts/EditScreenEffects.h"

namespace sivray::render {
namespace {

namespace fx = tesh::bramel::plugin::sivray::effects;

/// Edit values that make an effect clearly audible, by type id.
struct TourEdits {
  int edit1;
  int edit2;
};

constexpr std::array<TourEdits, fx::kEffectTypeCount> kTourEdits{{
    {64, 64},    // Bypass
    {64, 110},   // Marlo Chorus: speed, spread
    {40, 127},   // Marlo Phase: speed, spread
    {110, 100},  // Marlo Ensemble: depth, spread
    {30, 110},   // Chorus/Flanger: speed, depth
    {40, 110},   // Phaser: frequency, depth
    {80, 127},   // Tremolo: frequency, depth
    {50, 127},   // Auto Pan: frequency, depth
    {90, 20},    // Pump: note, attack
    {90, 40},    // Slicer: note, hold
    {80, 127},   // Ring Mod: frequency, balance
    {64, 127},   // Grain Shifter: speed, balance
    {100, 90},   // Short Delay: time, depth
    {64, 80},    // BPM Delay: time, depth
    {100, 100},  // Room Reverb: time, level
    {90, 90},    // Hall Reverb: time, level
    {80, 110},   // Gate Reverb: time, level
    {110, 40},   // Compressor: sensitivity, attack
    {110, 40},   // Master Compressor: sensitivity, attack
    {110, 110},  // Drive: gain, level
    {110, 110},  // Distortion: gain, level
    {110, 64},   // Kiln Force: gain
    {100, 127},  // Decimator: frequency, balance
    {0, 127},    // EQ: low, high
    {100, 127},  // Peaking EQ: centre, gain
    {60, 90},    // LPF: cutoff, resonance
    {80, 90},    // HPF: cutoff, resonance
    {70, 90},    // BPF: cutoff, resonance
    {70, 110},   // Comb Filter: frequency, feedback
    {60, 64},    // Talking Mod: formant, offset
}};

constexpr double kTourRate = tesh::cofu::core::kEngineRate;

/// The excerpt that the sheet shows: a few bars, at a scale at which movement is visible.
constexpr double kExcerptStart = 4.0;
constexpr double kExcerptSeconds = 6.0;

bool isOnPanel(int type) {
  return std::any_of(tesh::bramel::kEditScreenEffects.begin(), tesh::bramel::kEditScreenEffects.end(),
                     [type](const tesh::bramel::EditScreenEffect& effect) { return effect.typeId == type; });
}

/// Returns a file name such as "07-auto-pan.wav".
std::string fileName(int type) {
  char number[8];
  std::snprintf(number, sizeof number, "%02d-", type);
  std::string name = number;
  for (const char c : std::string(fx::effectTypeName(type))) {
    name += std::isalnum(static_cast<unsigned char>(c)) != 0
                ? static_cast<char>(std::tolower(static_cast<unsigned char>(c)))
                : '-';
  }
  return name + ".wav";
}

Options optionsFor(const Options& options, int type) {
  Options tour = options;
  tour.direct = options.direct || !isOnPanel(type);
  for (int pad = 1; pad <= 8; ++pad) {
    tour.assignments.push_back({AssignmentTarget::engineParameter, "pad" + std::to_string(pad) + ".fxsend", "1"});
  }
  const auto set = [&](const char* name, int value) {
    tour.assignments.push_back({AssignmentTarget::engineParameter, name, std::to_string(value)});
  };
  const TourEdits& edits = kTourEdits[static_cast<std::size_t>(type)];
  set("fx.type", type);
  set("fx.edit1", edits.edit1);
  set("fx.edit2", edits.edit2);
  return tour;
}

/// Removes the score's own moves, so that the renderings differ in the effect only.
MidiScore onlyNotes(MidiScore score) {
  std::erase_if(score.messages, [](const ScoreMessage& message) {
    const int status = message.bytes[0] & 0xF0;
    return status != 0x80 && status != 0x90;
  });
  score.moves.clear();
  return score;
}

std::string titleOf(int type) {
  const fx::EffectType& effect = fx::kEffectTypes[static_cast<std::size_t>(type)];
  const TourEdits& edits = kTourEdits[static_cast<std::size_t>(type)];
  std::string title = std::to_string(type) + "  " + effect.name;
  if (*effect.edit1Label != '\0') {
    title += std::string("  ") + effect.edit1Label + " " + std::to_string(edits.edit1);
  }
  if (*effect.edit2Label != '\0') {
    title += std::string("  ") + effect.edit2Label + " " + std::to_string(edits.edit2);
  }
  return title;
}

std::vector<float> excerptOf(const std::vector<float>& samples) {
  const auto start = std::min(samples.size(), static_cast<std::size_t>(kExcerptStart * kTourRate));
  const auto length = std::min(samples.size() - start, static_cast<std::size_t>(kExcerptSeconds * kTourRate));
  // Of a score that is shorter than the excerpt's start, the whole is shown.
  return length == 0 ? samples
                     : std::vector<float>(samples.begin() + static_cast<std::ptrdiff_t>(start),
                                          samples.begin() + static_cast<std::ptrdiff_t>(start + length));
}

}  // namespace

void renderEffectTour(const Options& options, const MidiScore& fullScore) {
  namespace fs = std::filesystem;
  const fs::path folder(*options.effectTourFolder);
  std::error_code error;
  fs::create_directories(folder, error);
  if (!fs::is_directory(folder)) {
    throw RenderError("cannot make the folder '" + folder.string() + "'");
  }
  const MidiScore score = onlyNotes(fullScore);
  SpectrogramSheet sheet(kTourRate);
  for (int type = 0; type < fx::kEffectTypeCount; ++type) {
    Session session(optionsFor(options, type));
    session.prepare(score);
    std::vector<float> samples;
    const std::string path = (folder / fileName(type)).string();
    const RenderResult result = session.render(score, path, [&](const float* left, const float*, int frames) {
      samples.insert(samples.end(), left, left + frames);
    });
    if (!options.settings.quiet) {
      std::puts(describe(result, path).c_str());
    }
    sheet.add(titleOf(type), excerptOf(samples));
  }
  const std::string picture = (folder / "effects.png").string();
  sheet.write(picture);
  if (!options.settings.quiet) {
    std::printf("%s: the spectrograms of all %d effects\n", picture.c_str(), fx::kEffectTypeCount);
  }
}

}  // namespace sivray::render
