// The commands that add, list and remove the user's own sounds.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cctype>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "content/Files.h"
#include "content/commands/CommandLine.h"
#include "content/commands/Commands.h"
#include "content/own/Conversion.h"
#include "content/own/OwnChange.h"
#include "content/own/OwnContent.h"
#include "content/own/SoundAdder.h"
#include "content/own/SoundRemover.h"
#include "content/pack/Categories.h"
#include "content/pack/KitMaker.h"
#include "core/Text.h"
#include "host/shell/Construction.h"
#include "storage/paths/Paths.h"
#include "terminal/Interrupt.h"
#include "terminal/Printable.h"
#include "terminal/ProgressBar.h"

namespace sivray::content {
namespace {

using tesh::cofu::core::readNumber;

constexpr int kFirstNote = 36;

std::string quoted(const std::string& name) { return '"' + printable(name) + '"'; }

std::string categoryName(const OwnSound& sound) {
  return std::string(kCategoryNames[static_cast<std::size_t>(sound.category)]);
}

/// The category that the options set.
std::optional<int> categoryFrom(const std::string& pad, const std::string& category) {
  if (!pad.empty()) {
    const auto given = readNumber<int>(pad);
    const int index = !given ? -1 : *given < kFirstNote ? *given - 1 : *given - kFirstNote;
    if (index < 0 || index >= static_cast<int>(kPadCategories.size())) {
      fail("there is no pad '" + pad + "'; they are 1 to 8, or notes 36 to 43", kWrongUsage);
    }
    return kPadCategories[static_cast<std::size_t>(index)];
  }
  if (category.empty()) {
    return std::nullopt;
  }
  const auto isSame = [](std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, [](char x, char y) {
      return std::tolower(static_cast<unsigned char>(x)) == std::tolower(static_cast<unsigned char>(y));
    });
  };
  const auto* const found =
      std::ranges::find_if(kCategoryNames, [&](std::string_view name) { return isSame(name, category); });
  if (found != kCategoryNames.end()) {
    return static_cast<int>(found - kCategoryNames.begin());
  }
  if (const auto match = categoryIn(category)) {
    return match->category;
  }
  std::string names;
  for (const std::string_view name : kCategoryNames) {
    names += (names.empty() ? "" : ", ") + std::string(name);
  }
  fail("there is no category '" + category + "'; they are " + names, kWrongUsage);
}

/// Ends the program by the signal, after everything has been undone.
template <typename Work>
void interruptible(Work work) {
  try {
    const InterruptWatch watch;
    work();
  } catch (const Interrupted& interrupted) {
    std::cerr << "sivray-content: interrupted; your sounds are as they were" << std::endl;
    std::raise(interrupted.signal);
  }
}

/// Prints the results for a person, or for a program, with tabs between fields.
class OutcomePrinter {
 public:
  explicit OutcomePrinter(bool withFields) : isForProgram(withFields), bar(withFields) {}

  void say(const std::string& line) {
    bar.clear();
    std::cout << (isForProgram ? "note\t" : "") << printable(line) << std::endl;
  }

  void progress(double done) {
    bar.show(done);
    if (isForProgram) {
      std::cout << "progress\t" << done << std::endl;
    }
  }

  void tell(const FileOutcome& outcome) {
    bar.clear();
    ++counts[static_cast<std::size_t>(outcome.kind)];
    const OwnSound& sound = outcome.sound;
    if (isForProgram) {
      constexpr std::array kWords{"added", "known", "unused"};
      std::cout << kWords[static_cast<std::size_t>(outcome.kind)] << '\t' << printable(outcome.path) << '\t'
                << sound.number << '\t' << printable(sound.name) << '\t' << printable(outcome.note) << '\n';
      return;
    }
    std::cout << printable(outcome.path) << ": ";
    switch (outcome.kind) {
      case FileOutcome::Kind::added:
        std::cout << categoryName(sound) << " " << quoted(sound.name)
                  << (outcome.isGuess ? ", since neither its name nor its folder's names a category" : "")
                  << (outcome.note.empty() ? "" : "; it " + outcome.note);
        break;
      case FileOutcome::Kind::known:
        std::cout << "is there already as " << quoted(sound.name) << " (" << categoryName(sound) << ")";
        break;
      case FileOutcome::Kind::unused:
        std::cout << "not used: it " << printable(outcome.note);
        break;
    }
    std::cout << '\n';
  }

