// SPDX-License-Identifier: GPL-3.0-or-later
#include "EffectTour.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <filesystem>

#include "RenderError.h"
#include "Session.h"
#include "SpectrogramSheet.h"
#include "effects/EffectTable.h"
#include "effects/interfaces/EditScreenEffects.h"

namespace sivray::render {
namespace {

namespace fx = tesh::bramel::plugin::sivray::effects;

bool isOnPanel(int type) {
  return std::any_of(fx::kEditScreenEffects.begin(), fx::kEditScreenEffects.end(),
                     [type](const fx::EditScreenEffect& effect) { return effect.typeId == type; });
}

/// "07-auto-pan.wav".
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
  for (int pad = 0; pad < 8; ++pad) {
    tour.assignments.push_back({AssignmentTarget::engineParameter, "pad" + std::to_string(pad) + ".fxsend", "1"});
  }
  tour.assignments.push_back({AssignmentTarget::engineParameter, "fx.type", std::to_string(type)});
  return tour;
}

}  // namespace

void renderEffectTour(const Options& options, const MidiScore& score) {
  namespace fs = std::filesystem;
  const fs::path folder(*options.effectTourFolder);
  std::error_code error;
  fs::create_directories(folder, error);
  if (!fs::is_directory(folder)) {
    throw RenderError("cannot make the folder '" + folder.string() + "'");
  }
  SpectrogramSheet sheet(options.rate.value_or(44100.0));
  for (int type = 0; type < fx::kEffectTypeCount; ++type) {
    Session session(optionsFor(options, type));
    session.prepare(score);
    std::vector<float> mono;
    const std::string path = (folder / fileName(type)).string();
    const RenderResult result = session.render(score, path, [&](const float* left, const float* right, int frames) {
      for (int i = 0; i < frames; ++i) {
        mono.push_back(0.5F * (left[i] + right[i]));
      }
    });
    if (!options.settings.quiet) {
      std::puts(describe(result, path).c_str());
    }
    sheet.add(std::to_string(type) + "  " + fx::effectTypeName(type), std::move(mono));
  }
  const std::string picture = (folder / "effects.png").string();
  sheet.write(picture);
  std::printf("%s: the spectrograms of all %d effects\n", picture.c_str(), fx::kEffectTypeCount);
}

}  // namespace sivray::render
