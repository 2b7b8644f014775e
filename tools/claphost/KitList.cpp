// Plays the indexer that a preset provider is searched by.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "claphost/KitList.h"

#include "host/clap/ClapExtensions.h"

namespace sivray::claphost {
namespace {

using namespace tesh::bramel::clap;

bool begin(const MetadataReceiver* receiver, const char* name, const char* key) {
  static_cast<std::vector<ListedKit>*>(receiver->receiverData)->push_back({name, key});
  return true;
}

bool accept(const PresetIndexer*, const PresetFileType*) { return true; }
bool acceptLocation(const PresetIndexer*, const PresetLocation*) { return true; }
bool acceptSoundpack(const PresetIndexer*, const PresetSoundpack*) { return true; }
const void* noIndexerExtension(const PresetIndexer*, const char*) { return nullptr; }

}  // namespace

std::vector<ListedKit> findKits(const ClapLibrary& library) {
  const auto* const discovery =
      static_cast<const PresetDiscoveryFactory*>(library.entry().getFactory(kPresetDiscoveryFactory));
  if (discovery == nullptr || discovery->count(discovery) == 0) {
    return {};
  }
  const PresetIndexer indexer{
      {}, "Sivray Render", "", "", "", nullptr, &accept, &acceptLocation, &acceptSoundpack, &noIndexerExtension};
  const PresetProvider* const provider =
      discovery->create(discovery, &indexer, discovery->getDescriptor(discovery, 0)->id);
  if (provider == nullptr) {
    return {};
  }
  std::vector<ListedKit> kits;
  const MetadataReceiver receiver{&kits,
                                  [](const MetadataReceiver*, std::int32_t, const char*) {},
                                  &begin,
                                  [](const MetadataReceiver*, const UniversalPluginId*) {},
                                  [](const MetadataReceiver*, const char*) {},
                                  [](const MetadataReceiver*, std::uint32_t) {},
                                  [](const MetadataReceiver*, const char*) {},
                                  [](const MetadataReceiver*, const char*) {},
                                  [](const MetadataReceiver*, std::uint64_t, std::uint64_t) {},
                                  [](const MetadataReceiver*, const char*) {},
                                  [](const MetadataReceiver*, const char*, const char*) {}};
  if (provider->init(provider)) {
    provider->getMetadata(provider, LocationKind::plugin, nullptr, &receiver);
  }
  provider->destroy(provider);
  return kits;
}

}  // namespace sivray::claphost
