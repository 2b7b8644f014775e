// Looks up macros and programs, and finds the macro value that sets an engine parameter.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginModel.h"

#include <algorithm>
#include <memory>

#include "RenderError.h"
#include "core/Text.h"
#include "engine/SivrayPlugin.h"
#include "host/shell/Construction.h"
#include "host/shell/MissingSounds.h"
#include "storage/paths/Paths.h"
#include "storage/programs/UserProgramFile.h"
#include "storage/state/EditBufferRecord.h"
#include "storage/state/StateContent.h"
#include "viewmodels/texts/PanelMacros.h"

namespace sivray::render {
namespace {

using tesh::cofu::core::readNumber;
using tesh::vimo::Bank;
using tesh::vimo::ProgramDatabase;
namespace engine = tesh::bramel::plugin::sivray;

/// The model's engine supplies names only and never plays, so its pads have memory for a single frame.
constexpr std::size_t kSilentSlotFrames = 1;

/// Number of steps in the search for an integer over a macro's range.
constexpr int kSearchSteps = 8192;

std::unique_ptr<tesh::vimo::Generator<float>> makeSilentEngine() {
  return std::make_unique<engine::SivrayPlugin<engine::VstXSynth>>(engine::kSampleFolder, kSilentSlotFrames);
}

tesh::vimo::SivraySampleLibrary readLibrary() {
  using namespace tesh::bramel;
  tesh::vimo::SivraySampleLibrary library;
  library.load(pathBelow(directoryFor(kBramelDirectory_Resource), "SivrayPCM/drumparam_category.bin"));
  return library;
}

/// Returns the normalised integer itself if the set maps it to the integer, else the middle of the first interval that
/// the set maps to it.
std::optional<float> placeIn(const tesh::vimo::MacroSetBase& set, const EngineParameter& parameter,
                             std::int32_t integer) {
  const auto gives = [&](float x) { return engineInteger(parameter, set.map(x)) == integer; };
  if (const float plain = engineValue(parameter, integer); gives(plain)) {
    return plain;
  }
  const auto at = [](int step) { return static_cast<float>(step) / static_cast<float>(kSearchSteps); };
  int first = 0;
  while (first <= kSearchSteps && !gives(at(first))) {
    ++first;
  }
  if (first > kSearchSteps) {
    return std::nullopt;
  }
  int last = first;
  while (last < kSearchSteps && gives(at(last + 1))) {
    ++last;
  }
  return (at(first) + at(last)) / 2.0F;
}

}  // namespace

PluginModel::PluginModel()
    : processor(std::string(tesh::bramel::vst::kInstrumentName), makeSilentEngine()),
      sampleLibrary(readLibrary()),
      engineNames(processor.generator(), sampleLibrary) {}

bool PluginModel::takeIn(std::span<const std::uint8_t> state) {
  const auto record = tesh::bramel::vst::unpackState(state);
  if (!record || record->name != tesh::bramel::vst::kEditBufferName) {
    return false;
  }
  const auto content = tesh::bramel::vst::readStateContent(record->content);
  if (!content) {
    return false;
  }
  miscSection.assign(content->runFlags.begin(), content->runFlags.end());
  engineSection.assign(content->engine.begin(), content->engine.end());
  processor.controller().readChunk(content->macros, Controller::ChunkParts::all);

  using namespace tesh::bramel;
  const auto file = readFile(pathFor(kBramelPath_UserProgram, vst::kInstrumentName));
  if (const auto bank = tesh::vimo::readUserProgramFile(file)) {
    processor.controller().programs().loadDatabase(Bank::user, bank->image, bank->macroCount,
                                                   ProgramDatabase::Mode::replace);
  }
  return true;
}

std::vector<std::uint8_t> PluginModel::state() const {
  std::vector<std::uint8_t> macros;
  processor.controller().writeChunk(macros);
  tesh::bramel::vst::EditBufferRecord record;
  tesh::bramel::vst::appendStateContent(record.content, {miscSection, engineSection, macros});
  return tesh::bramel::vst::packState(record);
}

void PluginModel::setHostNames(const std::vector<std::string>& hostNames) {
  shownMacros.clear();
  std::size_t macro = 0;
  for (const std::string& name : hostNames) {
    while (macro < processor.controller().macroCount() && macroName(macro) != name) {
      ++macro;
    }
    if (macro == processor.controller().macroCount()) {
      return;
    }
    shownMacros.push_back(macro++);
  }
}

int PluginModel::hostIndexOf(std::size_t macro) const {
  const auto found = std::find(shownMacros.begin(), shownMacros.end(), macro);
  return found == shownMacros.end() ? -1 : static_cast<int>(found - shownMacros.begin());
}

std::string PluginModel::macroName(std::size_t macro) const {
  const auto* control = processor.controller().macroAt(macro);
  return control == nullptr ? std::string() : control->name();
}

std::size_t PluginModel::macroOf(const std::string& text) const {
  const std::size_t count = processor.controller().macroCount();
  if (const auto number = readNumber<std::size_t>(text)) {
    if (*number < count) {
      return *number;
    }
    throw RenderError("there is no macro " + text + "; they run from 0 to " + std::to_string(count - 1));
  }
  for (std::size_t macro = 0; macro < count; ++macro) {
    if (plainName(macroName(macro)) == plainName(text)) {
      return macro;
    }
  }
  throw RenderError("there is no macro '" + text + "'");
}

std::size_t PluginModel::hostMacroOf(const std::string& text) const {
  if (const auto number = readNumber<std::size_t>(text)) {
    if (*number < shownMacros.size()) {
      return shownMacros[*number];
    }
    throw RenderError("there is no parameter " + text + "; they run from 0 to " +
                      std::to_string(static_cast<long>(shownMacros.size()) - 1));
  }
  const auto found = std::find_if(shownMacros.begin(), shownMacros.end(),
                                  [&](std::size_t macro) { return plainName(macroName(macro)) == plainName(text); });
  if (found == shownMacros.end()) {
    throw RenderError("there is no parameter '" + text + "'");
  }
  return *found;
}

std::optional<MacroPlace> PluginModel::placeFor(const EngineParameter& parameter, std::int32_t integer) const {
  std::optional<MacroPlace> best;
  for (std::size_t macro = 0; macro < processor.controller().macroCount(); ++macro) {
    for (const auto& set : processor.controller().macroAt(macro)->sets()) {
      if (set->targetId() != parameter.id || (best && hostIndexOf(macro) < 0)) {
        continue;
      }
      const auto place = placeIn(*set, parameter, integer);
      if (place && hostIndexOf(macro) >= 0) {
        return MacroPlace{macro, *place};
      }
      if (place) {
        best = MacroPlace{macro, *place};
      }
    }
  }
  return best;
}

std::optional<std::size_t> PluginModel::macroOn(const EngineParameter& parameter) const {
  for (std::size_t macro = 0; macro < processor.controller().macroCount(); ++macro) {
    const auto& sets = processor.controller().macroAt(macro)->sets();
    if (std::ranges::any_of(sets, [&](const auto& set) { return set->targetId() == parameter.id; })) {
      return macro;
    }
  }
  return std::nullopt;
}

std::optional<std::int32_t> PluginModel::integerOf(const EngineParameter& parameter) const {
  const auto macro = macroOn(parameter);
  if (!macro) {
    return std::nullopt;
  }
  const float value = processor.controller().macroValue(*macro);
  const auto& sets = processor.controller().macroAt(*macro)->sets();
  const auto set = std::ranges::find_if(sets, [&](const auto& one) { return one->targetId() == parameter.id; });
  return engineInteger(parameter, (*set)->map(value));
}

void PluginModel::setMacro(std::size_t macro, float value) {
  tesh::vimo::ProcessBlock nowhere;
  processor.controller().setMacroValue(macro, value, 0, nowhere);
}

std::string PluginModel::missingSounds() const {
  using namespace tesh::bramel;
  vst::SoundValues values{};
  for (std::size_t pad = 0; pad < values.size(); ++pad) {
    values[pad] = processor.controller().macroValue(panel::padMacro(pad, panel::kSample));
  }
  return vst::describeMissing(vst::missingSounds(values, readLibrary()));
}

std::vector<ListedProgram> PluginModel::programs() const {
  std::vector<ListedProgram> list;
  for (const auto& [bank, prefix] : {std::pair(Bank::factory, ""), std::pair(Bank::user, "U")}) {
    const ProgramDatabase* database = processor.controller().programs().database(bank);
    for (std::size_t i = 0; i < database->programCount(); ++i) {
      list.push_back({prefix + std::to_string(i), database->name(i), database->comment(i)});
    }
  }
  return list;
}

std::size_t PluginModel::factoryCount() const {
  return static_cast<std::size_t>(processor.controller().programs().programCount(Bank::factory));
}

std::pair<Bank, std::uint64_t> PluginModel::placeOf(const std::string& text) const {
  const std::vector<ListedProgram> list = programs();
  auto found = std::find_if(list.begin(), list.end(), [&](const ListedProgram& p) { return p.number == text; });
  if (found == list.end()) {
    found = std::find_if(list.begin(), list.end(),
                         [&](const ListedProgram& p) { return plainName(p.name) == plainName(text); });
  }
  if (found == list.end()) {
    throw RenderError("there is no program '" + text + "'; see --list-programs");
  }
  const auto place = static_cast<std::uint64_t>(found - list.begin());
  return place < factoryCount() ? std::pair(Bank::factory, place) : std::pair(Bank::user, place - factoryCount());
}

std::string PluginModel::selectProgram(const std::string& text) {
  const auto [bank, place] = placeOf(text);
  processor.controller().programs().setSelection(0, Bank::ghost);
  tesh::vimo::ProcessBlock nowhere;
  processor.controller().selectProgram(place, bank, 0, nowhere);
  return processor.controller().programs().database(bank)->name(place);
}

std::vector<float> PluginModel::programValues(const std::string& text) const {
  const auto [bank, place] = placeOf(text);
  const auto entries = processor.controller().programs().database(bank)->entries(place);
  std::vector<float> values;
  for (std::uint64_t macro = 0; macro < processor.controller().macroCount(); ++macro) {
    values.push_back(macro < entries.size() ? entries[macro].value : processor.controller().macroDefault(macro));
  }
  return values;
}

}  // namespace sivray::render
