// The table of all macros, and the conversion of a kit's settings to macro values.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/factory/MacroLayout.h"

#include <algorithm>
#include <iterator>

#include "effects/EffectTable.h"
#include "parameters/ParameterIds.h"
#include "viewmodels/texts/EditScreenEffects.h"

namespace sivray::factory {
namespace {

namespace effects = tesh::bramel::plugin::sivray::effects;

namespace engine = tesh::bramel::plugin::sivray;
using engine::parameterId;

/// A row of the pad macros: offset, name, engine index, the engine's default and range.
struct PadRow {
  const char* name;
  std::uint32_t index;
  float defaultValue;
};

constexpr PadRow kPanelRows[kMacrosPerPad] = {
    {"Sample", 0, 0.0F},  {"Level", 8, 100.0F / 127.0F}, {"Pan", 9, 0.5F},     {"Mute", 12, 0.0F},   {"Pitch", 4, 0.5F},
    {"Group", 1, 0.0F},   {"FX Send", 13, 1.0F},         {"EG Mode", 2, 0.0F}, {"EG Time", 7, 1.0F}, {"Punch", 6, 0.0F},
    {"Reverse", 3, 0.0F}, {"Low Boost", 10, 0.0F}};

constexpr PadRow kHiddenRows[] = {
    {"Fine", 5, 0.5F}, {"Motion", 11, 0.0F}, {"Accent", 14, 1.0F}, {"Mod Depth", 15, 64.0F / 127.0F}};

/// Engine pan 0 and 1 are both hard left. Starting at 1 makes the knob's 127 positions, -63 to 63, the engine's 1 to
/// 127.
constexpr float kLeastPan = 1.0F / 127.0F;

/// The panel offers three of the engine's sixteen exclusive groups: off, A and B.
const std::vector<float> kGroupSteps{0.0F, 1.0F / 15.0F, 2.0F / 15.0F};

std::vector<float> effectSteps() {
  std::vector<float> steps;
  std::ranges::transform(tesh::bramel::kEditScreenEffects, std::back_inserter(steps), [](const auto& effect) {
    return static_cast<float>(effect.typeId) / static_cast<float>(effects::kEffectTypeCount - 1);
  });
  return steps;
}

MacroRow padRow(std::size_t pad, const PadRow& row, bool hidden) {
  MacroRow macro;
  macro.name.append("P").append(std::to_string(pad + 1)).append(" ").append(row.name);
  macro.targetId = parameterId(engine::kFirstPadGroup + static_cast<std::uint32_t>(pad), row.index);
  macro.defaultValue = row.defaultValue;
  macro.hidden = hidden;
  return macro;
}

MacroRow plainRow(const char* name, std::uint32_t target, float defaultValue, bool hidden) {
  MacroRow macro;
  macro.name = name;
  macro.targetId = target;
  macro.defaultValue = defaultValue;
  macro.hidden = hidden;
  return macro;
}

/// Returns the normalised value of an integer in low to high; the engine's rounding turns it back into the integer.
float placeOf(int value, int low, int high) { return static_cast<float>(value - low) / static_cast<float>(high - low); }

float waveValue(const KitPad& pad, const std::vector<std::string>& names, const std::string& file) {
  const auto found = std::ranges::find(names, pad.wave);
  if (found == names.end()) {
    throw TextError(file, pad.line, "there is no wave '" + pad.wave + "' in the sample library");
  }
  return placeOf(static_cast<int>(found - names.begin()), 0, std::max(static_cast<int>(names.size()) - 1, 1));
}

float effectValue(const Kit& kit, const std::string& file) {
  const auto& list = tesh::bramel::kEditScreenEffects;
  const auto found = std::ranges::find_if(list, [&](const auto& effect) { return kit.effect == effect.name; });
  if (found == list.end()) {
    throw TextError(file, kit.effectLine, "there is no effect '" + kit.effect + "' on the edit screen");
  }
  return placeOf(static_cast<int>(found - list.begin()), 0, static_cast<int>(list.size()) - 1);
}

void putPad(std::vector<float>& values, std::size_t index, const KitPad& pad) {
  float* const macro = values.data() + index * kMacrosPerPad;
  macro[kLevel] = placeOf(pad.level, 0, 127);
  macro[kPan] = placeOf(pad.pan, -63, 63);
  macro[kMute] = pad.mute ? 1.0F : 0.0F;
  macro[kPitch] = placeOf(pad.pitch, -24, 24);
  macro[kExclusiveGroup] = placeOf(static_cast<int>(pad.group), 0, 2);
  macro[kEffectSend] = pad.send ? 1.0F : 0.0F;
  macro[kEnvelopeMode] = pad.gate ? 1.0F : 0.0F;
  macro[kEnvelopeTime] = placeOf(pad.decay, 0, 127);
  macro[kPunch] = placeOf(pad.punch, 0, 127);
  macro[kReverse] = pad.reverse ? 1.0F : 0.0F;
  macro[kLowBoost] = placeOf(pad.boost, 0, 127);
  values[kHiddenPadMacros + index * std::size(kHiddenRows)] = placeOf(pad.fine, -100, 100);
}

}  // namespace

std::vector<MacroRow> makeMacroLayout(std::size_t waveCount) {
  std::vector<MacroRow> rows;
  for (std::size_t pad = 0; pad < kPads; ++pad) {
    for (const PadRow& row : kPanelRows) {
      rows.push_back(padRow(pad, row, false));
    }
    MacroRow* const macro = rows.data() + pad * kMacrosPerPad;
    macro[kSample].defaultValue = placeOf(static_cast<int>(pad), 0, std::max(static_cast<int>(waveCount) - 1, 1));
    macro[kPan].minimum = kLeastPan;
    macro[kExclusiveGroup].steps = kGroupSteps;
  }
  rows.push_back(plainRow("FX Type", parameterId(engine::kEffectGroup, 0), 0.0F, false));
  rows.back().steps = effectSteps();
  rows.push_back(plainRow("FX Edit 1", parameterId(engine::kEffectGroup, 2), 0.5F, false));
  rows.push_back(plainRow("FX Edit 2", parameterId(engine::kEffectGroup, 3), 0.5F, false));
  rows.push_back(plainRow("Master Level", parameterId(engine::kMasterGroup, 0), 100.0F / 127.0F, false));
  rows.push_back(plainRow("FX Switch", parameterId(engine::kEffectGroup, 1), 1.0F, false));
  for (std::size_t pad = 0; pad < kPads; ++pad) {
    for (const PadRow& row : kHiddenRows) {
      rows.push_back(padRow(pad, row, row.index != kHiddenRows[0].index));
    }
  }
  return rows;
}

std::vector<float> macroValuesOf(const Kit& kit, const std::vector<std::string>& waveNames, const std::string& file) {
  const std::vector<MacroRow> layout = makeMacroLayout(waveNames.size());
  std::vector<float> values(layout.size());
  std::ranges::transform(layout, values.begin(), &MacroRow::defaultValue);
  for (std::size_t pad = 0; pad < kPads; ++pad) {
    putPad(values, pad, kit.pads[pad]);
    values[pad * kMacrosPerPad + kSample] = waveValue(kit.pads[pad], waveNames, file);
  }
  values[kEffectTypeMacro] = effectValue(kit, file);
  values[kEffectEdit1Macro] = placeOf(kit.edit1, 0, 127);
  values[kEffectEdit2Macro] = placeOf(kit.edit2, 0, 127);
  values[kMasterLevelMacro] = placeOf(kit.master, 0, 127);
  return values;
}

}  // namespace sivray::factory
