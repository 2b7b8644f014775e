// The command that prints and changes the map of MIDI controllers.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>

#include "content/Files.h"
#include "content/commands/CommandLine.h"
#include "content/commands/Commands.h"
#include "core/Text.h"
#include "host/shell/Construction.h"
#include "macro/MacroControllerBase.h"
#include "macro/PluginMacroControllable.h"
#include "macro/UserControllerMap.h"
#include "storage/paths/Paths.h"
#include "terminal/Printable.h"

namespace sivray::content {
namespace {

using tesh::bramel::kBramelPath_UserCCMap;
using tesh::bramel::pathFor;
using tesh::bramel::vst::kInstrumentName;
using tesh::cofu::core::readNumber;
using Macros = tesh::vimo::MacroControllerBase;

constexpr const char* kBend = "bend";

std::uint8_t controllerNamed(const std::string& text) {
  if (text == kBend) {
    return Macros::kPitchBendKey;
  }
  const auto number = readNumber<std::uint64_t>(text);
  if (!number || *number > Macros::kLastMappableController) {
    fail("'" + text + "' is no controller: 0 to 126, or bend", kWrongUsage);
  }
  const auto controller = static_cast<std::uint8_t>(*number);
  if (!Macros::canMove(controller)) {
    fail("controller " + text + " is bank select, which moves nothing", kWrongUsage);
  }
  return controller;
}

std::uint64_t macroNamed(const Macros& macros, const std::string& text) {
  if (const auto number = readNumber<std::uint64_t>(text); number && *number < macros.macroCount()) {
    return *number;
  }
  const auto folded = [](const std::string& name) { return juce::String::fromUTF8(name.c_str()).toLowerCase(); };
  for (std::uint64_t macro = 0; macro < macros.macroCount(); ++macro) {
    if (folded(macros.macroAt(macro)->name()) == folded(text)) {
      return macro;
    }
  }
  fail("there is no macro '" + text + "'; sivray-render --list-parameters lists them", kWrongUsage);
}

void printMap(const Macros& macros) {
  const std::string user = pathFor(kBramelPath_UserCCMap, kInstrumentName);
  std::cout << "The map is "
            << (tesh::bramel::fileExists(user) ? "yours, " + printable(systemPathOf(user))
                                               : std::string("the factory's"))
            << std::endl;
  for (const auto& [number, macro] : tesh::vimo::activeControllerMap(kInstrumentName)) {
    const auto* const moved = macros.macroAt(macro);
    const std::string name = number == Macros::kPitchBendKey ? kBend : std::to_string(number);
    std::printf("%5s  %s\n", name.c_str(), moved == nullptr ? "nothing" : moved->name().c_str());
  }
  std::puts("To change a line: sivray-content controllers --set 20=\"P1 Level\", or --remove 20. To go back: --reset");
}

void changeController(std::uint8_t number, std::optional<std::uint64_t> macro) {
  if (!tesh::vimo::changeUserController(kInstrumentName, number, macro)) {
    fail(printable(systemPathOf(pathFor(kBramelPath_UserCCMap, kInstrumentName))) + " cannot be written", kFailed);
  }
}

void resetControllers() {
  std::error_code error;
  const std::string user = systemPathOf(pathFor(kBramelPath_UserCCMap, kInstrumentName));
  std::filesystem::remove(pathOf(user), error);
  if (error) {
    fail(printable(user) + " cannot be removed", kFailed);
  }
}

}  // namespace

void runControllers(const juce::ArgumentList& list) {
  CommandLine line(list, kControllersUsage);
  const bool isReset = line.takeFlag("--reset");
  const std::string removed = line.takeValue("--remove");
  const std::string set = line.takeValue("--set");
  line.takeRest(0);
  const auto processor = tesh::bramel::vst::makeProcessor();
  if (isReset) {
    resetControllers();
  }
  if (!removed.empty()) {
    changeController(controllerNamed(removed), std::nullopt);
  }
  if (!set.empty()) {
    const std::size_t equals = set.find('=');
    if (equals == std::string::npos) {
      line.failUsage();
    }
    changeController(controllerNamed(set.substr(0, equals)),
                     macroNamed(processor->controller(), set.substr(equals + 1)));
  }
  printMap(processor->controller());
}

}  // namespace sivray::content
