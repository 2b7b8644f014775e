// Maps the banks' names to numbers, and passes on the list's changes.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewmodels/BXInstrumentProgramListViewModel.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

#include "host/shell/ProgramBanks.h"
#include "storage/paths/Paths.h"

namespace tesh::bramel {
namespace {

constexpr std::array kBanks{vst::kFactoryBank, vst::kFactoryTwoBank, vst::kGhostBank, vst::kUserBank};

/// Longest stem of a file name, in bytes.
constexpr std::size_t kLongestStem = 255;

/// The shell's number of a bank; nothing for an unknown name.
std::optional<std::uint64_t> knownNumber(std::string_view bank) {
  const auto* const found = std::ranges::find(
      kBanks, bank, [](std::uint64_t number) -> std::string_view { return vst::nameOf(vst::bankOf(number)); });
  return found == kBanks.end() ? std::nullopt : std::optional(*found);
}

/// As above, but an unknown name counts as the factory bank.
std::uint64_t numberOf(std::string_view bank) { return knownNumber(bank).value_or(vst::kFactoryBank); }

bool isListable(std::string_view bank) {
  const auto number = knownNumber(bank);
  return number && *number != vst::kGhostBank;
}

/// Lowers ASCII letters only, independent of the process's locale.
char toLower(char letter) { return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter; }

}  // namespace

BXInstrumentProgramListViewModel::BXInstrumentProgramListViewModel(std::shared_ptr<vst::BramelInstrument> shell)
    : instrument(std::move(shell)) {}

void BXInstrumentProgramListViewModel::setListener(IProgramListViewModelListener* newListener) {
  listener = newListener == nullptr ? std::weak_ptr<IProgramListViewModelListener>{} : newListener->getWeakSelf();
}

std::string BXInstrumentProgramListViewModel::getInstrumentName() const { return instrument->productName(); }

std::string BXInstrumentProgramListViewModel::getExportFileStem() const {
  std::string stem = getInstrumentName();
  std::erase(stem, ' ');
  std::ranges::transform(stem, stem.begin(), toLower);
  return (stem + "_programs").substr(0, kLongestStem);
}

std::string BXInstrumentProgramListViewModel::getCurrentBank() const {
  return vst::nameOf(vst::bankOf(instrument->currentBank()));
}

std::uint32_t BXInstrumentProgramListViewModel::getCurrentProgramIndex() const {
  return static_cast<std::uint32_t>(instrument->currentProgram());
}

std::string BXInstrumentProgramListViewModel::getCurrentProgramName() const { return instrument->currentProgramName(); }

void BXInstrumentProgramListViewModel::renameCurrentProgram(const std::string& name) {
  instrument->renameCurrentProgram(name);
}

std::uint64_t BXInstrumentProgramListViewModel::getProgramCount(const std::string& bank) const {
  return isListable(bank) ? instrument->programCount(numberOf(bank)) : 0;
}

std::string BXInstrumentProgramListViewModel::getProgramName(std::uint64_t index, const std::string& bank) const {
  return isListable(bank) ? instrument->programName(numberOf(bank), index) : std::string();
}

void BXInstrumentProgramListViewModel::selectProgram(std::uint64_t index, const std::string& bank) {
  instrument->setProgram(numberOf(bank), index);
}

void BXInstrumentProgramListViewModel::saveProgramAs(const std::string& name) {
  instrument->saveProgramAs(vst::kUserBank, name);
}

bool BXInstrumentProgramListViewModel::programExists(const std::string& bank, const std::string& name) const {
  const std::uint64_t count = getProgramCount(bank);
  for (std::uint64_t index = 0; index < count; ++index) {
    if (getProgramName(index, bank) == name) {
      return true;
    }
  }
  return false;
}

void BXInstrumentProgramListViewModel::overwriteCurrentProgram() { instrument->overwriteProgram(); }

void BXInstrumentProgramListViewModel::deleteProgram(std::uint64_t index, const std::string& bank) {
  instrument->deleteProgram(numberOf(bank), index);
}

void BXInstrumentProgramListViewModel::moveProgram(std::uint64_t from, std::uint64_t to, const std::string& bank) {
  instrument->moveProgram(numberOf(bank), from, to);
}

bool BXInstrumentProgramListViewModel::isProgramListEnabled() const { return true; }

void BXInstrumentProgramListViewModel::importPrograms(const std::string& path) {
  if (chosenFileExists(path)) {
    instrument->importPrograms(path);
  }
}

bool BXInstrumentProgramListViewModel::exportPrograms(const std::string& path) {
  return instrument->exportPrograms(path);
}

template <typename Event, typename... Values>
void BXInstrumentProgramListViewModel::tellListener(Event event, const Values&... values) {
  if (const auto held = listener.lock()) {
    (*held.*event)(*this, values...);
  }
}

void BXInstrumentProgramListViewModel::programSaved(const std::uint64_t* programIds, std::uint64_t count,
                                                    const std::string& bankName) {
  tellListener(&IProgramListViewModelListener::onProgramSaved, programIds, count, bankName);
}

void BXInstrumentProgramListViewModel::programDeleted(const std::uint64_t* programIds, std::uint64_t count,
                                                      const std::string& bankName) {
  tellListener(&IProgramListViewModelListener::onProgramDeleted, programIds, count, bankName);
}

void BXInstrumentProgramListViewModel::programMoved(std::uint64_t from, std::uint64_t to, const std::string& bankName) {
  tellListener(&IProgramListViewModelListener::onProgramMoved, from, to, bankName);
}

}  // namespace tesh::bramel
