// The interface of an edit view model for the instrument and the editor's window.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/shell/BramelInstrument.h"
#include "viewmodels/IPluginEditViewModel.h"
#include "viewmodels/IPluginKeyboardViewModelOwner.h"
#include "viewmodels/IProgramListViewModelOwner.h"
#include "viewmodels/texts/BramelTooltipProvider.h"

namespace tesh::bramel {

/// Message thread only. Drops notifications if there is no view.
class IPluginEditViewModelOwner : public virtual IPluginEditViewModel {
 public:
  using Processor = vst::BramelInstrument::Processor;

  virtual std::shared_ptr<IProgramListViewModelOwner> getProgramListViewModelOwner() const = 0;
  virtual void setProgramListViewModel(std::shared_ptr<IProgramListViewModel> model) = 0;
  virtual void setParameterQuantizer(std::shared_ptr<IParameterQuantizer> quantizer) = 0;
  /// The macro layer, which leads to the engine; null for an instrument without one. It lives as long as the
  /// instrument.
  virtual Processor* getMacroController() const = 0;
  virtual std::shared_ptr<IPluginKeyboardViewModelOwner> getKeyboardViewModelOwner() const = 0;
  /// Whether the host is playing the instrument.
  virtual bool isActive() const = 0;
  /// Makes a new tooltip view model for `provider`.
  virtual void setTooltipProvider(std::shared_ptr<tooltip::BramelTooltipProvider> provider) = 0;
  /// The set that `getImage` uses from now on: 1 is at the panel's own size, 2 at twice that size. Other numbers are
  /// limited to 1 or 2. Must be called before a view asks for images.
  virtual void setImageScale(int scale) = 0;

  virtual void notifyAllParametersChanged() = 0;
  virtual void notifyParameterChanged(std::uint64_t index) = 0;
  virtual void notifyKeyboardStateChanged() = 0;
  // `programIds` holds `count` program numbers.
  virtual void notifyProgramSaved(const std::uint64_t* programIds, std::uint64_t count,
                                  const std::string& bankName) = 0;
  virtual void notifyProgramDeleted(const std::uint64_t* programIds, std::uint64_t count,
                                    const std::string& bankName) = 0;
  virtual void notifyProgramMoved(std::uint64_t from, std::uint64_t to, const std::string& bankName) = 0;
};

}  // namespace tesh::bramel