  void conclude() {
    bar.clear();
    const auto count = [this](FileOutcome::Kind kind) { return counts[static_cast<std::size_t>(kind)]; };
    if (isForProgram) {
      std::cout << "done" << std::endl;
      return;
    }
    std::cout << "\nAdded " << counted(count(FileOutcome::Kind::added), "sound", "sounds");
    if (count(FileOutcome::Kind::known) > 0) {
      std::cout << "; " << counted(count(FileOutcome::Kind::known), "was", "were") << " there already";
    }
    if (count(FileOutcome::Kind::unused) > 0) {
      std::cout << "; " << counted(count(FileOutcome::Kind::unused), "file", "files") << " could not be used";
    }
    std::cout << ".\n";
    if (std::getenv("BRAMEL_COMMON_FILES") != nullptr) {
      std::cout
          << "Whatever is started with BRAMEL_COMMON_FILES, as it is set here, plays that content and not your sounds"
          << std::endl;
    } else {
      std::cout << "Every form plays them from its next start on. To take one away: sivray-content remove NAME"
                << std::endl;
    }
  }

 private:
  bool isForProgram;
  ProgressBar bar;
  std::array<std::size_t, 3> counts{};
};

/// Whether there is anything that the commands could work on.
bool hasOwnSounds() {
  const OwnPaths paths;
  return std::filesystem::exists(paths.ledger) || std::filesystem::exists(paths.tree);
}

void saySounds() { std::cout << "There are no sounds of your own: sivray-content add brings some in" << std::endl; }

void sayLine(const std::string& line) { std::cout << printable(line) << std::endl; }

std::string lineOf(const OwnContent& content, const OwnSound& sound) {
  const std::string number = std::to_string(sound.number);
  return std::string(6 - std::min<std::size_t>(6, number.size()), ' ') + number + "  " + quoted(sound.name) + " (" +
         categoryName(sound) + ")" +
         (sound.isRemoved()
              ? " is removed; " + quoted(content.tables().factoryName(sound.standIn)) + " plays in its place"
              : ": " + sound.file);
}

/// The sounds that match a word of the command line.
std::vector<std::int32_t> meantBy(const std::string& word, const Ledger& ledger) {
  std::vector<std::int32_t> numbers;
  const auto number = readNumber<int>(word);
  for (const OwnSound& sound : ledger.sounds) {
    if (!sound.isRemoved() && (sound.name == word || sound.file == word || sound.number == number)) {
      numbers.push_back(sound.number);
    }
  }
  return numbers;
}

/// The lines of a file, without empty ones.
std::vector<std::string> linesOf(const std::string& path) {
  std::istringstream text(readText(path));
  std::vector<std::string> lines;
  for (std::string line; std::getline(text, line);) {
    if (line.ends_with('\r')) {
      line.pop_back();
    }
    if (!line.empty()) {
      lines.push_back(line);
    }
  }
  return lines;
}

}  // namespace

void runAdd(const juce::ArgumentList& list) {
  CommandLine line(list, kAddUsage);
  const bool withFields = line.takeFlag("--fields");
  const std::string pad = line.takeValue("--pad");
  const std::string category = line.takeValue("--category");
  if (!pad.empty() && !category.empty()) {
    line.failUsage();
  }
  AddWish wish;
  wish.category = categoryFrom(pad, category);
  const std::string from = line.takeValue("--from");
  wish.paths = from.empty() ? line.takeAll() : linesOf(from);
  std::size_t usable = 0;
  interruptible([&] {
    OutcomePrinter printer(withFields);
    const Say say = [&printer](const std::string& text) { printer.say(text); };
    OwnContent content(say);
    const bool isOutdated = content.isOutdated();
    usable = addSounds(content, wish,
                       {[&printer](const FileOutcome& outcome) { printer.tell(outcome); },
                        [&printer](double done) { printer.progress(done); }});
    if (isOutdated && !content.isOutdated()) {
      say("The factory content beside them is that which is installed now");
    }
    printer.conclude();
  });
  if (usable == 0) {
    fail("there is no sound that could be used", kFailed);
  }
}

