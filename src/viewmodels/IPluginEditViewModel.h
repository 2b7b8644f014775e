// Everything that a view knows of an instrument: its parameters as a list of normalised values, its smaller view
// models, its fonts and images.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "viewmodels/IPluginEditViewModelListener.h"
#include "viewmodels/IPluginKeyboardViewModel.h"
#include "viewmodels/IPluginSettingsViewModel.h"
#include "viewmodels/IPluginTooltipViewModel.h"
#include "viewmodels/IProgramListViewModel.h"
#include "viewmodels/IScaleSelectorViewModel.h"
#include "viewmodels/resources/IBramelFontProvider.h"
#include "viewmodels/resources/IBramelImageProvider.h"
#include "viewmodels/texts/ParameterSteps.h"

namespace tesh::bramel {

/// Message thread only. An index counts all parameters, hidden ones included. For an index out of range, reads return 0
/// or an empty string, and writes change nothing. Setters never notify the listener.
class IPluginEditViewModel : public virtual IBramelFontProvider, public virtual IBramelImageProvider {
 public:
  virtual std::weak_ptr<IPluginEditViewModelListener> getListener() const = 0;
  virtual void setListener(std::weak_ptr<IPluginEditViewModelListener> listener) = 0;

  virtual std::shared_ptr<IParameterQuantizer> getParameterQuantizer() const = 0;
  virtual std::shared_ptr<IProgramListViewModel> getProgramListViewModel() const = 0;
  virtual std::shared_ptr<IPluginKeyboardViewModel> getKeyboardViewModel() const = 0;
  virtual std::shared_ptr<IScaleSelectorViewModel> getScaleSelectorViewModel() const = 0;
  /// Null until a tooltip provider is set.
  virtual std::shared_ptr<IPluginTooltipViewModel> getTooltipViewModel() const = 0;
  virtual std::shared_ptr<IPluginSettingsViewModel> getSettingsViewModel() const = 0;

  /// 1 for an editor whose pads have captions.
  virtual std::int32_t getEditorKind() const = 0;
  /// "Error" for an instrument without an engine.
  virtual std::string getInstrumentName() const = 0;
  virtual std::string getVersion() const = 0;

  /// Counted from 1.
  virtual std::uint32_t getProgramNumber() const = 0;
  virtual std::string getProgramName() const = 0;
  // Select the neighbour in the current list; at the ends they do nothing.
  virtual void selectPreviousProgram() = 0;
  virtual void selectNextProgram() = 0;

  virtual std::int64_t getParameterCount() const = 0;
  virtual std::string getParameterName(std::uint64_t index) const = 0;
  /// The number of states of a stepped parameter; 0 for a continuous one.
  virtual std::int64_t getParameterStepCount(std::uint64_t index) const = 0;
  virtual float getParameterDefault(std::uint64_t index) const = 0;
  /// The value that was written last, also while no audio runs. Normalised, 0 to 1.
  virtual float getParameterValue(std::uint64_t index) const = 0;
  /// As above, for a parameter that holds an integer.
  virtual std::uint64_t getParameterIntegerValue(std::uint64_t index) const = 0;
  /// Tells the tooltips, then the instrument. A parameter that the host sees is set through the host, so that it can
  /// record the change.
  virtual void setParameterValue(std::uint64_t index, float value) = 0;
  /// Never goes through the host.
  virtual void setParameterIntegerValue(std::uint64_t index, std::uint64_t value) = 0;
  // The host records all writes between these two as one edit.
  virtual void beginParameterGesture(std::uint64_t index) = 0;
  virtual void endParameterGesture(std::uint64_t index) = 0;
  /// The engine's current value, not the cached one. `index` is the engine's own parameter id; -1 for an unknown id.
  virtual float getEngineParameterValue(std::uint64_t index) const = 0;

  // A code per note for the kind of sound that it plays; 9 at first. The host is told of every write. There are none
  // above note 127.
  virtual void setAllKeyStates(std::uint32_t state) = 0;
  virtual std::uint32_t getKeyState(std::uint8_t note) const = 0;
  virtual void setKeyState(std::uint8_t note, std::uint32_t state) = 0;
};

}  // namespace tesh::bramel
