// Gives tooltips access to an instrument's texts.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "viewmodels/IPluginTooltipViewModel.h"
#include "viewmodels/texts/BramelTooltipProvider.h"

namespace tesh::bramel {

class BXPluginTooltipViewModel : public IPluginTooltipViewModel {
 public:
  /// `texts` is not null.
  explicit BXPluginTooltipViewModel(std::shared_ptr<tooltip::BramelTooltipProvider> texts)
      : provider(std::move(texts)) {}

  std::string getName(std::uint64_t index) const override { return provider->getParameterName(index); }
  std::string getText(std::uint64_t index) const override { return provider->getParameterText(index); }
  void onValueChanged(std::uint64_t index, float value) override { provider->setValue(index, value); }

 private:
  const std::shared_ptr<tooltip::BramelTooltipProvider> provider;
};

}  // namespace tesh::bramel
