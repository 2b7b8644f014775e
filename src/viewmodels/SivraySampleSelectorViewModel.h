// The sample selector for eight pads and ten categories.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "viewmodels/BXSampleSelectorViewModelBase.h"
#include "viewmodels/texts/PanelMacros.h"

namespace tesh::bramel::plugin::sivray {

class SivraySampleSelectorViewModel : public BXSampleSelectorViewModelBase {
 public:
  using BXSampleSelectorViewModelBase::BXSampleSelectorViewModelBase;

  std::int32_t getPartCount() const override;
  /// Empty past the ten categories that have names.
  std::string getCategoryName(std::int64_t category) const override;
  /// Selects a sample, after remembering the part's present one.
  void selectSample(std::uint64_t part, std::int64_t category, std::int64_t index) override;

  /// The id of the sample before the part's last choice; nothing if anything else has changed the part since.
  std::optional<std::int32_t> previousWave(std::uint64_t part) const;
  /// Undoes the part's last choice.
  void goBack(std::uint64_t part);

 protected:
  std::uint64_t getParameterIndex(std::uint64_t part) const override;

 private:
  struct Choice {
    std::int32_t before;
    std::int32_t after;
  };

  std::array<std::vector<Choice>, panel::kPads> choices;  ///< By pad, the latest choice last.
};

}  // namespace tesh::bramel::plugin::sivray
