// A CLAP library, loaded while this object exists.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#include <memory>
#include <string>
#include <vector>

#include "host/clap/ClapRecords.h"
#include "hosting/HostedPlugin.h"

namespace sivray::claphost {

class ClapLibrary final : public hosting::PluginFile {
 public:
  /// Loads the library. `parameterNames` are those of the VST 2 form, in its order. Throws HostError when it cannot be
  /// loaded or has no plug-in.
  ClapLibrary(const std::string& file, std::vector<std::string> parameterNames);
  ~ClapLibrary() override;

  std::unique_ptr<hosting::HostedPlugin> makeInstance() const override;

  const std::string& path() const { return libraryPath; }
  const tesh::bramel::clap::Entry& entry() const { return *entryPoint; }
  const tesh::bramel::clap::PluginFactory& factory() const { return *pluginFactory; }

 private:
  std::string libraryPath;
  std::vector<std::string> names;
  juce::DynamicLibrary library;
  const tesh::bramel::clap::Entry* entryPoint = nullptr;
  const tesh::bramel::clap::PluginFactory* pluginFactory = nullptr;
};

}  // namespace sivray::claphost
