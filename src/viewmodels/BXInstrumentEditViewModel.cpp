// Construction, resources and parameters of the family's edit view model; its notifications.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewmodels/BXInstrumentEditViewModel.h"

#include <algorithm>
#include <array>
#include <utility>

#include "viewmodels/BXInstrumentProgramListViewModel.h"
#include "viewmodels/BXInstrumentScaleSelectorViewModel.h"
#include "viewmodels/BXInstrumentSettingsViewModel.h"
#include "viewmodels/BXPluginTooltipViewModel.h"
#include "viewmodels/SharedProperty.h"

namespace tesh::bramel {
namespace {

constexpr std::array kFamilyFonts{"Roboto", "Open Sans Regular", "Open Sans SemiBold", "Open Sans Bold"};

/// The store that the instrument already has, or the one of another instrument in the process, or a new one.
std::shared_ptr<ResourceStore> findSharedImpl(vst::BramelInstrument& instrument, ResourceStore::Lookup lookup) {
  // Weak, so that fonts and images end with their last instrument and not when the library is unloaded.
  static std::weak_ptr<ResourceStore> ofProcess;
  return sharedProperty<ResourceStore>(instrument, BXInstrumentEditViewModel::kSharedImplKey, [&lookup] {
    auto store = ofProcess.lock();
    if (store == nullptr) {
      store = std::make_shared<ResourceStore>(std::move(lookup));
      ofProcess = store;
    }
    return store;
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

void BXInstrumentEditViewModel::addFont(const std::string& name) { sharedImpl->addFont(name); }

cofu::core::boxed::Box BXInstrumentEditViewModel::getFont(const std::string& name, double height) {
  return sharedImpl->getFont(name, height);
}

cofu::core::boxed::Box BXInstrumentEditViewModel::getImage(const std::string& name) {
  return sharedImpl->getImage(name, imageScale);
}

void BXInstrumentEditViewModel::setImageScale(int scale) { imageScale = std::clamp(scale, 1, 2); }

std::weak_ptr<IPluginEditViewModelListener> BXInstrumentEditViewModel::getListener() const { return listener; }

void BXInstrumentEditViewModel::setListener(std::weak_ptr<IPluginEditViewModelListener> newListener) {
  listener = std::move(newListener);
}

std::shared_ptr<IParameterQuantizer> BXInstrumentEditViewModel::getParameterQuantizer() const {
  return parameterQuantizer;
}

void BXInstrumentEditViewModel::setParameterQuantizer(std::shared_ptr<IParameterQuantizer> quantizer) {
  parameterQuantizer = std::move(quantizer);
}

std::shared_ptr<IProgramListViewModel> BXInstrumentEditViewModel::getProgramListViewModel() const {
  return programListViewModel;
}

void BXInstrumentEditViewModel::setProgramListViewModel(std::shared_ptr<IProgramListViewModel> model) {
  programListViewModel = std::move(model);
}

std::shared_ptr<IProgramListViewModelOwner> BXInstrumentEditViewModel::getProgramListViewModelOwner() const {
  return programListViewModelOwner;
}

std::shared_ptr<IPluginKeyboardViewModel> BXInstrumentEditViewModel::getKeyboardViewModel() const {
  return keyboardViewModel;
}

std::shared_ptr<IPluginKeyboardViewModelOwner> BXInstrumentEditViewModel::getKeyboardViewModelOwner() const {
  return keyboardViewModel;
}

std::shared_ptr<IScaleSelectorViewModel> BXInstrumentEditViewModel::getScaleSelectorViewModel() const {
  return scaleSelectorViewModel;
}

std::shared_ptr<IPluginTooltipViewModel> BXInstrumentEditViewModel::getTooltipViewModel() const {
  return tooltipViewModel;
}

void BXInstrumentEditViewModel::setTooltipProvider(std::shared_ptr<tooltip::BramelTooltipProvider> provider) {
  tooltipViewModel = std::make_shared<BXPluginTooltipViewModel>(std::move(provider));
}

std::shared_ptr<IPluginSettingsViewModel> BXInstrumentEditViewModel::getSettingsViewModel() const {
  return settingsViewModel;
}

std::int32_t BXInstrumentEditViewModel::getEditorKind() const { return 1; }

std::string BXInstrumentEditViewModel::getInstrumentName() const { return instrument->productName(); }

std::string BXInstrumentEditViewModel::getVersion() const { return "2.0.0"; }

BXInstrumentEditViewModel::Processor* BXInstrumentEditViewModel::getMacroController() const {
  return instrument->processorHandle();
}

bool BXInstrumentEditViewModel::isActive() const { return instrument->isActive(); }

// Programs.

std::uint32_t BXInstrumentEditViewModel::getProgramNumber() const {
  return programListViewModel->getCurrentProgramIndex() + 1;
}

std::string BXInstrumentEditViewModel::getProgramName() const { return programListViewModel->getCurrentProgramName(); }

void BXInstrumentEditViewModel::selectPreviousProgram() {
  const std::uint32_t index = programListViewModel->getCurrentProgramIndex();
  if (index > 0) {
    programListViewModel->selectProgram(index - 1, programListViewModel->getCurrentBank());
  }
}

void BXInstrumentEditViewModel::selectNextProgram() {
  const std::string bank = programListViewModel->getCurrentBank();
  const std::uint64_t next = std::uint64_t{programListViewModel->getCurrentProgramIndex()} + 1;
  if (next < programListViewModel->getProgramCount(bank)) {
    programListViewModel->selectProgram(next, bank);
  }
}

// Parameters and keys.

std::int64_t BXInstrumentEditViewModel::getParameterCount() const {
  return static_cast<std::int64_t>(instrument->cachedParameterCount());
}

std::string BXInstrumentEditViewModel::getParameterName(std::uint64_t index) const {
  return instrument->parameterName(index);
}

std::int64_t BXInstrumentEditViewModel::getParameterStepCount(std::uint64_t index) const {
  return static_cast<std::int64_t>(instrument->parameterSteps(index));
}

float BXInstrumentEditViewModel::getParameterDefault(std::uint64_t index) const {
  return instrument->parameterDefault(index);
}

float BXInstrumentEditViewModel::getParameterValue(std::uint64_t index) const {
  return instrument->parameterValue(index);
}

std::uint64_t BXInstrumentEditViewModel::getParameterIntegerValue(std::uint64_t index) const {
  return instrument->parameterInteger(index);
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

void BXInstrumentEditViewModel::setParameterIntegerValue(std::uint64_t index, std::uint64_t value) {
  instrument->setParameterInteger(index, value);
}

void BXInstrumentEditViewModel::beginParameterGesture(std::uint64_t index) { instrument->beginGesture(index); }

void BXInstrumentEditViewModel::endParameterGesture(std::uint64_t index) { instrument->endGesture(index); }

float BXInstrumentEditViewModel::getEngineParameterValue(std::uint64_t index) const {
  return instrument->engineParameter(index);
}

void BXInstrumentEditViewModel::setAllKeyStates(std::uint32_t state) { instrument->setAllKeyStates(state); }

std::uint32_t BXInstrumentEditViewModel::getKeyState(std::uint8_t note) const { return instrument->keyState(note); }

void BXInstrumentEditViewModel::setKeyState(std::uint8_t note, std::uint32_t state) {
  instrument->setKeyState(note, state);
}

// Notifications.

template <typename Event, typename... Values>
void BXInstrumentEditViewModel::tellListener(Event event, Values... values) {
  if (const auto held = listener.lock()) {
    (*held.*event)(*this, values...);
  }
}

void BXInstrumentEditViewModel::raiseAllParametersChanged() {
  tellListener(&IPluginEditViewModelListener::onAllParametersChanged);
}

void BXInstrumentEditViewModel::raiseParameterChanged(std::uint64_t index) {
  tellListener(&IPluginEditViewModelListener::onParameterChanged, index);
}

void BXInstrumentEditViewModel::raiseKeyboardStateChanged() {
  tellListener(&IPluginEditViewModelListener::onKeyboardStateChanged);
}

void BXInstrumentEditViewModel::notifyAllParametersChanged() { raiseAllParametersChanged(); }

void BXInstrumentEditViewModel::notifyParameterChanged(std::uint64_t index) { raiseParameterChanged(index); }

void BXInstrumentEditViewModel::notifyKeyboardStateChanged() { raiseKeyboardStateChanged(); }

void BXInstrumentEditViewModel::notifyProgramSaved(const std::uint64_t* programIds, std::uint64_t count,
                                                   const std::string& bankName) {
  programListViewModelOwner->programSaved(programIds, count, bankName);
}

void BXInstrumentEditViewModel::notifyProgramDeleted(const std::uint64_t* programIds, std::uint64_t count,
                                                     const std::string& bankName) {
  programListViewModelOwner->programDeleted(programIds, count, bankName);
}

void BXInstrumentEditViewModel::notifyProgramMoved(std::uint64_t from, std::uint64_t to, const std::string& bankName) {
  programListViewModelOwner->programMoved(from, to, bankName);
}

}  // namespace tesh::bramel
