// Lists and names kits.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/clap/ClapKits.h"

#include <exception>
#include <memory>
#include <string>
#include <string_view>

#include "core/Text.h"
#include "host/clap/ClapPlugin.h"
#include "host/shell/Construction.h"
#include "host/shell/ProgramBanks.h"
#include "platform/Files.h"
#include "storage/paths/Paths.h"

namespace tesh::bramel::clap {
namespace {

constexpr UniversalPluginId kUniversalId{"clap", kPluginId};
constexpr PresetProviderDescriptor kProvider{{}, "tesh.sivray.kits", "Sivray kits", "TESH"};

/// The file of the user's kits as the system names it.
std::string userFile() { return platform::NativePath(pathFor(kBramelPath_UserProgram, vst::kInstrumentName)).shown(); }

/// One search of a host.
struct Search {
  PresetProvider record{};
  const PresetIndexer* indexer = nullptr;
};

Search& searchOf(const PresetProvider* provider) { return *static_cast<Search*>(provider->providerData); }

bool initProvider(const PresetProvider* provider) {
  const PresetIndexer& indexer = *searchOf(provider).indexer;
  const PresetLocation factory{PresetFlag::isFactoryContent, "Factory kits", LocationKind::plugin, nullptr};
  if (!indexer.declareLocation(&indexer, &factory)) {
    return false;
  }
  const std::string path = userFile();
  if (fileExists(path)) {
    const PresetFileType type{"Kits", "The user's kits", "prog"};
    const PresetLocation user{PresetFlag::isUserContent, "User kits", LocationKind::file, path.c_str()};
    return indexer.declareFileType(&indexer, &type) && indexer.declareLocation(&indexer, &user);
  }
  return true;
}

void destroyProvider(const PresetProvider* provider) { delete &searchOf(provider); }

/// Reports the programs of a bank until the host wants no more.
void tellKits(const vimo::ProgramDatabase& programs, std::uint32_t flags, const MetadataReceiver& receiver) {
  for (std::size_t number = 0; number < programs.programCount(); ++number) {
    if (!receiver.beginPreset(&receiver, programs.name(number).c_str(), std::to_string(number).c_str())) {
      return;
    }
    receiver.addPluginId(&receiver, &kUniversalId);
    receiver.setFlags(&receiver, flags);
    if (const std::string style = programs.comment(number); !style.empty()) {
      receiver.addFeature(&receiver, style.c_str());
    }
  }
}

bool tellMetadata(const PresetProvider* /*provider*/, std::uint32_t kind, const char* location,
                  const MetadataReceiver* receiver) {
  const auto place = kitPlaceOf(kind, location, "0");
  if (receiver == nullptr || !place) {
    return false;
  }
  try {
    const auto processor = vst::makeProcessor();
    const bool isFactory = place->bank == vst::kFactoryBank;
    const auto* const programs = processor->controller().programs().database(vst::bankOf(place->bank));
    tellKits(*programs, isFactory ? PresetFlag::isFactoryContent : PresetFlag::isUserContent, *receiver);
    return true;
  } catch (const std::exception& fault) {
    receiver->onError(receiver, 0, fault.what());
    return false;
  }
}

const void* noExtension(const PresetProvider* /*provider*/, const char* /*id*/) { return nullptr; }

std::uint32_t providerCount(const PresetDiscoveryFactory* /*factory*/) { return 1; }

const PresetProviderDescriptor* providerAt(const PresetDiscoveryFactory* /*factory*/, std::uint32_t index) {
  return index == 0 ? &kProvider : nullptr;
}

const PresetProvider* createProvider(const PresetDiscoveryFactory* /*factory*/, const PresetIndexer* indexer,
                                     const char* id) {
  if (indexer == nullptr || id == nullptr || std::string_view(id) != kProvider.id) {
    return nullptr;
  }
  auto* const search = new Search{{}, indexer};
  search->record = {&kProvider, search, &initProvider, &destroyProvider, &tellMetadata, &noExtension};
  return &search->record;
}

}  // namespace

std::optional<KitPlace> kitPlaceOf(std::uint32_t locationKind, const char* location, const char* loadKey) {
  const auto program = cofu::core::readNumber<std::uint64_t>(loadKey != nullptr ? loadKey : "");
  if (!program) {
    return std::nullopt;
  }
  if (locationKind == LocationKind::plugin) {
    return KitPlace{vst::kFactoryBank, *program};
  }
  if (locationKind == LocationKind::file && location != nullptr && location == userFile()) {
    return KitPlace{vst::kUserBank, *program};
  }
  return std::nullopt;
}

void tellKit(const ClapHost& host, vst::BramelInstrument& instrument) {
  const std::string key = std::to_string(instrument.currentProgram());
  const std::uint64_t bank = instrument.currentBank();
  if (bank == vst::kFactoryBank) {
    host.presetLoaded(LocationKind::plugin, nullptr, key.c_str());
  } else if (bank == vst::kUserBank) {
    host.presetLoaded(LocationKind::file, userFile().c_str(), key.c_str());
  }
}

const PresetDiscoveryFactory& presetDiscoveryFactory() {
  static constexpr PresetDiscoveryFactory kFactory{&providerCount, &providerAt, &createProvider};
  return kFactory;
}

}  // namespace tesh::bramel::clap
