// Notified when the settings page wants to close.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tesh::bramel {

class BWPluginSettingsView;

class BWPluginSettingsViewListener {
 public:
  virtual ~BWPluginSettingsViewListener() = default;
  /// The listener may delete `view`.
  virtual void settingsViewClosed(BWPluginSettingsView& view) = 0;
};

}  // namespace tesh::bramel
