// The edit view model common to all instruments of the family: the shell's parameters, the smaller view models, and the
// library's fonts and images.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "viewmodels/BXInstrumentKeyboardViewModel.h"
#include "viewmodels/IPluginEditViewModelOwner.h"
#include "viewmodels/resources/ResourceStore.h"

namespace tesh::bramel {

class BXInstrumentEditViewModel : public virtual IPluginEditViewModelOwner {
 public:
  /// Fonts and images, shared in the process. Lives as long as any instrument that has had a view model, so that an
  /// editor that opens again loads nothing.
  using SharedImpl = ResourceStore;
  /// The property of an instrument that holds its shared pointer to the store.
  static constexpr const char* kSharedImplKey = "BXInstrumentEditViewModel::SharedImpl";

  /// `lookup` is used only if this is the process's first model.
  explicit BXInstrumentEditViewModel(std::shared_ptr<vst::BramelInstrument> shell,
                                     ResourceStore::Lookup lookup = ResourceStore::embedded());
  ~BXInstrumentEditViewModel() override;
  BXInstrumentEditViewModel(const BXInstrumentEditViewModel&) = delete;
  BXInstrumentEditViewModel& operator=(const BXInstrumentEditViewModel&) = delete;

  /// Loads one of the library's typefaces for `getFont`. Ignores an unknown name.
  void addFont(const std::string& name) { sharedImpl->addFont(name); }

  cofu::core::boxed::Box getFont(const std::string& name, double height) override {
    return sharedImpl->getFont(name, height);
  }
  cofu::core::boxed::Box getImage(const std::string& name) override { return sharedImpl->getImage(name, imageScale); }

  std::weak_ptr<IPluginEditViewModelListener> getListener() const override { return listener; }
  void setListener(std::weak_ptr<IPluginEditViewModelListener> newListener) override {
    listener = std::move(newListener);
  }
  std::shared_ptr<IParameterQuantizer> getParameterQuantizer() const override { return parameterQuantizer; }
  std::shared_ptr<IProgramListViewModel> getProgramListViewModel() const override { return programListViewModel; }
  std::shared_ptr<IPluginKeyboardViewModel> getKeyboardViewModel() const override { return keyboardViewModel; }
  std::shared_ptr<IScaleSelectorViewModel> getScaleSelectorViewModel() const override { return scaleSelectorViewModel; }
  std::shared_ptr<IPluginTooltipViewModel> getTooltipViewModel() const override { return tooltipViewModel; }
  std::shared_ptr<IPluginSettingsViewModel> getSettingsViewModel() const override { return settingsViewModel; }
  std::int32_t getEditorKind() const override { return 1; }
  std::string getInstrumentName() const override { return instrument->productName(); }
  std::string getVersion() const override { return "2.0.0"; }
  std::uint32_t getProgramNumber() const override { return programListViewModel->getCurrentProgramIndex() + 1; }
  std::string getProgramName() const override { return programListViewModel->getCurrentProgramName(); }
  void selectPreviousProgram() override;
  void selectNextProgram() override;
  std::int64_t getParameterCount() const override {
    return static_cast<std::int64_t>(instrument->cachedParameterCount());
  }
  std::string getParameterName(std::uint64_t index) const override { return instrument->parameterName(index); }
  std::int64_t getParameterStepCount(std::uint64_t index) const override {
    return static_cast<std::int64_t>(instrument->parameterSteps(index));
  }
  float getParameterDefault(std::uint64_t index) const override { return instrument->parameterDefault(index); }
  float getParameterValue(std::uint64_t index) const override { return instrument->parameterValue(index); }
  std::uint64_t getParameterIntegerValue(std::uint64_t index) const override {
    return instrument->parameterInteger(index);
  }
  void setParameterValue(std::uint64_t index, float value) override;
  void setParameterIntegerValue(std::uint64_t index, std::uint64_t value) override {
    instrument->setParameterInteger(index, value);
  }
  void beginParameterGesture(std::uint64_t index) override { instrument->beginGesture(index); }
  void endParameterGesture(std::uint64_t index) override { instrument->endGesture(index); }
  float getEngineParameterValue(std::uint64_t index) const override { return instrument->engineParameter(index); }
  void setAllKeyStates(std::uint32_t state) override { instrument->setAllKeyStates(state); }
  std::uint32_t getKeyState(std::uint8_t note) const override { return instrument->keyState(note); }
  void setKeyState(std::uint8_t note, std::uint32_t state) override { instrument->setKeyState(note, state); }

