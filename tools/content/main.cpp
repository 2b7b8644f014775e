// sivray-content: builds the factory content, packs folders of sound files, and looks into our files.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdlib>
#include <exception>
#include <functional>
#include <string>

#include "SivrayVersion.h"
#include "content/commands/CommandLine.h"
#include "content/commands/Commands.h"
#include "platform/SpecialFolders.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>

#include <juce_events/juce_events.h>

#include "platform/WindowsApi.h"
#endif

namespace {

using Command = std::function<void(const juce::ArgumentList&)>;

/// Wraps a command so that an exception becomes one line on standard error.
std::function<void(const juce::ArgumentList&)> speaking(const Command& command) {
  return [command](const juce::ArgumentList& list) {
    try {
      command(list);
    } catch (const std::exception& error) {
      sivray::content::fail(error.what(), sivray::content::kFailed);
    }
  };
}

#ifndef _WIN32
/// Like `speaking`, for a command on the factory's content without the user's own sounds.
std::function<void(const juce::ArgumentList&)> onFactory(const Command& command) {
  return speaking([command](const juce::ArgumentList& list) {
    const std::string installed = tesh::bramel::platform::installedFilesFolder();
    if (!installed.empty()) {
      ::setenv("BRAMEL_COMMON_FILES", installed.c_str(), 0);
    }
    command(list);
  });
}

/// The commands that make content. They are not in the build for Windows, which lacks their libraries.
void addMakers(juce::ConsoleApplication& program) {
  using namespace sivray::content;
  program.addCommand(
      {"waves", kWavesUsage, "Builds the factory's sample library from its tables", "", speaking(runWaves)});
  program.addCommand(
      {"bank", kBankUsage, "Builds the macro description from the factory's kits", "", speaking(runBank)});
  program.addCommand({"demo", kDemoUsage, "Builds a MIDI file from a folder of grooves", "", speaking(runDemo)});
  program.addCommand({"levels", kLevelsUsage,
                      "Plays every pad of every installed kit and prints level, length and brightness", "",
                      onFactory(runLevels)});
  program.addCommand({"balance", kBalanceUsage, "Sets the levels in the kits' texts by measuring the installed kits",
                      "", onFactory(runBalance)});
  program.addCommand({"measure", kMeasureUsage, "Measures the factory's waves and compares them with recorded drums",
                      "", onFactory(runMeasure)});
  program.addCommand({"similar", kSimilarUsage, "Finds the waves of a sample library that sound alike, for the panel",
                      "", speaking(runSimilar)});
  program.addCommand(
      {"pack", kPackUsage, "Packs a folder of sound files into a sample library with kits",
       "Reads WAV, AIFF, FLAC, OGG and all other formats of libsndfile. The names of files and folders decide the "
       "categories.",
       onFactory(runPack)});
}

/// JUCE's own argument list treats bytes as characters, which would break paths with umlauts.
juce::StringArray textsOf(int argc, char** argv) {
  juce::StringArray texts;
  for (int i = 1; i < argc; ++i) {
    texts.add(juce::String::fromUTF8(argv[i]));
  }
  return texts;
}
#else
void addMakers(juce::ConsoleApplication& /*program*/) {}

/// The command line in Windows' own encoding, for any script.
juce::StringArray textsOf(int /*argc*/, char** /*argv*/) {
  return juce::JUCEApplicationBase::getCommandLineParameterArray();
}
#endif

/// Texts are UTF-8, and the progress bar uses terminal control sequences.
void prepareTerminal() {
#ifdef _WIN32
  SetConsoleOutputCP(CP_UTF8);
  _setmode(_fileno(stdout), _O_BINARY);
  DWORD mode = 0;
  HANDLE terminal = GetStdHandle(STD_ERROR_HANDLE);
  if (GetConsoleMode(terminal, &mode) != FALSE) {
    SetConsoleMode(terminal, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
  }
#endif
}

}  // namespace

int main(int argc, char* argv[]) {
  using namespace sivray::content;
  prepareTerminal();
  const juce::ArgumentList words("sivray-content", textsOf(argc, argv));
  juce::ConsoleApplication program;
  program.addVersionCommand("--version", "sivray-content " SIVRAY_VERSION);
  program.addHelpCommand("--help|-h", "sivray-content makes and shows the content of the drum module.", false);
  addMakers(program);
  program.addCommand(
      {"add", kAddUsage, "Adds sound files to the sounds that every form plays",
       "The names of files and folders decide the categories, unless a pad (1 to 8) or a category is given. A "
       "sound keeps its number for ever, so songs go on playing it. --fields prints lines for other programs.",
       speaking(runAdd)});
  program.addCommand({"list", kListUsage,
                      "Lists the added sounds, and the removed ones with the sounds that replace them", "",
                      speaking(runList)});
  program.addCommand({"remove", kRemoveUsage, "Removes added sounds",
                      "A song that uses one plays the most similar factory sound of its category instead.",
                      speaking(runRemove)});
  program.addCommand({"export", kExportUsage, "Collects the added files that a song or one of your kits uses",
                      "STATE is a state, a preset or any file that holds one. Added on another computer, the "
                      "folder's files get the same numbers.",
                      speaking(runExport)});
  program.addCommand(
      {"convert", kConvertUsage,
       "Adds the sounds of a folder that 'pack' made, and adapts songs and kits that use them",
       "FILES are states and presets. In these and in your kits, the values that choose those sounds are changed; "
       "the old files are kept as copies.",
       speaking(runConvert)});
  program.addCommand({"refresh", kRefreshUsage,
                      "Rebuilds the content from the installed factory content and the added sounds", "",
                      speaking(runRefresh)});
  program.addCommand({"kits", kKitsUsage, "Lists the copies of your own kits, and restores one",
                      "The plug-in keeps the last ten, from before each Delete, Import, and Save over a kit.",
                      speaking(runKits)});
  program.addCommand({"controllers", kControllersUsage,
                      "Shows which MIDI controllers move which parameters, and changes this",
                      "CC is 0 to 126 or bend, MACRO a number or a name. A change makes a map of your own, which is "
                      "used instead of the factory's; --reset removes it.",
                      speaking(runControllers)});
  program.addCommand({"inspect", kInspectUsage,
                      "Shows the content of a file of the drum module, and where a broken one has its first fault", "",
                      speaking(runInspect)});
  if (program.findCommand(words, true) == nullptr) {
    return juce::ConsoleApplication::invokeCatchingFailures([&words]() -> int {
      fail(words.size() == 0
               ? "name a command; sivray-content --help lists them"
               : "unknown command '" + words[0].text.toStdString() + "'; sivray-content --help lists them",
           kWrongUsage);
    });
  }
  return program.findAndRunCommand(words, true);
}
