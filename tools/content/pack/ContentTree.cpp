// Reads and writes folders of content.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/pack/ContentTree.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "content/Files.h"
#include "content/factory/MacroFiles.h"
#include "content/levels/Balance.h"
#include "content/library/LibraryReader.h"
#include "content/library/LibraryWriter.h"
#include "content/measure/Similar.h"
#include "content/pack/KitMaker.h"
#include "storage/paths/Paths.h"

namespace sivray::content {
namespace {

namespace fs = std::filesystem;

constexpr const char* kWaves = "/SivrayPCM";
constexpr const char* kKits = "/SivrayKits";
constexpr const char* kManual = "/SivrayManual";

std::string installedResources() {
  return systemPathOf(tesh::bramel::directoryFor(tesh::bramel::kBramelDirectory_Resource));
}

void writeMacros(const std::string& folder, const ContentTree& tree) {
  std::vector<std::string> names;
  std::ranges::transform(tree.waves, std::back_inserter(names), &Wave::name);
  factory::writeMacroFiles(folder, factory::makeFactoryBank(tree.kits, names));
}

void writeKits(const std::string& folder, const std::vector<factory::BankKit>& kits) {
  std::string list = "# The kits in the order of the bank, a kit a line.\n\n";
  for (const auto& [file, kit] : kits) {
    const std::string name = fileNameOf(file);
    list.append(name, 0, name.find_last_of('.')).append("\n");
    writeText(std::string(folder).append("/").append(name), fs::exists(pathOf(file)) ? readText(file) : textOf(kit));
  }
  writeText(folder + "/bank.txt", list);
}

void balance(std::vector<factory::BankKit>& kits, std::size_t firstNew, const std::function<void(double)>& progress) {
  KitMeter meter;
  for (std::size_t program = firstNew; program < kits.size(); ++program) {
    progress(static_cast<double>(program - firstNew) / static_cast<double>(kits.size() - firstNew));
    meter.select(program);
    factory::Kit& kit = kits[program].kit;
    const auto levels = balancedLevels(meter, kit);
    for (std::size_t pad = 0; pad < factory::kPads; ++pad) {
      kit.pads[pad].level = levels[pad];
    }
  }
}

}  // namespace

ContentTree readInstalledTree() {
  const std::string resources = installedResources();
  if (!fs::exists(pathOf(resources + kWaves))) {
    throw std::runtime_error("no content is installed: set BRAMEL_COMMON_FILES to the folder that holds Tesh/Bramel");
  }
  return {readLibrary(resources + kWaves), factory::readBank(resources + kKits)};
}

void writeTree(const std::string& target, ContentTree tree, std::size_t firstNew,
               const std::function<void(double)>& progress) {
  const std::string resources = target + "/Tesh/Bramel/Resource";
  const std::string macros = target + "/Tesh/Bramel/Macro/Sivray";
  const std::string manual = installedResources() + kManual;
  std::error_code error;
  if (fs::exists(pathOf(manual), error)) {
    fs::create_directories(pathOf(resources), error);
    fs::copy(pathOf(manual), pathOf(resources + kManual),
             fs::copy_options::recursive | fs::copy_options::overwrite_existing, error);
  }
  writeLibrary(resources + kWaves, tree.waves);
  writeSimilar(resources + kWaves, tree.waves);
  writeMacros(macros, tree);
  // The kit meter plays the installed content; this makes it play the new one.
  ::setenv("BRAMEL_COMMON_FILES", target.c_str(), 1);
  balance(tree.kits, firstNew, progress);
  writeMacros(macros, tree);
  writeKits(resources + kKits, tree.kits);
}

}  // namespace sivray::content
