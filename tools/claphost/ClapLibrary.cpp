// Finds and loads the library and looks up its factory.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "claphost/ClapLibrary.h"

#include <utility>

#include "claphost/ClapInstance.h"
#include "terminal/NamedFile.h"

namespace sivray::claphost {

using hosting::HostError;
using tesh::bramel::clap::kPluginFactory;

ClapLibrary::ClapLibrary(const std::string& file, std::vector<std::string> parameterNames)
    : names(std::move(parameterNames)) {
  libraryPath = namedFile(file).getFullPathName().toStdString();
  if (!library.open(juce::String::fromUTF8(libraryPath.c_str()))) {
    throw HostError("cannot load the plug-in '" + file + "'");
  }
  entryPoint = static_cast<const tesh::bramel::clap::Entry*>(library.getFunction("clap_entry"));
  if (entryPoint == nullptr || !entryPoint->init(libraryPath.c_str())) {
    throw HostError("'" + file + "' is no plug-in: it has no clap_entry that answers");
  }
  pluginFactory = static_cast<const tesh::bramel::clap::PluginFactory*>(entryPoint->getFactory(kPluginFactory));
  if (pluginFactory == nullptr || pluginFactory->getPluginCount(pluginFactory) != 1) {
    throw HostError("'" + file + "' has no plug-in");
  }
}

ClapLibrary::~ClapLibrary() {
  if (entryPoint != nullptr) {
    entryPoint->deinit();
  }
}

std::unique_ptr<hosting::HostedPlugin> ClapLibrary::makeInstance() const {
  return std::make_unique<ClapInstance>(*this, names);
}

}  // namespace sivray::claphost
