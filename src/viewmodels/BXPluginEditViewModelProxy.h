// An edit view model that forwards everything to another one. Instruments derive from it to add their own features.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "viewmodels/IPluginEditViewModelOwner.h"

namespace tesh::bramel {

/// Forwards the notifications of another model to its own listener. It must not be the listener of the model that it
/// wraps.
class BXPluginEditViewModelProxy : public virtual IPluginEditViewModelOwner,
                                   public virtual IPluginEditViewModelListener {
 public:
  /// `wrapped` is not null.
  explicit BXPluginEditViewModelProxy(std::shared_ptr<IPluginEditViewModelOwner> wrapped) : inner(std::move(wrapped)) {}

  cofu::core::boxed::Box getFont(const std::string& name, double height) override {
    return inner->getFont(name, height);
  }
  cofu::core::boxed::Box getImage(const std::string& name) override { return inner->getImage(name); }

  std::weak_ptr<IPluginEditViewModelListener> getListener() const override { return inner->getListener(); }
  void setListener(std::weak_ptr<IPluginEditViewModelListener> newListener) override {
    inner->setListener(std::move(newListener));
  }
  std::shared_ptr<IParameterQuantizer> getParameterQuantizer() const override { return inner->getParameterQuantizer(); }
  std::shared_ptr<IProgramListViewModel> getProgramListViewModel() const override {
    return inner->getProgramListViewModel();
  }
  std::shared_ptr<IPluginKeyboardViewModel> getKeyboardViewModel() const override {
    return inner->getKeyboardViewModel();
  }
  std::shared_ptr<IScaleSelectorViewModel> getScaleSelectorViewModel() const override {
    return inner->getScaleSelectorViewModel();
  }
  std::shared_ptr<IPluginTooltipViewModel> getTooltipViewModel() const override { return inner->getTooltipViewModel(); }
  std::shared_ptr<IPluginSettingsViewModel> getSettingsViewModel() const override {
    return inner->getSettingsViewModel();
  }
  std::int32_t getEditorKind() const override { return inner->getEditorKind(); }
  std::string getInstrumentName() const override { return inner->getInstrumentName(); }
  std::string getVersion() const override { return inner->getVersion(); }
  std::uint32_t getProgramNumber() const override { return inner->getProgramNumber(); }
  std::string getProgramName() const override { return inner->getProgramName(); }
  void selectPreviousProgram() override { inner->selectPreviousProgram(); }
  void selectNextProgram() override { inner->selectNextProgram(); }
  std::int64_t getParameterCount() const override { return inner->getParameterCount(); }
  std::string getParameterName(std::uint64_t index) const override { return inner->getParameterName(index); }
  std::int64_t getParameterStepCount(std::uint64_t index) const override { return inner->getParameterStepCount(index); }
  float getParameterDefault(std::uint64_t index) const override { return inner->getParameterDefault(index); }
  float getParameterValue(std::uint64_t index) const override { return inner->getParameterValue(index); }
  std::uint64_t getParameterIntegerValue(std::uint64_t index) const override {
    return inner->getParameterIntegerValue(index);
  }
  void setParameterValue(std::uint64_t index, float value) override { inner->setParameterValue(index, value); }
  void setParameterIntegerValue(std::uint64_t index, std::uint64_t value) override {
    inner->setParameterIntegerValue(index, value);
  }
  void beginParameterGesture(std::uint64_t index) override { inner->beginParameterGesture(index); }
  void endParameterGesture(std::uint64_t index) override { inner->endParameterGesture(index); }
  float getEngineParameterValue(std::uint64_t index) const override { return inner->getEngineParameterValue(index); }
  void setAllKeyStates(std::uint32_t state) override { inner->setAllKeyStates(state); }
  std::uint32_t getKeyState(std::uint8_t note) const override { return inner->getKeyState(note); }
  void setKeyState(std::uint8_t note, std::uint32_t state) override { inner->setKeyState(note, state); }

  std::shared_ptr<IProgramListViewModelOwner> getProgramListViewModelOwner() const override {
    return inner->getProgramListViewModelOwner();
  }
  void setProgramListViewModel(std::shared_ptr<IProgramListViewModel> model) override {
    inner->setProgramListViewModel(std::move(model));
  }
  void setParameterQuantizer(std::shared_ptr<IParameterQuantizer> quantizer) override {
    inner->setParameterQuantizer(std::move(quantizer));
  }
  Processor* getMacroController() const override { return inner->getMacroController(); }
  std::shared_ptr<IPluginKeyboardViewModelOwner> getKeyboardViewModelOwner() const override {
    return inner->getKeyboardViewModelOwner();
  }
  bool isActive() const override { return inner->isActive(); }
  void setTooltipProvider(std::shared_ptr<tooltip::BramelTooltipProvider> provider) override {
    inner->setTooltipProvider(std::move(provider));
  }
  void setImageScale(int scale) override { inner->setImageScale(scale); }
  void notifyAllParametersChanged() override { inner->notifyAllParametersChanged(); }
  void notifyParameterChanged(std::uint64_t index) override { inner->notifyParameterChanged(index); }
  void notifyKeyboardStateChanged() override { inner->notifyKeyboardStateChanged(); }
  void notifyProgramSaved(const std::uint64_t* programIds, std::uint64_t count, const std::string& bankName) override {
    inner->notifyProgramSaved(programIds, count, bankName);
  }
  void notifyProgramDeleted(const std::uint64_t* programIds, std::uint64_t count,
                            const std::string& bankName) override {
    inner->notifyProgramDeleted(programIds, count, bankName);
  }
  void notifyProgramMoved(std::uint64_t from, std::uint64_t to, const std::string& bankName) override {
    inner->notifyProgramMoved(from, to, bankName);
  }

  void onAllParametersChanged(IPluginEditViewModel&) override { notifyAllParametersChanged(); }
  void onParameterChanged(IPluginEditViewModel&, std::uint64_t index) override { notifyParameterChanged(index); }
  void onKeyboardStateChanged(IPluginEditViewModel&) override { notifyKeyboardStateChanged(); }

 protected:
  IPluginEditViewModelOwner& wrappedModel() const { return *inner; }

 private:
  const std::shared_ptr<IPluginEditViewModelOwner> inner;
};

}  // namespace tesh::bramel
