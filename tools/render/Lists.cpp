// One function for each list.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Lists.h"

#include <algorithm>
#include <cstdio>
#include <string>

#include "content/library/Wave.h"
#include "effects/EffectTable.h"
#include "terminal/Printable.h"
#include "viewmodels/texts/EditScreenEffects.h"

namespace sivray::render {
namespace {

namespace fx = tesh::bramel::plugin::sivray::effects;

void printPrograms(const PluginModel& model) {
  for (const ListedProgram& program : model.programs()) {
    std::printf("%4s  %-26s %s\n", program.number.c_str(), printable(program.name).c_str(),
                printable(program.comment).c_str());
  }
}

/// Returns the panel's name; "-" for an effect that the panel does not offer.
const char* shortName(int type) {
  const auto& offered = tesh::bramel::kEditScreenEffects;
  const auto* const found = std::ranges::find(offered, type, &tesh::bramel::EditScreenEffect::typeId);
  return found == offered.end() ? "-" : found->name;
}

void printEffects() {
  const auto label = [](const char* text) { return *text == '\0' ? "-" : text; };
  for (int type = 0; type < fx::kEffectTypeCount; ++type) {
    const fx::EffectType& effect = fx::kEffectTypes[static_cast<std::size_t>(type)];
    std::printf("%4d  %-18s %-12s %-10s %s\n", type, effect.name, shortName(type), label(effect.edit1Label),
                label(effect.edit2Label));
  }
}

void printWaves(const PluginModel& model) {
  for (const ListedWave& wave : model.names().waveList()) {
    const auto category = static_cast<std::size_t>(wave.category);
    const bool isKnown = category < content::kCategoryNames.size();
    std::printf("%4d  %-14s %s\n", wave.number, printable(wave.name).c_str(),
                isKnown ? std::string(content::kCategoryNames[category]).c_str() : "-");
  }
}

void printParameters(const PluginModel& model) {
  std::printf("%-16s %-9s %-7s %-18s %s\n", "--set", "range", "--macro", "name", "--param");
  for (const EngineParameter& parameter : model.names().all()) {
    const auto macro = model.macroOn(parameter);
    const int host = macro ? model.hostIndexOf(*macro) : -1;
    std::printf("%-16s 0 .. %-4d %-7s %-18s %s\n", parameter.name.c_str(), parameter.range,
                macro ? std::to_string(*macro).c_str() : "-", macro ? model.macroName(*macro).c_str() : "-",
                host >= 0 ? std::to_string(host).c_str() : "-");
  }
}

}  // namespace

void printLists(const Options& options, const PluginModel& model) {
  if (options.listPrograms) {
    printPrograms(model);
  }
  if (options.listEffects) {
    printEffects();
  }
  if (options.listWaves) {
    printWaves(model);
  }
  if (options.listParameters) {
    printParameters(model);
  }
}

}  // namespace sivray::render