  std::shared_ptr<IProgramListViewModelOwner> getProgramListViewModelOwner() const override {
    return programListViewModelOwner;
  }
  void setProgramListViewModel(std::shared_ptr<IProgramListViewModel> model) override {
    programListViewModel = std::move(model);
  }
  void setParameterQuantizer(std::shared_ptr<IParameterQuantizer> quantizer) override {
    parameterQuantizer = std::move(quantizer);
  }
  Processor* getMacroController() const override { return instrument->processorHandle(); }
  std::shared_ptr<IPluginKeyboardViewModelOwner> getKeyboardViewModelOwner() const override {
    return keyboardViewModel;
  }
  bool isActive() const override { return instrument->isActive(); }
  void setTooltipProvider(std::shared_ptr<tooltip::BramelTooltipProvider> provider) override;
  void setImageScale(int scale) override { imageScale = std::clamp(scale, 1, 2); }
  void notifyAllParametersChanged() override { raiseAllParametersChanged(); }
  void notifyParameterChanged(std::uint64_t index) override { raiseParameterChanged(index); }
  void notifyKeyboardStateChanged() override { raiseKeyboardStateChanged(); }
  void notifyProgramSaved(const std::uint64_t* programIds, std::uint64_t count, const std::string& bankName) override {
    programListViewModelOwner->programSaved(programIds, count, bankName);
  }
  void notifyProgramDeleted(const std::uint64_t* programIds, std::uint64_t count,
                            const std::string& bankName) override {
    programListViewModelOwner->programDeleted(programIds, count, bankName);
  }
  void notifyProgramMoved(std::uint64_t from, std::uint64_t to, const std::string& bankName) override {
    programListViewModelOwner->programMoved(from, to, bankName);
  }

 protected:
  // These pass the three notifications to the listener.
  virtual void raiseAllParametersChanged() { tellListener(&IPluginEditViewModelListener::onAllParametersChanged); }
  virtual void raiseParameterChanged(std::uint64_t index) {
    tellListener(&IPluginEditViewModelListener::onParameterChanged, index);
  }
  virtual void raiseKeyboardStateChanged() { tellListener(&IPluginEditViewModelListener::onKeyboardStateChanged); }

 private:
  template <typename Event, typename... Values>
  void tellListener(Event event, Values... values) {
    if (const auto held = listener.lock()) {
      (*held.*event)(*this, values...);
    }
  }

  std::shared_ptr<vst::BramelInstrument> instrument;
  std::weak_ptr<IPluginEditViewModelListener> listener;
  std::shared_ptr<IParameterQuantizer> parameterQuantizer;
  std::shared_ptr<IPluginTooltipViewModel> tooltipViewModel;  ///< May be null.
  std::shared_ptr<IScaleSelectorViewModel> scaleSelectorViewModel;
  std::shared_ptr<BXInstrumentKeyboardViewModel> keyboardViewModel;
  std::shared_ptr<IProgramListViewModelOwner> programListViewModelOwner;
  /// The owner's interface to the program list, unless that was replaced.
  std::shared_ptr<IProgramListViewModel> programListViewModel;
  std::shared_ptr<IPluginSettingsViewModel> settingsViewModel;
  std::shared_ptr<SharedImpl> sharedImpl;
  int imageScale = 1;
};

}  // namespace tesh::bramel
