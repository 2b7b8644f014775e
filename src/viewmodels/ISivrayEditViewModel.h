// The drum module's additions to the common edit view model: samples.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "viewmodels/IPluginEditViewModel.h"
#include "viewmodels/ISampleSelectorViewModel.h"
#include "viewmodels/SivraySampleFinder.h"

namespace tesh::bramel::plugin::sivray {

/// Message thread only.
class ISivrayEditViewModel : public virtual IPluginEditViewModel {
 public:
  virtual std::shared_ptr<ISampleSelectorViewModel> getSampleSelectorViewModel() const = 0;
  /// Finds samples by similarity.
  virtual std::shared_ptr<SivraySampleFinder> getSampleFinder() const = 0;
  /// The name of the sample of a pad ("part", 0 to 7).
  virtual std::string getSampleName(std::uint64_t part) const = 0;
};

}  // namespace tesh::bramel::plugin::sivray
