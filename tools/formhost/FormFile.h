// A VST 3 or LV2 bundle, loaded by JUCE as hosts built on it load one.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hosting/HostedPlugin.h"

namespace sivray::formhost {

class FormFile final : public hosting::PluginFile {
 public:
  /// Loads the bundle. The thread becomes JUCE's message thread in this process until the last FormFile ends, which
  /// also takes the bundle's code out of the process. `parameterNames` are those of the VST 2 form, in its order.
  /// Throws HostError when there is no plug-in of that form.
  FormFile(hosting::Form form, const std::string& bundle, std::vector<std::string> parameterNames);
  ~FormFile() override;

  /// The instance runs at 44100 Hz, for blocks of up to kLongestBlock frames. It is gone before this object.
  std::unique_ptr<hosting::HostedPlugin> makeInstance() const override;

  static constexpr int kLongestBlock = 16384;

 private:
  struct Loaded;
  std::unique_ptr<Loaded> loaded;
};

/// Whether JUCE's message thread in this process is the calling one.
bool isMessageThread();

/// Lets the message thread do its work for a while; sleeps on any other thread, and where there is none.
void rest(std::chrono::milliseconds time);

}  // namespace sivray::formhost
