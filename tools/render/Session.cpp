// Opens a target, and turns the options' assignments into starting values and moves.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Session.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "CompactState.h"
#include "DirectTarget.h"
#include "LibraryTarget.h"
#include "PresetFile.h"
#include "RenderError.h"
#include "ShellTarget.h"
#include "core/EngineRate.h"
#include "core/Text.h"
#include "engine/samples/SimilarWaves.h"
#include "host/shell/Construction.h"
#include "storage/paths/Paths.h"
#include "storage/state/EditBufferRecord.h"
#include "storage/state/StateContent.h"
#include "terminal/Printable.h"
#include "viewmodels/texts/PanelMacros.h"

namespace sivray::render {
namespace {

namespace fs = std::filesystem;

constexpr const char* kProgramMove = "program";
constexpr double kPlainRate = tesh::cofu::core::kEngineRate;

/// The content beside the library is also used by the direct target and the name lookups.
std::unique_ptr<RenderTarget> makeTarget(const Options& options) {
  const bool playsLibrary = !options.direct && !options.settings.stems;
  const double rate = options.rate.value_or(kPlainRate);
  try {
    const std::string library = vsthost::findLibrary(options.libraryPath.value_or(""));
    vsthost::shareContentOf(library);
    if (playsLibrary) {
      return std::make_unique<LibraryTarget>(library, rate);
    }
  } catch (const vsthost::HostError& error) {
    if (playsLibrary) {
      throw RenderError(error.what());
    }
  }
  try {
    if (options.settings.stems) {
      return std::make_unique<ShellTarget>(rate);
    }
    return std::make_unique<DirectTarget>();
  } catch (const std::runtime_error&) {
    throw RenderError(
        "the instrument's content was not found or is broken: it should stand in Tesh/Bramel beside the plug-in, or in "
        "the folder that BRAMEL_COMMON_FILES names");
  }
}

float normalisedValue(const Assignment& assignment) {
  const auto value = tesh::cofu::core::readNumber<float>(assignment.value);
  if (!value || !(*value >= 0.0F && *value <= 1.0F)) {
    throw RenderError("'" + assignment.name + "' takes a number from 0 to 1, not '" + assignment.value + "'");
  }
  return *value;
}

/// Runs `action`, and reports its errors as errors of the command line.
template <typename Action>
void asCommandLine(Action action) {
  try {
    action();
  } catch (const RenderError& error) {
    throw UsageError(error.what());
  }
}

}  // namespace

Session::Session(const Options& wanted)
    : options(wanted), target(makeTarget(wanted)), programName(tesh::bramel::vst::kInstrumentName) {
  if (options.statePath) {
    loadState(*options.statePath);
  }
  if (!plugin.takeIn(target->state())) {
    throw RenderError("the plug-in gives a state that cannot be read");
  }
  plugin.setHostNames(target->hostNames());
}

void Session::loadState(const std::string& path) {
  std::vector<std::uint8_t> bytes = tesh::bramel::readFile(path);
  if (isPresetPath(path)) {
    bytes = stateInPreset(bytes, path);
  }
  const auto record = tesh::bramel::vst::unpackState(bytes);
  if (!record || record->name != tesh::bramel::vst::kEditBufferName ||
      !tesh::bramel::vst::readStateContent(record->content)) {
    throw RenderError("cannot load the state '" + path +
                      "': " + (bytes.empty() ? "it is missing or empty" : "it is no state of this plug-in"));
  }
  target->setState(bytes);
}

void Session::prepare(const MidiScore& score) {
  moves.clear();
  if (options.program) {
    asCommandLine([this] { programName = plugin.selectProgram(*options.program); });
  }
  takeScoreMoves(score.moves);
  if (options.varySeed) {
    vary(*options.varySeed);
  }
  asCommandLine([this] {
    for (const Assignment& assignment : options.assignments) {
      assign(assignment);
    }
  });
  std::stable_sort(moves.begin(), moves.end(), [](const Move& a, const Move& b) { return a.seconds < b.seconds; });
  target->setState(plugin.state());
}

/// Texts with "=" may come from other programs, so unknown names are no error.
void Session::takeScoreMoves(const std::vector<ScoreMove>& scoreMoves) {
  std::vector<const ScoreMove*> unknown;
  for (const ScoreMove& move : scoreMoves) {
    if (move.name == kProgramMove) {
      selectAt(move);
    } else if (plugin.names().knows(move.name)) {
      assign({AssignmentTarget::engineParameter, move.name, move.value, move.seconds});
    } else {
      unknown.push_back(&move);
    }
  }
  unknownTexts.clear();
  if (!unknown.empty()) {
    unknownTexts = counted(unknown.size(), "text in the MIDI file names", "texts in the MIDI file name") +
                   " no engine parameter and set nothing, first '" + unknown.front()->name + "=" +
                   unknown.front()->value + "' at " + std::to_string(unknown.front()->seconds) + " s";
  }
}

/// A program or state from the command line replaces the score's own programs.
void Session::selectAt(const ScoreMove& move) {
  if (options.program || options.statePath) {
    return;
  }
  if (!(move.seconds > 0.0)) {
    programName = plugin.selectProgram(move.value);
    return;
  }
  const std::vector<float> values = plugin.programValues(move.value);
  for (std::size_t macro = 0; macro < values.size(); ++macro) {
    const int hostIndex = plugin.hostIndexOf(macro);
    if (hostIndex >= 0 || target->reachesEngine()) {
      moves.push_back({move.seconds, MoveTarget::macro, static_cast<std::uint32_t>(macro), values[macro], hostIndex});
    }
  }
}

void Session::vary(std::uint32_t seed) {
  const auto parameterOf = [this](std::size_t pad, const char* name) -> const EngineParameter& {
    return plugin.names().parameter("pad" + std::to_string(pad + 1) + "." + name);
  };
  std::vector<tesh::vimo::PadSound> pads(tesh::bramel::panel::kPads);
  for (std::size_t pad = 0; pad < pads.size(); ++pad) {
    pads[pad] = {.wave = plugin.integerOf(parameterOf(pad, "wave")).value_or(0),
                 .level = plugin.integerOf(parameterOf(pad, "level")).value_or(0)};
  }
  const auto varied = tesh::vimo::varied(plugin.library().similarWaves(), pads, seed);
  if (varied == pads) {
    throw RenderError("--vary finds no similar waves: 'sivray-content similar' finds them out, beside the library");
  }
  for (std::size_t pad = 0; pad < pads.size(); ++pad) {
    for (const auto& [name, value] : {std::pair{"wave", varied[pad].wave}, {"level", varied[pad].level}}) {
      assign({AssignmentTarget::engineParameter, parameterOf(pad, name).name, std::to_string(value)});
    }
  }
}

void Session::assign(const Assignment& assignment) {
  switch (assignment.target) {
    case AssignmentTarget::macro:
      return assignMacro(assignment, plugin.macroOf(assignment.name), normalisedValue(assignment));
    case AssignmentTarget::hostParameter:
      return assignMacro(assignment, plugin.hostMacroOf(assignment.name), normalisedValue(assignment));
    case AssignmentTarget::engineParameter:
      return assignEngine(assignment);
  }
}

void Session::assignMacro(const Assignment& assignment, std::size_t macro, float value) {
  if (!(assignment.seconds > 0.0)) {
    plugin.setMacro(macro, value);
    return;
  }
  const int hostIndex = plugin.hostIndexOf(macro);
  if (hostIndex < 0 && !target->reachesEngine()) {
    throw RenderError("'" + assignment.name + "' is hidden from hosts and cannot move while they play; use --direct");
  }
  moves.push_back({assignment.seconds, MoveTarget::macro, static_cast<std::uint32_t>(macro), value, hostIndex});
}

void Session::assignEngine(const Assignment& assignment) {
  const EngineParameter& parameter = plugin.names().parameter(assignment.name);
  const std::int32_t integer = plugin.names().integerOf(parameter, assignment.value);
  if (const auto place = plugin.placeFor(parameter, integer)) {
    assignMacro(assignment, place->macro, place->value);
    return;
  }
  if (!target->reachesEngine()) {
    throw RenderError("no macro brings " + parameter.name + " to " + assignment.value + "; use --direct");
  }
  moves.push_back({assignment.seconds, MoveTarget::engineParameter, parameter.id, engineValue(parameter, integer)});
}

RenderResult Session::render(const MidiScore& score, const std::string& outputPath, const BlockListener& listener) {
  return renderScore(score, moves, *target, options.settings, outputPath, listener);
}

void Session::saveState(const std::string& path) {
  std::vector<std::uint8_t> bytes = target->state();
  if (isPresetPath(path)) {
    bytes = packPreset(programName, target->hostNames().size(), compactState(bytes));
  }
  if (!tesh::bramel::writeFile(path, bytes.data(), bytes.size())) {
    throw RenderError("cannot write the state '" + path + "': check that its folder exists and is writable");
  }
}

std::size_t Session::saveKits(const std::string& folder) {
  if (std::error_code error; !fs::is_directory(folder) && !fs::create_directories(folder, error)) {
    throw RenderError("cannot make the folder '" + folder + "'");
  }
  const std::size_t kits = plugin.factoryCount();
  for (std::size_t kit = 0; kit < kits; ++kit) {
    programName = plugin.selectProgram(std::to_string(kit));
    target->setState(plugin.state());
    saveState((fs::path(folder) / presetFileName(programName)).string());
  }
  return kits;
}

}  // namespace sivray::render