void runList(const juce::ArgumentList& list) {
  CommandLine line(list, kListUsage);
  const bool withFields = line.takeFlag("--fields");
  line.takeRest(0);
  if (!hasOwnSounds()) {
    saySounds();
    return;
  }
  const OwnContent content(sayLine);
  if (withFields) {
    std::cout << textOf(content.ledger()) << std::flush;
    return;
  }
  std::cout << printable(textOf(content.paths().root)) << "\n";
  std::size_t removed = 0;
  for (const OwnSound& sound : content.ledger().sounds) {
    std::cout << lineOf(content, sound) << '\n';
    removed += sound.isRemoved() ? 1 : 0;
  }
  const std::size_t most = static_cast<std::size_t>(content.tables().numbers() - content.tables().factoryWaves());
  std::cout << counted(content.ledger().sounds.size() - removed, "sound", "sounds")
            << " of your own; there is room for " << most << std::endl;
  if (content.isOutdated()) {
    std::cout << "Other factory content has been installed since: sivray-content refresh takes it in" << std::endl;
  }
}

void runRemove(const juce::ArgumentList& list) {
  CommandLine line(list, kRemoveUsage);
  const bool isAll = line.takeFlag("--all");
  const std::vector<std::string> words = isAll ? line.takeRest(0) : line.takeAll();
  if (!hasOwnSounds()) {
    fail("there are no sounds of your own", kFailed);
  }
  interruptible([&] {
    OwnContent content(sayLine);
    std::set<std::int32_t> numbers;
    for (const OwnSound& sound : content.ledger().sounds) {
      if (isAll) {
        numbers.insert(sound.number);
      }
    }
    for (const std::string& word : words) {
      const auto meant = meantBy(word, content.ledger());
      if (meant.empty()) {
        fail("there is no own sound '" + word + "'; sivray-content list shows them", kWrongUsage);
      }
      numbers.insert(meant.begin(), meant.end());
    }
    const std::vector<OwnSound> gone = removeSounds(content, numbers);
    for (const OwnSound& sound : gone) {
      std::cout << quoted(sound.name) << " is removed; songs that use it play "
                << quoted(content.tables().factoryName(sound.standIn)) << '\n';
    }
    std::cout << "Removed " << counted(gone.size(), "sound", "sounds") << std::endl;
  });
}

void runConvert(const juce::ArgumentList& list) {
  CommandLine line(list, kConvertUsage);
  std::vector<std::string> files = line.takeAll();
  const std::string folder = files.front();
  files.erase(files.begin());
  interruptible([&] {
    OutcomePrinter printer(false);
    OwnContent content([&printer](const std::string& text) { printer.say(text); });
    const Conversion conversion(content, folder,
                                {[&printer](const FileOutcome& outcome) { printer.tell(outcome); },
                                 [&printer](double done) { printer.progress(done); }});
    printer.conclude();
    using namespace tesh::bramel;
    const std::string kits = systemPathOf(pathFor(kBramelPath_UserProgram, vst::kInstrumentName));
    if (std::filesystem::exists(pathOf(kits))) {
      files.push_back(kits);
    }
    for (const std::string& file : files) {
      std::vector<std::uint8_t> bytes = readFile(file);
      const std::vector<std::uint8_t> old = bytes;
      const std::size_t pads = conversion.convert(bytes);
      if (pads > 0) {
        writeFile(file + ".before", old);
        writeFile(file, bytes);
      }
      std::cout << printable(file) << ": "
                << (pads == 0 ? std::string("nothing in it names a wave of that content alone")
                              : counted(pads, "pad plays", "pads play") + " the same wave as with that content; " +
                                    "the old file is " + printable(fileNameOf(file)) + ".before")
                << std::endl;
    }
  });
}

void runRefresh(const juce::ArgumentList& list) {
  CommandLine(list, kRefreshUsage).takeRest(0);
  if (!hasOwnSounds()) {
    saySounds();
    return;
  }
  interruptible([] {
    OwnContent content(sayLine);
    const bool isOutdated = content.isOutdated();
    if (isOutdated || content.needsBuilding() || content.differs()) {
      OwnChange(content, OwnChange::Build::asNeeded).commit(content.ledger());
      std::cout << (isOutdated ? "Your sounds are beside the factory content that is installed now"
                               : "Your sounds are as the list of them says")
                << std::endl;
    } else {
      std::cout << "Nothing to do: your sounds are beside the factory content that is installed" << std::endl;
    }
  });
}

}  // namespace sivray::content
