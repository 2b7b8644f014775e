// An edit view model that passes all on to another one. An instrument derives from it to add what is its own.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "viewmodels/IPluginEditViewModelOwner.h"

namespace tesh::bramel {

/// Forwards the notifications of another model that it listens to, as if they were its own. It must not listen to the
/// model that it wraps.
class BXPluginEditViewModelProxy : public virtual IPluginEditViewModelOwner,
                                   public virtual IPluginEditViewModelListener {
 public:
  /// `wrapped` is not null.
  explicit BXPluginEditViewModelProxy(std::shared_ptr<IPluginEditViewModelOwner> wrapped);

  cofu::core::boxed::Box getFont(const std::string& name, double height) override;
  cofu::core::boxed::Box getImage(const std::string& name) override;

  std::weak_ptr<IPluginEditViewModelListener> getListener() const override;
  void setListener(std::weak_ptr<IPluginEditViewModelListener> newListener) override;
  std::shared_ptr<IParameterQuantizer> getParameterQuantizer() const override;
  std::shared_ptr<IProgramListViewModel> getProgramListViewModel() const override;
  std::shared_ptr<IPluginKeyboardViewModel> getKeyboardViewModel() const override;
  std::shared_ptr<IScaleSelectorViewModel> getScaleSelectorViewModel() const override;
  std::shared_ptr<IPluginTooltipViewModel> getTooltipViewModel() const override;
  std::shared_ptr<IPluginSettingsViewModel> getSettingsViewModel() const override;
  std::int32_t getEditorKind() const override;
  std::string getInstrumentName() const override;
  std::string getVersion() const override;
  std::uint32_t getProgramNumber() const override;
  std::string getProgramName() const override;
  void selectPreviousProgram() override;
  void selectNextProgram() override;
  std::int64_t getParameterCount() const override;
  std::string getParameterName(std::uint64_t index) const override;
  std::int64_t getParameterStepCount(std::uint64_t index) const override;
  float getParameterDefault(std::uint64_t index) const override;
  float getParameterValue(std::uint64_t index) const override;
  std::uint64_t getParameterIntegerValue(std::uint64_t index) const override;
  void setParameterValue(std::uint64_t index, float value) override;
  void setParameterIntegerValue(std::uint64_t index, std::uint64_t value) override;
  void beginParameterGesture(std::uint64_t index) override;
  void endParameterGesture(std::uint64_t index) override;
  float getEngineParameterValue(std::uint64_t index) const override;
  void setAllKeyStates(std::uint32_t state) override;
  std::uint32_t getKeyState(std::uint8_t note) const override;
  void setKeyState(std::uint8_t note, std::uint32_t state) override;

  std::shared_ptr<IProgramListViewModelOwner> getProgramListViewModelOwner() const override;
  void setProgramListViewModel(std::shared_ptr<IProgramListViewModel> model) override;
  void setParameterQuantizer(std::shared_ptr<IParameterQuantizer> quantizer) override;
  Processor* getMacroController() const override;
  std::shared_ptr<IPluginKeyboardViewModelOwner> getKeyboardViewModelOwner() const override;
  bool isActive() const override;
  void setTooltipProvider(std::shared_ptr<tooltip::BramelTooltipProvider> provider) override;
  void setImageScale(int scale) override;
  void notifyAllParametersChanged() override;
  void notifyParameterChanged(std::uint64_t index) override;
  void notifyKeyboardStateChanged() override;
  void notifyProgramSaved(const std::uint64_t* programIds, std::uint64_t count, const std::string& bankName) override;
  void notifyProgramDeleted(const std::uint64_t* programIds, std::uint64_t count, const std::string& bankName) override;
  void notifyProgramMoved(std::uint64_t from, std::uint64_t to, const std::string& bankName) override;

  void onAllParametersChanged(IPluginEditViewModel& model) override;
  void onParameterChanged(IPluginEditViewModel& model, std::uint64_t index) override;
  void onKeyboardStateChanged(IPluginEditViewModel& model) override;

 protected:
  IPluginEditViewModelOwner& wrappedModel() const { return *inner; }

 private:
  const std::shared_ptr<IPluginEditViewModelOwner> inner;
};

}  // namespace tesh::bramel
