// SPDX-License-Identifier: GPL-3.0-or-later
#include "macro/MacroControllerBase.h"

#include <algorithm>

#include "macro/Json.h"
#include "platform/Files.h"

namespace tesh::vimo {
namespace {

constexpr std::uint8_t kLastMappableController = 126;

}  // namespace

MacroControllerBase::MacroControllerBase() {
  for (auto& entry : databases) {
    entry = std::make_unique<ProgramDatabase>(*this);
  }
  // Program changes copy texts on the audio thread; room for the longest that a record holds is made here.
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

void MacroControllerBase::readCcMap(std::span<const std::uint8_t> text) {
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
  ccMap.swap(map);
}

ProgramDatabase* MacroControllerBase::databaseAt(std::uint64_t index) {
  return index < kDatabaseCount ? databases[static_cast<std::size_t>(index)].get() : nullptr;
}

const ProgramDatabase* MacroControllerBase::database(std::uint64_t index) const {
  return index < kDatabaseCount ? databases[static_cast<std::size_t>(index)].get() : nullptr;
}

void MacroControllerBase::loadDatabase(std::uint64_t index, std::span<const std::uint8_t> image,
                                       std::uint64_t imageMacroCount, ProgramDatabase::Mode mode) {
  ProgramDatabase* loaded = databaseAt(index);
  if (!loaded) {
    return;
  }
  const std::size_t brought = loaded->load(image, imageMacroCount, mode);
  loaded->setMacroCount(macros.size());
  if (brought == 0 || imageMacroCount == macroCount()) {
    return;
  }
  for (const auto& entry : databases) {
    entry->setMacroCount(macros.size());
    for (std::uint64_t macro = imageMacroCount; macro < macroCount(); ++macro) {
      entry->fillMacro(macro, macroDefault(macro));
    }
  }
}

std::uint64_t MacroControllerBase::programCount(std::uint64_t index) const {
  const ProgramDatabase* found = database(index);
  return found ? found->programCount() : 0;
}

void MacroControllerBase::storeCurrent(std::uint64_t index) {
  if (ProgramDatabase* found = databaseAt(index)) {
    found->setMacroCount(macros.size());
    found->appendFromDelegate();
  }
}

void MacroControllerBase::overwrite(std::uint64_t program, std::uint64_t bank) {
  if (ProgramDatabase* found = databaseAt(bank)) {
    found->setMacroCount(macros.size());
    found->overwriteFromDelegate(program);
  }
}

std::size_t MacroControllerBase::databaseByteSize(std::uint64_t index) {
  ProgramDatabase* found = databaseAt(index);
  if (!found) {
    return 0;
  }
  found->setMacroCount(macros.size());
  return found->byteSize();
}

void MacroControllerBase::saveDatabase(std::uint64_t index, std::vector<std::uint8_t>& out) {
  if (ProgramDatabase* found = databaseAt(index)) {
    found->setMacroCount(macros.size());
    found->save(out);
  }
}

void MacroControllerBase::deleteProgram(std::uint64_t program, std::uint64_t bank) {
  ProgramDatabase* found = databaseAt(bank);
  if (!found || program >= found->programCount()) {
    return;
  }
  // The bank is not compared: the number alone takes the selection off every list.
  if (selected.program == program) {
    selected.bank = static_cast<std::uint64_t>(Bank::ghost);
  }
  found->remove(program);
  if (selected.bank == bank && program <= selected.program) {
    --selected.program;
  }
}

void MacroControllerBase::moveProgram(std::uint64_t bank, std::uint64_t from, std::uint64_t to) {
  ProgramDatabase* found = databaseAt(bank);
  if (!found || from == to || from >= found->programCount() || to >= found->programCount()) {
    return;
  }
  found->move(from, to);
  if (selected.bank != bank) {
    return;
  }
  if (selected.program == from) {
    selected.program = to;
  } else if (selected.program > from && selected.program <= to) {
    --selected.program;
  } else if (selected.program >= to && selected.program < from) {
    ++selected.program;
  }
}

}  // namespace tesh::vimo
