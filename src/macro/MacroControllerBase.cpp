// Reads of the macro list, and the controller map.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "macro/MacroControllerBase.h"

#include <algorithm>

#include "macro/Json.h"
#include "platform/Files.h"

namespace tesh::vimo {
MacroControllerBase::MacroControllerBase() {
  // Program changes copy texts on the audio thread, which must not allocate.
  selectedName.reserve(ProgramRecord::kTextBytes);
  selectedComment.reserve(ProgramRecord::kTextBytes);
}

MacroParameterControl* MacroControllerBase::macroAt(std::uint64_t index) {
  return index < macros.size() ? macros[static_cast<std::size_t>(index)].get() : nullptr;
}

const MacroParameterControl* MacroControllerBase::macroAt(std::uint64_t index) const {
  return index < macros.size() ? macros[static_cast<std::size_t>(index)].get() : nullptr;
}

float MacroControllerBase::macroValue(std::uint64_t index) const {
  const auto* macro = macroAt(index);
  return macro ? cleanMacroValue(macro->storedValue) : 0.0F;
}

float MacroControllerBase::liveMacroValue(std::uint64_t index) const {
  const auto* macro = macroAt(index);
  return macro ? cleanMacroValue(macro->liveValue) : 0.0F;
}

std::uint64_t MacroControllerBase::macroObject(std::uint64_t index) const {
  const auto* macro = macroAt(index);
  return macro ? macro->objectValue : 0;
}

float MacroControllerBase::macroDefault(std::uint64_t index) const {
  const auto* macro = macroAt(index);
  return macro ? macro->defaultValue : 0.0F;
}

bool MacroControllerBase::isHidden(std::uint64_t macro) const {
  return std::find(automationBlacklist.begin(), automationBlacklist.end(), macro) != automationBlacklist.end();
}

std::int64_t MacroControllerBase::macroForController(std::uint8_t number) const {
  const auto found = ccMap.find(number);
  return found == ccMap.end() ? -1 : static_cast<std::int64_t>(found->second);
}

void MacroControllerBase::loadCcMap(const std::string& path) {
  const auto text = bramel::platform::readWhole(path);
  if (text) {
    readCcMap(*text);
  } else {
    ccMap.clear();
  }
}

void MacroControllerBase::readCcMap(std::span<const std::uint8_t> text) { ccMap = ccMapIn(text); }

std::map<std::uint8_t, std::uint64_t> MacroControllerBase::ccMapIn(std::span<const std::uint8_t> text) {
  const picojson::value file = parseJson(text);
  const picojson::value& controllers = memberOf(file, "cc_map");
  std::map<std::uint8_t, std::uint64_t> map;
  for (std::uint8_t number = 0; number <= kLastMappableController; ++number) {
    if (const auto macro = roundedNumber(memberOf(controllers, std::to_string(number)))) {
      map[number] = static_cast<std::uint64_t>(*macro);
    }
  }
  if (const auto macro = roundedNumber(memberOf(file, "pitch_bend"))) {
    map[kPitchBendKey] = static_cast<std::uint64_t>(*macro);
  }
  return map;
}

}  // namespace tesh::vimo
