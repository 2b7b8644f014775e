// Changes the four databases, and keeps the selection on its program.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/programs/ProgramShelf.h"

#include <algorithm>
#include <limits>

namespace tesh::vimo {
namespace {

constexpr std::size_t placeOf(Bank bank) { return static_cast<std::size_t>(bank); }

constexpr std::size_t kAllRecords = std::numeric_limits<std::size_t>::max();

/// Fits databases to the macro list. In `count` records of each, from `fromRecord` on, macros past `knownMacros` get
/// their defaults.
void fitTo(const MacroList& macros, std::span<ProgramDatabase> databases, std::uint64_t knownMacros,
           std::size_t fromRecord, std::size_t count) {
  std::vector<float> defaults;
  for (std::uint64_t macro = knownMacros; macro < macros.macroCount(); ++macro) {
    defaults.push_back(macros.macroDefault(macro));
  }
  for (ProgramDatabase& database : databases) {
    database.setMacroCount(static_cast<std::size_t>(macros.macroCount()));
    database.fillMacros(knownMacros, defaults, fromRecord, count);
  }
}

}  // namespace

ProgramShelf::ProgramShelf(const MacroList& macroList)
    : macros(macroList),
      databases{ProgramDatabase(macroList), ProgramDatabase(macroList), ProgramDatabase(macroList),
                ProgramDatabase(macroList)} {}

ProgramDatabase* ProgramShelf::databaseAt(Bank bank) {
  return placeOf(bank) < kBankCount ? &databases[placeOf(bank)] : nullptr;
}

const ProgramDatabase* ProgramShelf::database(Bank bank) const {
  return placeOf(bank) < kBankCount ? &databases[placeOf(bank)] : nullptr;
}

std::uint64_t ProgramShelf::programCount(Bank bank) const {
  const ProgramDatabase* const found = database(bank);
  return found != nullptr ? found->programCount() : 0;
}

void ProgramShelf::fit(Bank bank) {
  if (ProgramDatabase* const found = databaseAt(bank)) {
    found->setMacroCount(static_cast<std::size_t>(macros.macroCount()));
  }
}

void ProgramShelf::loadDatabase(Bank bank, std::span<const std::uint8_t> image, std::uint64_t imageMacroCount,
                                ProgramDatabase::Mode mode) {
  ProgramDatabase* const found = databaseAt(bank);
  if (found == nullptr) {
    return;
  }
  const std::size_t programsRead = found->load(image, imageMacroCount, mode);
  fit(bank);
  if (programsRead != 0 && imageMacroCount != macros.macroCount()) {
    fitTo(macros, databases, imageMacroCount, 0, kAllRecords);
  }
}

std::unique_ptr<ProgramDatabase> ProgramShelf::readImage(std::span<const std::uint8_t> image,
                                                         std::uint64_t imageMacroCount) const {
  auto incoming = std::make_unique<ProgramDatabase>(macros);
  incoming->load(image, imageMacroCount, ProgramDatabase::Mode::replace);
  fitTo(macros, {incoming.get(), 1}, imageMacroCount, 0, kAllRecords);
  return incoming;
}

bool ProgramShelf::fitSome(std::size_t fromRecord, std::uint64_t imageMacroCount) {
  if (imageMacroCount == macros.macroCount()) {
    return false;
  }
  fitTo(macros, databases, imageMacroCount, fromRecord, kFitStep);
  return std::ranges::any_of(databases, [end = fromRecord + kFitStep](const ProgramDatabase& database) {
    return database.programCount() > end;
  });
}

void ProgramShelf::append(Bank bank, ProgramDatabase& incoming) {
  if (ProgramDatabase* const found = databaseAt(bank)) {
    fit(bank);
    found->takeAll(incoming);
  }
}

void ProgramShelf::storeCurrent(Bank bank) {
  if (ProgramDatabase* const found = databaseAt(bank)) {
    fit(bank);
    found->appendFromDelegate();
  }
}

void ProgramShelf::overwrite(std::uint64_t program, Bank bank) {
  if (ProgramDatabase* const found = databaseAt(bank)) {
    fit(bank);
    found->overwriteFromDelegate(program);
  }
}

std::size_t ProgramShelf::databaseByteSize(Bank bank) const {
  const auto macroCount = static_cast<std::size_t>(macros.macroCount());
  return database(bank) != nullptr ? ProgramDatabase::imageBytes(database(bank)->programCount(), macroCount) : 0;
}

void ProgramShelf::saveDatabase(Bank bank, std::vector<std::uint8_t>& out) {
  if (const ProgramDatabase* const found = databaseAt(bank)) {
    fit(bank);
    found->save(out);
  }
}

void ProgramShelf::deleteProgram(std::uint64_t program, Bank bank) {
  if (program >= programCount(bank)) {
    return;
  }
  if (selected.program == program) {
    selected.bank = Bank::ghost;
  }
  databaseAt(bank)->remove(program);
  if (selected.bank == bank && program <= selected.program) {
    --selected.program;
  }
}

void ProgramShelf::dropPrograms(Bank bank, const std::vector<bool>& isGone) {
  if (selected.bank == bank && selected.program < isGone.size()) {
    const auto place = isGone.begin() + static_cast<std::ptrdiff_t>(selected.program);
    selected.bank = *place ? Bank::ghost : bank;
    selected.program -= static_cast<std::uint64_t>(std::count(isGone.begin(), place, true));
  }
  databaseAt(bank)->removeAll(isGone);
}

void ProgramShelf::moveProgram(Bank bank, std::uint64_t from, std::uint64_t to) {
  if (from == to || from >= programCount(bank) || to >= programCount(bank)) {
    return;
  }
  databaseAt(bank)->move(from, to);
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
