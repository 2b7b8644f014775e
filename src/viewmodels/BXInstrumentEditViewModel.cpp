// Builds the family's edit view model, selects neighbouring programs, and passes writes to tooltips and instrument.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewmodels/BXInstrumentEditViewModel.h"

#include <array>
#include <utility>

#include "core/HeldByAll.h"
#include "viewmodels/BXInstrumentProgramListViewModel.h"
#include "viewmodels/BXInstrumentScaleSelectorViewModel.h"
#include "viewmodels/BXInstrumentSettingsViewModel.h"
#include "viewmodels/BXPluginTooltipViewModel.h"
#include "viewmodels/SharedProperty.h"

namespace tesh::bramel {
namespace {

constexpr std::array kFamilyFonts{"Roboto", "Open Sans Regular", "Open Sans SemiBold", "Open Sans Bold"};

/// The store that the instrument already has, else that of another instrument in the process, else a new one.
std::shared_ptr<ResourceStore> findSharedImpl(vst::BramelInstrument& instrument, ResourceStore::Lookup lookup) {
  static cofu::core::HeldByAll<ResourceStore> held;
  return sharedProperty<ResourceStore>(instrument, BXInstrumentEditViewModel::kSharedImplKey, [&lookup] {
    return held.get([&lookup] { return std::make_shared<ResourceStore>(std::move(lookup)); });
  });
}

}  // namespace

BXInstrumentEditViewModel::BXInstrumentEditViewModel(std::shared_ptr<vst::BramelInstrument> shell,
                                                     ResourceStore::Lookup lookup)
    : instrument(std::move(shell)),
      parameterQuantizer(std::make_shared<CParameterQuantizer>()),
      programListViewModelOwner(std::make_shared<BXInstrumentProgramListViewModel>(instrument)),
      programListViewModel(programListViewModelOwner),
      settingsViewModel(std::make_shared<BXInstrumentSettingsViewModel>(instrument->productName())),
      sharedImpl(findSharedImpl(*instrument, std::move(lookup))) {
  for (const char* const name : kFamilyFonts) {
    sharedImpl->addFont(name);
  }
  keyboardViewModel = std::make_shared<BXInstrumentKeyboardViewModel>(*this, instrument);
  scaleSelectorViewModel = std::make_shared<BXInstrumentScaleSelectorViewModel>(keyboardViewModel);
}

BXInstrumentEditViewModel::~BXInstrumentEditViewModel() { keyboardViewModel->forgetOwner(); }

void BXInstrumentEditViewModel::selectPreviousProgram() {
  const std::uint32_t index = programListViewModel->getCurrentProgramIndex();
  if (index > 0) {
    programListViewModel->selectProgram(index - 1, programListViewModel->getCurrentBank());
  }
}

void BXInstrumentEditViewModel::selectNextProgram() {
  const std::uint64_t next = std::uint64_t{programListViewModel->getCurrentProgramIndex()} + 1;
  // Read afterwards: getting the program applies a waiting selection.
  const std::string bank = programListViewModel->getCurrentBank();
  if (next < programListViewModel->getProgramCount(bank)) {
    programListViewModel->selectProgram(next, bank);
  }
}

void BXInstrumentEditViewModel::setParameterValue(std::uint64_t index, float value) {
  if (index >= instrument->cachedParameterCount()) {
    return;
  }
  if (tooltipViewModel != nullptr) {
    tooltipViewModel->onValueChanged(index, value);  // First, so that no tooltip shows the text of an older value.
  }
  instrument->setParameterFromEditor(index, value);
}

void BXInstrumentEditViewModel::setTooltipProvider(std::shared_ptr<tooltip::BramelTooltipProvider> provider) {
  tooltipViewModel = std::make_shared<BXPluginTooltipViewModel>(std::move(provider));
}

}  // namespace tesh::bramel
