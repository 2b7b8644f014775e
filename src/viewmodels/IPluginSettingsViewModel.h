// The instrument's data on the settings page.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace tesh::bramel {

/// Message thread only.
class IPluginSettingsViewModel {
 public:
  virtual ~IPluginSettingsViewModel() = default;
  virtual std::string getInstrumentName() const = 0;
  virtual bool isEnabled() const = 0;
};

}  // namespace tesh::bramel
