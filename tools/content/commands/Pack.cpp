// The command that packs a folder of sound files into a whole folder of content.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <iostream>
#include <iterator>
#include <set>

#include "content/Files.h"
#include "content/commands/CommandLine.h"
#include "content/commands/Commands.h"
#include "content/library/LibraryWriter.h"
#include "content/pack/ContentTree.h"
#include "content/pack/KitMaker.h"
#include "content/pack/Packer.h"
#include "terminal/Printable.h"
#include "terminal/ProgressBar.h"

namespace sivray::content {
namespace {

/// The share of the progress bar for reading the sound files; the rest is for measuring the kits' levels.
constexpr double kReadingShare = 0.7;

/// The room that the waves of `tree` leave free.
PackRoom roomBeside(const ContentTree& tree) {
  PackRoom room;
  for (const Wave& wave : tree.waves) {
    room.names.reserve(wave.name);
    room.bytes += sampleBytesOf(wave);
  }
  return room;
}

/// Appends the kits that the packed waves make, each with a file of its own name.
void addKits(ContentTree& tree, const std::vector<PackedWave>& packed, const std::string& folder) {
  std::set<std::string> names;
  std::ranges::transform(tree.kits, std::inserter(names, names.end()),
                         [](const factory::BankKit& entry) { return entry.kit.name; });
  for (factory::Kit& kit : makeKits(packed, pathOf(folder), std::move(names))) {
    std::string file = "own " + kit.name + ".kit";
    std::ranges::replace(file, '/', '-');
    std::ranges::replace(file, '#', '-');
    tree.kits.push_back({file, std::move(kit)});
  }
}

}  // namespace

void runPack(const juce::ArgumentList& list) {
  CommandLine line(list, kPackUsage);
  const bool isWithFactory = line.takeFlag("--with-factory");
  const std::string target = line.takeRequired("-o");
  const std::string folder = textOf(pathOf(line.takeRest(1).front() + "/").lexically_normal().parent_path());

  ContentTree tree;
  if (isWithFactory) {
    tree = readInstalledTree();
  }
  const std::size_t factoryKits = tree.kits.size();
  ProgressBar bar(false);
  const PackReport report{[&bar](const std::string& words) {
                            bar.clear();
                            std::cout << printable(words) << std::endl;
                          },
                          [&bar](double done) { bar.show(kReadingShare * done); }};
  // Files that an earlier run wrote are not the user's sounds.
  const PackResult result = packFolder(folder, roomBeside(tree), report, target + "/Tesh");
  if (result.waves.empty()) {
    bar.clear();
    fail(folder + ": there is no sound file in it that could be used", kFailed);
  }
  addKits(tree, result.waves, folder);
  std::ranges::transform(result.waves, std::back_inserter(tree.waves), &PackedWave::wave);
  const std::size_t waves = tree.waves.size();
  const std::size_t kits = tree.kits.size() - factoryKits;
  writeTree(target, std::move(tree), factoryKits,
            [&bar](double done) { bar.show(kReadingShare + (1.0 - kReadingShare) * done); });
  bar.clear();

  std::cout << "\nPacked " << counted(result.waves.size(), "wave", "waves") << " and " << counted(kits, "kit", "kits")
            << " into " << printable(target);
  if (result.unusable > 0) {
    std::cout << "; " << counted(result.unusable, "file", "files") << " could not be used";
  }
  std::cout << "\nA song keeps a wave as its number among all: songs made with these " << waves
            << " waves play with this folder alone, and older ones with the content that they were made with."
            << std::endl;
}

}  // namespace sivray::content
