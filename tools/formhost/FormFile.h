// A VST 3 or LV2 bundle, loaded through JUCE as by a host that is built on it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hosting/HostedPlugin.h"

namespace sivray::formhost {

class FormFile final : public hosting::PluginFile {
 public:
  /// Loads the bundle. The calling thread becomes JUCE's message thread in this process until the last FormFile is
  /// destroyed, which also unloads the bundle. `parameterNames` are those of the VST 2 form, in its order. Throws
  /// HostError when the bundle holds no plug-in of that form.
  FormFile(hosting::Form form, const std::string& bundle, std::vector<std::string> parameterNames);
  ~FormFile() override;

  /// The instance runs at 44100 Hz, with blocks of up to kLongestBlock frames. It must be destroyed before this object.
  std::unique_ptr<hosting::HostedPlugin> makeInstance() const override;

  static constexpr int kLongestBlock = 16384;

 private:
  struct Loaded;
  std::unique_ptr<Loaded> loaded;
};

/// Whether the calling thread is JUCE's message thread in this process.
bool isMessageThread();

/// Runs the message loop for this time; on any other thread, or without a message thread, sleeps.
void rest(std::chrono::milliseconds time);

}  // namespace sivray::formhost
