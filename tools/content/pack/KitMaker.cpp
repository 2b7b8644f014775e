// Decides which folders make a kit, and assigns their waves to pads.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/pack/KitMaker.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

#include "content/Files.h"
#include "content/pack/WaveNames.h"

namespace sivray::content {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLongestKitName = 24;

enum Pad : std::size_t { kKickPad, kStickPad, kSnarePad, kClapPad, kCymbalPad, kTomPad, kClosedPad, kOpenPad };

/// For each pad: the pad whose wave it uses if it has none.
constexpr std::array<std::size_t, factory::kPads> kStandIns{kTomPad,  kSnarePad, kClapPad,  kSnarePad,
                                                            kOpenPad, kKickPad,  kStickPad, kClosedPad};

/// Returns the sum of the squares over the loudest tenth of a second.
double loudestSquareOf(const Wave& wave) {
  const auto window = static_cast<std::size_t>(wave.sampleRate / 10);
  double sum = 0.0;
  double most = 0.0;
  for (std::size_t i = 0; i < wave.left.size(); ++i) {
    sum += static_cast<double>(wave.left[i]) * wave.left[i];
    if (i >= window) {
      sum -= static_cast<double>(wave.left[i - window]) * wave.left[i - window];
    }
    most = std::max(most, sum);
  }
  return most;
}

using Waves = std::vector<const Wave*>;

/// Returns the loudest wave of a category, which in a drum of several layers is the hardest hit; null if there is none.
const Wave* loudestOf(const Waves& waves, int category) {
  const Wave* best = nullptr;
  double most = -1.0;
  for (const Wave* wave : waves) {
    if (wave->category == category) {
      const double loudness = loudestSquareOf(*wave);
      if (loudness > most) {
        best = wave;
        most = loudness;
      }
    }
  }
  return best;
}

using PadWaves = std::array<const Wave*, factory::kPads>;

PadWaves rolesOf(const Waves& waves) {
  PadWaves pads{};
  for (std::size_t pad = 0; pad < factory::kPads; ++pad) {
    pads[pad] = loudestOf(waves, kPadCategories[pad]);
  }
  return pads;
}

bool isEnough(const PadWaves& pads) {
  constexpr std::ptrdiff_t kPadCategoriesOfAKit = 4;
  return pads[kKickPad] != nullptr && (pads[kSnarePad] != nullptr || pads[kClapPad] != nullptr) &&
         std::ranges::count_if(pads, [](const Wave* wave) { return wave != nullptr; }) >= kPadCategoriesOfAKit;
}

/// Gives each pad without a wave an unused one, else the wave of its stand-in.
void fill(PadWaves& pads, const Waves& waves) {
  for (auto& pad : pads) {
    const auto spare =
        std::ranges::find_if(waves, [&](const Wave* wave) { return std::ranges::find(pads, wave) == pads.end(); });
    if (pad == nullptr && spare != waves.end()) {
      pad = *spare;
    }
  }
  for (std::size_t pad = 0; pad < factory::kPads; ++pad) {
    std::size_t giver = pad;
    for (std::size_t step = 0; pads[giver] == nullptr && step < factory::kPads; ++step) {
      giver = kStandIns[giver];
    }
    pads[pad] = pads[giver] != nullptr ? pads[giver] : waves.front();
  }
}

std::string nameFor(const fs::path& folder, std::set<std::string>& taken) {
  std::string name = textOf(folder.filename());
  std::erase_if(name, [](char letter) { return letter == '"' || static_cast<unsigned char>(letter) < 0x20; });
  std::string result = nameWithin(name, kLongestKitName);
  for (int number = 2; result.empty() || taken.contains(result); ++number) {
    const std::string suffix = std::string(" ").append(std::to_string(number));
    result = nameWithin(name.empty() ? "Kit" : name, kLongestKitName - suffix.size()) + suffix;
  }
  taken.insert(result);
  return result;
}

factory::Kit kitOf(const std::string& name, const PadWaves& pads) {
  factory::Kit kit;
  kit.name = name;
  kit.comment = "Own sounds";
  kit.effect = "Room Reverb";
  for (std::size_t pad = 0; pad < factory::kPads; ++pad) {
    kit.pads[pad].wave = pads[pad]->name;
  }
  const auto isHat = [&](std::size_t pad) { return pads[pad]->category == kPadCategories[pad]; };
  if (isHat(kClosedPad) && isHat(kOpenPad)) {
    kit.pads[kClosedPad].group = factory::ExclusiveGroup::a;
    kit.pads[kOpenPad].group = factory::ExclusiveGroup::a;
  }
  return kit;
}

}  // namespace

std::vector<factory::Kit> makeKits(const std::vector<PackedWave>& waves, const fs::path& root,
                                   std::set<std::string> taken) {
  std::map<fs::path, Waves> folders;
  for (const PackedWave& packed : waves) {
    folders[packed.folder].push_back(&packed.wave);
  }
  folders[root];
  std::map<fs::path, PadWaves> found;
  // Works from the deepest folder up: the waves of a folder that makes no kit pass to the folder above.
  while (!folders.empty()) {
    const auto deepest = std::ranges::max_element(
        folders, {}, [](const auto& entry) { return std::distance(entry.first.begin(), entry.first.end()); });
    auto node = folders.extract(deepest);
    const fs::path& folder = node.key();
    PadWaves pads = rolesOf(node.mapped());
    const bool isRoot = folder == root;
    if (isEnough(pads) || (isRoot && found.empty())) {
      fill(pads, node.mapped());
      found.emplace(folder, pads);
    } else if (!isRoot) {
      Waves& above = folders[folder.parent_path()];
      above.insert(above.end(), node.mapped().begin(), node.mapped().end());
    }
  }
  std::vector<factory::Kit> kits;
  kits.reserve(found.size());
  for (const auto& [folder, pads] : found) {
    kits.push_back(kitOf(nameFor(folder, taken), pads));
  }
  return kits;
}

std::string textOf(const factory::Kit& kit) {
  const factory::KitPad fresh;
  std::string text = "name    \"" + kit.name + "\"\nstyle   \"" + kit.comment + "\"\neffect  \"" + kit.effect +
                     "\" edit1=" + std::to_string(kit.edit1) + " edit2=" + std::to_string(kit.edit2) + "\nmaster  " +
                     std::to_string(kit.master) + "\n\n";
  for (std::size_t pad = 0; pad < factory::kPads; ++pad) {
    const factory::KitPad& own = kit.pads[pad];
    text +=
        "pad " + std::to_string(factory::padNote(pad)) + "  \"" + own.wave + "\" level=" + std::to_string(own.level);
    text += own.group != fresh.group ? " group=A" : "";
    text += "\n";
  }
  return text;
}

}  // namespace sivray::content
