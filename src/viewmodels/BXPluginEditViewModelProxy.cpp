// Every operation goes to the wrapped model as it comes.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewmodels/BXPluginEditViewModelProxy.h"

#include <utility>

namespace tesh::bramel {

BXPluginEditViewModelProxy::BXPluginEditViewModelProxy(std::shared_ptr<IPluginEditViewModelOwner> wrapped)
    : inner(std::move(wrapped)) {}

cofu::core::boxed::Box BXPluginEditViewModelProxy::getFont(const std::string& name, double height) {
  return inner->getFont(name, height);
}

cofu::core::boxed::Box BXPluginEditViewModelProxy::getImage(const std::string& name) { return inner->getImage(name); }

std::weak_ptr<IPluginEditViewModelListener> BXPluginEditViewModelProxy::getListener() const {
  return inner->getListener();
}

void BXPluginEditViewModelProxy::setListener(std::weak_ptr<IPluginEditViewModelListener> newListener) {
  inner->setListener(std::move(newListener));
}

std::shared_ptr<IParameterQuantizer> BXPluginEditViewModelProxy::getParameterQuantizer() const {
  return inner->getParameterQuantizer();
}

std::shared_ptr<IProgramListViewModel> BXPluginEditViewModelProxy::getProgramListViewModel() const {
  return inner->getProgramListViewModel();
}

std::shared_ptr<IPluginKeyboardViewModel> BXPluginEditViewModelProxy::getKeyboardViewModel() const {
  return inner->getKeyboardViewModel();
}

std::shared_ptr<IScaleSelectorViewModel> BXPluginEditViewModelProxy::getScaleSelectorViewModel() const {
  return inner->getScaleSelectorViewModel();
}

std::shared_ptr<IPluginTooltipViewModel> BXPluginEditViewModelProxy::getTooltipViewModel() const {
  return inner->getTooltipViewModel();
}

std::shared_ptr<IPluginSettingsViewModel> BXPluginEditViewModelProxy::getSettingsViewModel() const {
  return inner->getSettingsViewModel();
}

std::int32_t BXPluginEditViewModelProxy::getEditorKind() const { return inner->getEditorKind(); }

std::string BXPluginEditViewModelProxy::getInstrumentName() const { return inner->getInstrumentName(); }

std::string BXPluginEditViewModelProxy::getVersion() const { return inner->getVersion(); }

std::uint32_t BXPluginEditViewModelProxy::getProgramNumber() const { return inner->getProgramNumber(); }

std::string BXPluginEditViewModelProxy::getProgramName() const { return inner->getProgramName(); }

void BXPluginEditViewModelProxy::selectPreviousProgram() { inner->selectPreviousProgram(); }

void BXPluginEditViewModelProxy::selectNextProgram() { inner->selectNextProgram(); }

std::int64_t BXPluginEditViewModelProxy::getParameterCount() const { return inner->getParameterCount(); }

std::string BXPluginEditViewModelProxy::getParameterName(std::uint64_t index) const {
  return inner->getParameterName(index);
}

std::int64_t BXPluginEditViewModelProxy::getParameterStepCount(std::uint64_t index) const {
  return inner->getParameterStepCount(index);
}

float BXPluginEditViewModelProxy::getParameterDefault(std::uint64_t index) const {
  return inner->getParameterDefault(index);
}

float BXPluginEditViewModelProxy::getParameterValue(std::uint64_t index) const {
  return inner->getParameterValue(index);
}

std::uint64_t BXPluginEditViewModelProxy::getParameterIntegerValue(std::uint64_t index) const {
  return inner->getParameterIntegerValue(index);
}

void BXPluginEditViewModelProxy::setParameterValue(std::uint64_t index, float value) {
  inner->setParameterValue(index, value);
}

void BXPluginEditViewModelProxy::setParameterIntegerValue(std::uint64_t index, std::uint64_t value) {
  inner->setParameterIntegerValue(index, value);
}

void BXPluginEditViewModelProxy::beginParameterGesture(std::uint64_t index) { inner->beginParameterGesture(index); }

void BXPluginEditViewModelProxy::endParameterGesture(std::uint64_t index) { inner->endParameterGesture(index); }

float BXPluginEditViewModelProxy::getEngineParameterValue(std::uint64_t index) const {
  return inner->getEngineParameterValue(index);
}

void BXPluginEditViewModelProxy::setAllKeyStates(std::uint32_t state) { inner->setAllKeyStates(state); }

std::uint32_t BXPluginEditViewModelProxy::getKeyState(std::uint8_t note) const { return inner->getKeyState(note); }

void BXPluginEditViewModelProxy::setKeyState(std::uint8_t note, std::uint32_t state) {
  inner->setKeyState(note, state);
}

std::shared_ptr<IProgramListViewModelOwner> BXPluginEditViewModelProxy::getProgramListViewModelOwner() const {
  return inner->getProgramListViewModelOwner();
}

void BXPluginEditViewModelProxy::setProgramListViewModel(std::shared_ptr<IProgramListViewModel> model) {
  inner->setProgramListViewModel(std::move(model));
}

void BXPluginEditViewModelProxy::setParameterQuantizer(std::shared_ptr<IParameterQuantizer> quantizer) {
  inner->setParameterQuantizer(std::move(quantizer));
}

BXPluginEditViewModelProxy::Processor* BXPluginEditViewModelProxy::getMacroController() const {
  return inner->getMacroController();
}

std::shared_ptr<IPluginKeyboardViewModelOwner> BXPluginEditViewModelProxy::getKeyboardViewModelOwner() const {
  return inner->getKeyboardViewModelOwner();
}

bool BXPluginEditViewModelProxy::isActive() const { return inner->isActive(); }

void BXPluginEditViewModelProxy::setTooltipProvider(std::shared_ptr<tooltip::BramelTooltipProvider> provider) {
  inner->setTooltipProvider(std::move(provider));
}

void BXPluginEditViewModelProxy::setImageScale(int scale) { inner->setImageScale(scale); }

void BXPluginEditViewModelProxy::notifyAllParametersChanged() { inner->notifyAllParametersChanged(); }

void BXPluginEditViewModelProxy::notifyParameterChanged(std::uint64_t index) { inner->notifyParameterChanged(index); }

void BXPluginEditViewModelProxy::notifyKeyboardStateChanged() { inner->notifyKeyboardStateChanged(); }

void BXPluginEditViewModelProxy::notifyProgramSaved(const std::uint64_t* programIds, std::uint64_t count,
                                                    const std::string& bankName) {
  inner->notifyProgramSaved(programIds, count, bankName);
}

void BXPluginEditViewModelProxy::notifyProgramDeleted(const std::uint64_t* programIds, std::uint64_t count,
                                                      const std::string& bankName) {
  inner->notifyProgramDeleted(programIds, count, bankName);
}

void BXPluginEditViewModelProxy::notifyProgramMoved(std::uint64_t from, std::uint64_t to, const std::string& bankName) {
  inner->notifyProgramMoved(from, to, bankName);
}

void BXPluginEditViewModelProxy::onAllParametersChanged(IPluginEditViewModel&) { notifyAllParametersChanged(); }

void BXPluginEditViewModelProxy::onParameterChanged(IPluginEditViewModel&, std::uint64_t index) {
  notifyParameterChanged(index);
}

void BXPluginEditViewModelProxy::onKeyboardStateChanged(IPluginEditViewModel&) { notifyKeyboardStateChanged(); }

}  // namespace tesh::bramel
