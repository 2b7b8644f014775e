// The edit view model of every instrument of the family: the shell's parameters, the smaller view models, and the fonts
// and images of the library.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "viewmodels/BXInstrumentKeyboardViewModel.h"
#include "viewmodels/IPluginEditViewModelOwner.h"
#include "viewmodels/resources/ResourceStore.h"

namespace tesh::bramel {

class BXInstrumentEditViewModel : public virtual IPluginEditViewModelOwner {
 public:
  /// Fonts and images. One of a process: it lives as long as an instrument that has had a view model, so that an editor
  /// that opens again loads nothing anew.
  using SharedImpl = ResourceStore;
  /// The name under which an instrument keeps its shared pointer to it.
  static constexpr const char* kSharedImplKey = "BXInstrumentEditViewModel::SharedImpl";

  /// `lookup` serves the store where this model is the first of the process.
  explicit BXInstrumentEditViewModel(std::shared_ptr<vst::BramelInstrument> shell,
                                     ResourceStore::Lookup lookup = ResourceStore::embedded());
  ~BXInstrumentEditViewModel() override;
  BXInstrumentEditViewModel(const BXInstrumentEditViewModel&) = delete;
  BXInstrumentEditViewModel& operator=(const BXInstrumentEditViewModel&) = delete;

  /// Loads a face of the library for `getFont`; one that does not exist is ignored.
  void addFont(const std::string& name);

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

 protected:
  // How the three notifications reach the listener.
  virtual void raiseAllParametersChanged();
  virtual void raiseParameterChanged(std::uint64_t index);
  virtual void raiseKeyboardStateChanged();

 private:
  template <typename Event, typename... Values>
  void tellListener(Event event, Values... values);

  std::shared_ptr<vst::BramelInstrument> instrument;
  std::weak_ptr<IPluginEditViewModelListener> listener;
  std::shared_ptr<IParameterQuantizer> parameterQuantizer;
  std::shared_ptr<IPluginTooltipViewModel> tooltipViewModel;  ///< May be null.
  std::shared_ptr<IScaleSelectorViewModel> scaleSelectorViewModel;
  std::shared_ptr<BXInstrumentKeyboardViewModel> keyboardViewModel;
  std::shared_ptr<IProgramListViewModelOwner> programListViewModelOwner;
  std::shared_ptr<IProgramListViewModel> programListViewModel;  ///< The owner's other side, unless it was replaced.
  std::shared_ptr<IPluginSettingsViewModel> settingsViewModel;
  std::shared_ptr<SharedImpl> sharedImpl;
  int imageScale = 1;
};

}  // namespace tesh::bramel
