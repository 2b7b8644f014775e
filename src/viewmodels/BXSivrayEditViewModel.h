// The drum module's edit view model: the family's, with samples, and with key states that tell the kind of each pad's
// sound.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "viewmodels/BXPluginEditViewModelProxy.h"
#include "viewmodels/ISivrayEditViewModel.h"
#include "viewmodels/SivraySampleFinder.h"
#include "viewmodels/SivraySampleSelectorViewModel.h"

namespace tesh::bramel::plugin::sivray {

class BXSivrayEditViewModel : public BXPluginEditViewModelProxy, public virtual ISivrayEditViewModel {
 public:
  /// Sets the key states. `family` is not null.
  explicit BXSivrayEditViewModel(std::shared_ptr<IPluginEditViewModelOwner> family);

  std::shared_ptr<ISampleSelectorViewModel> getSampleSelectorViewModel() const override;
  std::shared_ptr<SivraySampleFinder> getSampleFinder() const override;
  std::string getSampleName(std::uint64_t part) const override;

  // Notifies the view first, then updates the key states where samples may have changed.
  void notifyAllParametersChanged() override;
  void notifyParameterChanged(std::uint64_t index) override;

 private:
  void updateKeyStates();

  std::shared_ptr<SivraySampleSelectorViewModel> sampleSelector;
  std::shared_ptr<SivraySampleFinder> sampleFinder;
};

}  // namespace tesh::bramel::plugin::sivray
