// The drum module's eight parts and ten categories.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "viewmodels/BXSampleSelectorViewModelBase.h"

namespace tesh::bramel::plugin::sivray {

class SivraySampleSelectorViewModel : public BXSampleSelectorViewModelBase {
 public:
  using BXSampleSelectorViewModelBase::BXSampleSelectorViewModelBase;

  std::int32_t getPartCount() const override;
  /// The empty string past the ten that have names.
  std::string getCategoryName(std::int64_t category) const override;

 protected:
  std::uint64_t getParameterIndex(std::uint64_t part) const override;
};

}  // namespace tesh::bramel::plugin::sivray
