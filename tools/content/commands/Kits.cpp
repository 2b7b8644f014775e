// The command that lists the copies of the user's kits, and brings one back.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#include "content/Files.h"
#include "content/commands/CommandLine.h"
#include "content/commands/Commands.h"
#include "core/Text.h"
#include "host/shell/Construction.h"
#include "platform/FolderLock.h"
#include "storage/paths/Paths.h"
#include "storage/programs/ProgramDatabase.h"
#include "storage/programs/ProgramFileCopies.h"
#include "storage/programs/UserProgramFile.h"
#include "terminal/Printable.h"

namespace sivray::content {
namespace {

using tesh::vimo::ProgramFileCopy;

/// Programs are read without an instrument here.
class NoInstrument final : public tesh::vimo::MacroProgramDatabaseDelegate {
 public:
  std::uint64_t macroCount() const override { return 0; }
  float macroValue(std::uint64_t) const override { return 0.0F; }
  std::uint64_t macroObject(std::uint64_t) const override { return 0; }
  const std::string& programName() const override { return nothing; }
  const std::string& programComment() const override { return nothing; }
  std::uint32_t programTime() const override { return 0; }

 private:
  std::string nothing;
};

/// "3 kits: Oak, Oak soft, Night", with the names of the first few.
std::string contentsOf(const std::string& path) {
  constexpr std::size_t kNamesShown = 5;
  const std::vector<std::uint8_t> bytes = tesh::bramel::readFile(path);
  const auto file = tesh::vimo::readUserProgramFile(bytes);
  if (!file) {
    return "no kits";
  }
  const NoInstrument nobody;
  tesh::vimo::ProgramDatabase kits(nobody);
  kits.load(file->image, file->macroCount, tesh::vimo::ProgramDatabase::Mode::replace);
  std::string text = std::to_string(kits.programCount()) + (kits.programCount() == 1 ? " kit" : " kits");
  for (std::size_t i = 0; i < kits.programCount() && i < kNamesShown; ++i) {
    text += (i == 0 ? ": " : ", ") + kits.name(i);
  }
  return printable(text) + (kits.programCount() > kNamesShown ? ", ..." : "");
}

std::string localTime(tesh::vimo::CopyTime time) {
  return juce::Time(static_cast<juce::int64>(time)).formatted("%Y-%m-%d %H:%M:%S").toStdString();
}

void listCopies(const std::string& file, const std::vector<ProgramFileCopy>& copies) {
  std::cout << printable(systemPathOf(file)) << "\n  now " << std::string(19, ' ') << "  " << contentsOf(file) << "\n";
  for (std::size_t i = 0; i < copies.size(); ++i) {
    std::printf("%5zu %s  %s\n", i + 1, localTime(copies[i].time).c_str(), contentsOf(copies[i].path).c_str());
  }
  std::puts(copies.empty() ? "There are no copies: one is kept before each Delete, Import, and Save over a kit,\n"
                             "and before a file that cannot be read whole is replaced."
                           : "To bring one back: sivray-content kits --restore NUMBER");
}

}  // namespace

void runKits(const juce::ArgumentList& list) {
  CommandLine line(list, kKitsUsage);
  const std::string wanted = line.takeValue("--restore");
  line.takeRest(0);
  using namespace tesh::bramel;
  const std::string file = pathFor(kBramelPath_UserProgram, vst::kInstrumentName);
  const std::vector<ProgramFileCopy> copies = tesh::vimo::programFileCopies(file);
  if (wanted.empty()) {
    std::cout << std::flush;
    listCopies(file, copies);
    return;
  }
  const auto number = tesh::cofu::core::readNumber<std::size_t>(wanted);
  if (!number || *number < 1 || *number > copies.size()) {
    fail("there is no copy '" + wanted + "'; sivray-content kits lists them", kWrongUsage);
  }
  const ProgramFileCopy& copy = copies[*number - 1];
  const std::string contents = contentsOf(copy.path);
  const platform::FolderLock lock(directoryFor(kBramelDirectory_UserPrograms));
  if (!tesh::vimo::restoreProgramFileCopy(file, copy, tesh::vimo::copyTimeNow())) {
    fail(systemPathOf(file) + ": cannot be written; it is as it was", kFailed);
  }
  std::cout << "Your kits are those of " << localTime(copy.time) << " again: " << contents
            << "\nWhat was there before is copy 1 now. A host that runs has its own list: start it anew." << std::endl;
}

}  // namespace sivray::content
