// Passes each member of a description to the engine or the macros.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "macro/MacroDescription.h"

#include <algorithm>
#include <stdexcept>

#include "macro/Json.h"
#include "platform/Files.h"
#include "storage/paths/Paths.h"

namespace tesh::vimo {
namespace {

using Processor = PluginMacroControllable<Generator<float>>;
using Controller = MacroController<Generator<float>>;

/// The file that a member names; nothing for an empty name or a missing file.
std::optional<std::vector<std::uint8_t>> namedFile(const picojson::value& name, const DescriptionSource& source) {
  const std::string& text = name.get<std::string>();
  return text.empty() ? std::nullopt : source.file(text);
}

MacroParameterControl* macroAtNumber(const picojson::value& number, Controller& controller) {
  const auto index = static_cast<std::uint64_t>(*roundedNumber(picojson::value(number.get<double>())));
  return controller.macroAt(index);
}

void readExpressions(const picojson::value& member, Controller& controller) {
  const picojson::value& indices = memberOf(member, "indice");
  const picojson::value& texts = memberOf(member, "parameters");
  if (!indices.is<picojson::array>() || !texts.is<picojson::array>()) {
    return;
  }
  const auto& numbers = indices.get<picojson::array>();
  const auto& lists = texts.get<picojson::array>();
  for (std::size_t i = 0; i < std::min(numbers.size(), lists.size()); ++i) {
    std::vector<std::string> expressions;
    for (const picojson::value& expression : lists[i].get<picojson::array>()) {
      expressions.push_back(expression.get<std::string>());
    }
    if (MacroParameterControl* macro = macroAtNumber(numbers[i], controller)) {
      macro->expressions = std::move(expressions);
    }
  }
}

void readAutomation(const picojson::value& member, Controller& controller) {
  const picojson::value& blacklist = memberOf(member, "blacklist");
  if (!blacklist.is<picojson::array>()) {
    return;
  }
  std::vector<std::uint64_t> hidden;
  for (const picojson::value& number : blacklist.get<picojson::array>()) {
    hidden.push_back(static_cast<std::uint64_t>(*roundedNumber(picojson::value(number.get<double>()))));
  }
  controller.automationBlacklist = std::move(hidden);
}

void loadActiveCcMap(const DescriptionSource& source, Controller& controller) {
  try {
    controller.loadCcMap(source.ccMapPath);
  } catch (const std::runtime_error&) {
    controller.loadCcMap(source.factoryCcMapPath);
  }
}

/// The members that refer to macros. A null member counts as missing.
void readMacroMembers(const picojson::value& description, const DescriptionSource& source, Controller& controller) {
  const auto present = [&description](const char* key) {
    const picojson::value& member = memberOf(description, key);
    return member.is<picojson::null>() ? nullptr : &member;
  };
  if (const auto* expressions = present("parameter_expressions")) {
    readExpressions(*expressions, controller);
  }
  if (const auto* automation = present("automation")) {
    readAutomation(*automation, controller);
  }
  if (const auto* map = present("cc_map")) {
    map->get<std::string>();
    loadActiveCcMap(source, controller);
  }
  if (const auto* map = present("native_mode_map")) {
    map->get<std::string>();
    if (const auto text = bramel::platform::readWhole(source.nativeModeMapPath)) {
      controller.nativeModeMap.read(controller.documents.parse(*text));
    }
  }
  if (const auto* name = present("parameter_description")) {
    if (const auto text = namedFile(*name, source)) {
      readParameterDescription(*text, controller);
    }
  }
}

void readMiscAndPatches(const picojson::value& description, const DescriptionSource& source, Processor& processor) {
  const picojson::value& misc = memberOf(description, "misc_chunk");
  if (!misc.is<picojson::null>()) {
    if (const auto file = namedFile(misc, source)) {
      processor.readMisc(*file);
    }
  }
  const picojson::value& patches = memberOf(description, "patches");
  if (patches.is<picojson::null>()) {
    return;
  }
  for (const picojson::value& name : patches.get<picojson::array>()) {
    if (const auto file = namedFile(name, source)) {
      processor.controller().readPatches(*file);
    }
  }
}

}  // namespace

DescriptionSource filesOf(const std::string& directory, const std::string& name) {
  return {[directory](const std::string& file) { return bramel::platform::readWhole(directory + "/" + file); },
          bramel::pathFor(bramel::kBramelPath_ActiveCCMap, name),
          bramel::pathFor(bramel::kBramelPath_FactoryCCMap, name),
          bramel::pathFor(bramel::kBramelPath_FactoryNativeMap, name)};
}

void loadDescription(std::span<const std::uint8_t> text, const DescriptionSource& source, Processor& processor,
                     Controller::ChunkParts parts) {
  const picojson::value& document = processor.controller().documents.parse(text);
  const picojson::value& description = memberOf(document, "processor");
  if (const auto chunk = namedFile(memberOf(description, "plugin_chunk"), source)) {
    processor.generator().setState(*chunk);
  }
  if (const auto chunk = namedFile(memberOf(description, "macro_chunk"), source)) {
    processor.controller().readChunk(*chunk, parts);
  }
  if (parts == Controller::ChunkParts::all) {
    readMacroMembers(description, source, processor.controller());
  }
  readMiscAndPatches(description, source, processor);
}

void readParameterDescription(std::span<const std::uint8_t> text, Controller& controller) {
  const picojson::value& document = controller.documents.parse(text);
  for (const picojson::value& pair : memberOf(document, "parameters").get<picojson::array>()) {
    const auto& numbers = pair.get<picojson::array>();
    if (numbers.size() < 2) {
      continue;
    }
    const double index = numbers[0].get<double>();
    const auto value = static_cast<float>(numbers[1].get<double>());
    if (index > -1.0 && index < static_cast<double>(controller.macroCount())) {
      controller.macroAt(static_cast<std::uint64_t>(std::max(index, 0.0)))->defaultValue = value;
    }
  }
}

}  // namespace tesh::vimo
