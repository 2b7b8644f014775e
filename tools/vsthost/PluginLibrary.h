// The plug-in's dynamic library, loaded while this object exists.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#include <memory>
#include <string>

#include "host/vst/VstRecords.h"
#include "hosting/HostedPlugin.h"

namespace sivray::vsthost {

using hosting::HostError;

class PluginLibrary final : public hosting::PluginFile {
 public:
  using Entry = tesh::bramel::vst::AEffect* (*)(tesh::bramel::vst::AudioMasterCallback);

  /// Throws HostError when the library cannot be loaded or has no entry.
  explicit PluginLibrary(const std::string& file);

  std::unique_ptr<hosting::HostedPlugin> makeInstance() const override;

  const std::string& path() const { return libraryPath; }
  Entry entry() const { return entryPoint; }

 private:
  std::string libraryPath;
  juce::DynamicLibrary library;
  Entry entryPoint = nullptr;
};

/// Returns the path of the library to load: `chosen` if given, else $SIVRAY_LIBRARY, else the first Sivray.so in the
/// folders of a build or an installation. Throws HostError when none exists.
std::string findLibrary(const std::string& chosen);

/// Returns the path of a form's bundle: `chosen` if given, else Sivray.vst3 or Sivray.lv2 (`form` is vst3 or lv2) in
/// the VST 2 library's folder, the one above or its folder forms. Throws HostError when none exists.
std::string findBundle(const std::string& libraryPath, const std::string& form, const std::string& chosen);

/// Sets BRAMEL_COMMON_FILES for this process, unless it is set, so that this process finds the content beside the
/// library as the library does.
void shareContentOf(const std::string& libraryPath);

}  // namespace sivray::vsthost
