// Moves macros and selects programs; MacroChunk.cpp reads and writes the chunk.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "macro/MacroController.h"

#include <algorithm>
#include <cmath>

#include "macro/MacroSetQuantized.h"

namespace tesh::vimo {
namespace {

void putInto(TimedValueRing* ring, const TimedValue& entry) {
  if (ring) {
    ring->put(entry);
  }
}

TimedValue movement(std::uint64_t index, float value, std::uint32_t frame) {
  return {static_cast<std::uint32_t>(index), value, frame, 0};
}

}  // namespace

using Controller = MacroController<Generator<float>>;

void Controller::sendMapped(const MacroParameterControl& macro, float value, std::uint32_t frame,
                            ProcessBlock& block) const {
  for (const auto& set : macro.sets()) {
    putInto(block.automationRing, {set->targetId(), set->map(value), frame, 0});
  }
}

void Controller::setMacroValue(std::uint64_t index, float value, std::uint32_t frame, ProcessBlock& block) {
  MacroParameterControl* macro = macroAt(index);
  if (!macro) {
    return;
  }
  macro->objectValue = 0;
  macro->storedValue = value;
  macro->liveValue = value;
  sendMapped(*macro, value, frame, block);
  macro->echoValue = value;
  putInto(block.notificationRing, movement(index, value, frame));
}

void Controller::setMacroObject(std::uint64_t index, std::uint64_t object, std::uint32_t frame, ProcessBlock& block) {
  MacroParameterControl* macro = macroAt(index);
  if (!macro) {
    return;
  }
  macro->objectValue = object;
  for (const auto& set : macro->sets()) {
    putInto(block.automationRing, {set->targetId(), 0.0F, frame, set->mapObject(object)});
  }
  putInto(block.notificationRing, {static_cast<std::uint32_t>(index), 0.0F, frame, object});
}

void Controller::moveTemporarily(std::uint64_t index, float value, std::uint32_t frame, ProcessBlock& block) {
  MacroParameterControl* macro = macroAt(index);
  if (!macro) {
    return;
  }
  macro->liveValue = value;
  sendMapped(*macro, value, frame, block);
  putInto(block.notificationRing, movement(index, value, frame));
}

void Controller::endTemporaryMoves(std::uint32_t frame, ProcessBlock& block) {
  for (std::size_t index = 0; index < macros.size(); ++index) {
    MacroParameterControl& macro = *macros[index];
    if (macro.liveValue == macro.storedValue) {
      continue;
    }
    macro.liveValue = macro.storedValue;
    sendMapped(macro, macro.liveValue, frame, block);
    putInto(block.notificationRing, movement(index, liveMacroValue(index), frame));
  }
}

void Controller::selectProgram(std::uint64_t program, Bank bank, std::uint32_t frame, ProcessBlock& block) {
  const std::uint64_t count = shelf.programCount(bank);
  if (shelf.selection() == ProgramSelection{program, bank} || count == 0) {
    return;
  }
  shelf.setSelection(std::min(program, count - 1), bank);
  const ProgramRecord& record = *shelf.database(bank)->record(shelf.selection().program);
  // Allocates nothing: both strings have room for the longest text of a record.
  cofu::core::vouchFor([&] {
    selectedName.assign(ProgramRecord::textOf(record.name));
    selectedComment.assign(ProgramRecord::textOf(record.comment));
  });
  selectedTime = record.time;
  const auto entries = record.entries.all();
  for (std::size_t index = 0; index < macros.size(); ++index) {
    if (index >= entries.size()) {
      setMacroValue(index, macros[index]->defaultValue, frame, block);
    } else if (entries[index].object == 0) {
      setMacroValue(index, entries[index].value, frame, block);
    } else {
      setMacroObject(index, entries[index].object, frame, block);
    }
  }
}

void Controller::addReadsOfMacro(std::uint64_t index, float value, ComingValues& coming) const {
  const MacroParameterControl* const macro = macroAt(index);
  if (macro == nullptr) {
    return;
  }
  for (const auto& set : macro->sets()) {
    if (generator.readsFile(set->targetId())) {
      coming.push_back({set->targetId(), set->map(value)});
    }
  }
}

void Controller::addReadsOfProgram(std::uint64_t program, Bank bank, ComingValues& coming) const {
  const std::uint64_t count = shelf.programCount(bank);
  if (count == 0) {
    return;
  }
  const auto entries = shelf.database(bank)->entries(std::min(program, count - 1));
  for (std::size_t index = 0; index < macros.size(); ++index) {
    addReadsOfMacro(index, index < entries.size() ? entries[index].value : macros[index]->defaultValue, coming);
  }
}

std::uint64_t Controller::stepCount(std::uint64_t index) const {
  const MacroParameterControl* macro = macroAt(index);
  if (!macro || macro->sets().empty()) {
    return kDefaultSteps;
  }
  const MacroSetBase& set = *macro->sets().front();
  if (const auto* quantized = dynamic_cast<const MacroSetQuantized*>(&set)) {
    return quantized->valueCount();
  }
  GeneratorParameterInfo info;
  if (!generator.getParameterInfo(set.targetId(), info) || !(info.step > 0.0F)) {
    return kDefaultSteps;
  }
  const double first = std::round(std::clamp(set.map(0.0F), 0.0F, 1.0F) / info.step);
  const double last = std::round(std::clamp(set.map(1.0F), 0.0F, 1.0F) / info.step);
  const double states = std::abs(last - first) + 1.0;
  return std::isfinite(states) ? static_cast<std::uint64_t>(std::min(states, 4294967296.0)) : kDefaultSteps;
}

void Controller::clearMacros() {
  macros.clear();
  shelf.fit(Bank::factory);
  shelf.fit(Bank::user);
}

MacroParameterControl& Controller::addMacro() {
  macros.push_back(std::make_unique<MacroParameterControl>(
      std::make_unique<MacroParameterControlTargetAny<Generator<float>*>>(&generator), this));
  return *macros.back();
}

}  // namespace tesh::vimo
