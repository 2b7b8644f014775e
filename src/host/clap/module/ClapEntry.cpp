// The record that a CLAP host finds in the library.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <exception>
#include <string_view>

#include "host/clap/ClapKits.h"
#include "host/clap/ClapPlugin.h"
#include "platform/Export.h"

namespace tesh::bramel::clap {
namespace {

std::uint32_t pluginCount(const PluginFactory* /*factory*/) { return 1; }

const Descriptor* descriptorAt(const PluginFactory* /*factory*/, std::uint32_t index) {
  return index == 0 ? &pluginDescriptor() : nullptr;
}

const Plugin* createPlugin(const PluginFactory* /*factory*/, const Host* host, const char* id) {
  if (host == nullptr || host->version.major < 1 || id == nullptr || std::string_view(id) != kPluginId) {
    return nullptr;
  }
  try {
    return ClapPlugin::make(host);
  } catch (const std::exception&) {
    return nullptr;
  }
}

constexpr PluginFactory kFactory{&pluginCount, &descriptorAt, &createPlugin};

bool initLibrary(const char* /*path*/) { return true; }
void deinitLibrary() {}

const void* factoryOf(const char* id) {
  const std::string_view wanted(id != nullptr ? id : "");
  if (wanted == kPluginFactory) {
    return &kFactory;
  }
  const bool isDiscovery = wanted == kPresetDiscoveryFactory || wanted == kPresetDiscoveryFactoryDraft;
  return isDiscovery ? &presetDiscoveryFactory() : nullptr;
}

}  // namespace
}  // namespace tesh::bramel::clap

extern "C" SIVRAY_EXPORT const tesh::bramel::clap::Entry clap_entry{
    {}, &tesh::bramel::clap::initLibrary, &tesh::bramel::clap::deinitLibrary, &tesh::bramel::clap::factoryOf};
