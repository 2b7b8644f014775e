// The instrument, as the settings page sees it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <utility>

#include "viewmodels/IPluginSettingsViewModel.h"

namespace tesh::bramel {

class BXInstrumentSettingsViewModel : public IPluginSettingsViewModel {
 public:
  explicit BXInstrumentSettingsViewModel(std::string instrumentName) : name(std::move(instrumentName)) {}

  std::string getInstrumentName() const override { return name; }
  bool isEnabled() const override { return true; }

 private:
  const std::string name;
};

}  // namespace tesh::bramel
