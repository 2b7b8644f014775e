// The plug-in's dynamic library, loaded for as long as this object lives.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#include <stdexcept>
#include <string>

#include "host/vst/VstRecords.h"

namespace sivray::vsthost {

/// What a host cannot go on without. The text names the file.
class HostError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class PluginLibrary {
 public:
  using Entry = tesh::bramel::vst::AEffect* (*)(tesh::bramel::vst::AudioMasterCallback);

  /// Throws HostError when the file cannot be loaded or has no entry.
  explicit PluginLibrary(const std::string& file);

  const std::string& path() const { return libraryPath; }
  Entry entry() const { return entryPoint; }

  /// The address of another export, or null.
  void* symbol(const char* name) { return library.getFunction(name); }

 private:
  std::string libraryPath;
  juce::DynamicLibrary library;
  Entry entryPoint = nullptr;
};

/// The library to load: `chosen` where it is given, else $SIVRAY_LIBRARY, else Sivray/Sivray.so beside this program's
/// folder or in it. Throws HostError when there is none.
std::string findLibrary(const std::string& chosen);

/// Lets this process find the content that stands beside the library, as the library itself does.
void shareContentOf(const std::string& libraryPath);

}  // namespace sivray::vsthost
