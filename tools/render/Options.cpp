// The table of options, their parsing, and the text of --help.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Options.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <system_error>

#include "EngineNames.h"
#include "RenderError.h"
#include "core/EngineRate.h"
#include "core/Text.h"
#include "platform/SpecialFolders.h"
#include "storage/notes/TaughtNotes.h"
#include "viewmodels/texts/PanelMacros.h"

namespace sivray::render {
namespace {

constexpr int kLongestBlockOption = 16384;
constexpr double kLongestTail = 3600.0;
constexpr double kLongestScore = 86400.0;
constexpr double kLowestRate = 1000.0;
constexpr double kHighestRate = 768000.0;
constexpr double kMostSeed = 4294967295.0;
constexpr double kLongestSoak = 1000.0;
constexpr double kLeastScale = 0.5;
constexpr double kGreatestScale = 4.0;
constexpr int kPads = tesh::bramel::panel::kPads;

std::string printed(double number) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", number);
  return text;
}

double numberIn(const std::string& option, const std::string& text, double low, double high) {
  const auto value = tesh::cofu::core::readNumber<double>(text);
  if (!value || !(*value >= low && *value <= high)) {
    throw UsageError(option + " takes a number from " + printed(low) + " to " + printed(high) + ", not '" + text + "'");
  }
  return *value;
}

Assignment assignment(AssignmentTarget target, const std::string& option, const std::string& text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string::npos || equals == 0) {
    throw UsageError(option + " takes NAME=VALUE, not '" + text + "'");
  }
  return {target, text.substr(0, equals), text.substr(equals + 1)};
}

/// Parses NAME=VALUE or NAME=VALUE@SECONDS.
Assignment timedAssignment(AssignmentTarget target, const std::string& option, const std::string& text) {
  Assignment result = assignment(target, option, text);
  if (const std::size_t at = result.value.rfind('@'); at != std::string::npos) {
    result.seconds = numberIn(option, result.value.substr(at + 1), 0.0, kLongestScore);
    result.value.resize(at);
  }
  return result;
}

Assignment waveAssignment(const std::string& option, const std::string& text) {
  Assignment result = assignment(AssignmentTarget::engineParameter, option, text);
  const auto pad = static_cast<int>(numberIn(option + "'s pad", result.name, 1, kPads));
  result.name = "pad" + std::to_string(pad) + ".wave";
  return result;
}

using ValueAction = std::function<void(Options&, const std::string& option, const std::string& value)>;
using FlagAction = std::function<void(Options&)>;

/// Returns the handler of an option that sets one engine parameter.
ValueAction engineOption(const char* parameter) {
  return [parameter](Options& options, const std::string&, const std::string& value) {
    options.assignments.push_back({AssignmentTarget::engineParameter, parameter, value});
  };
}

ValueAction textOption(std::optional<std::string> Options::*field) {
  return [field](Options& options, const std::string&, const std::string& value) { options.*field = value; };
}

bool isPng(std::string path) {
  std::ranges::transform(path, path.begin(),
                         [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  return path.ends_with(".png");
}

void setPicture(Options& options, const std::string& option, const std::string& path) {
  if (!isPng(path)) {
    throw UsageError(option + " draws PNG pictures: name a file that ends with .png, not '" + path + "'");
  }
  options.panelPath = path;
}

ValueAction moveOption(AssignmentTarget target) {
  return [target](Options& options, const std::string& name, const std::string& value) {
    options.assignments.push_back(timedAssignment(target, name, value));
  };
}

/// Reads the note map in a file; every line must be valid.
tesh::cofu::core::NoteMap taughtMap(const std::string& option, const std::string& path) {
  std::ifstream file(path);
  const std::string text(std::istreambuf_iterator<char>(file), {});
  if (!file) {
    throw UsageError(option + ": '" + path + "' cannot be read");
  }
  const auto [notes, faultyLine] = tesh::bramel::readTaughtNotes(text);
  if (faultyLine > 0) {
    throw UsageError(option + ": line " + std::to_string(faultyLine) + " of '" + path +
                     "' is not like 60=36, the note of a drum and that of its pad");
  }
  return tesh::bramel::noteMapOf(notes);
}

void setNotes(Options& options, const std::string& option, const std::string& name) {
  using tesh::bramel::kTaughtMapName;
  std::error_code error;
  if (plainName(name) == plainName(kTaughtMapName)) {
    const std::string path = tesh::bramel::platform::settingsFolder() + "/" + tesh::bramel::kTaughtNotesFile;
    if (!std::filesystem::exists(path, error)) {
      throw UsageError(option + ": sivray has not been taught any note; its setup has 'Learn' under 'Notes'");
    }
    options.settings.notes = taughtMap(option, path);
    return;
  }
  std::string known;
  for (const auto& [mapName, map] : tesh::cofu::core::namedNoteMaps()) {
    if (plainName(std::string(mapName)) == plainName(name)) {
      options.settings.notes = map;
      return;
    }
    known += (known.empty() ? "" : ", ") + std::string(mapName);
  }
  if (!std::filesystem::is_regular_file(name, error)) {
    throw UsageError(option + " takes " + known + ", " + kTaughtMapName + " or a file, not '" + name + "'");
  }
  options.settings.notes = taughtMap(option, name);
}

const std::map<std::string, ValueAction>& valueOptions() {
  using Text = const std::string&;
  static const std::map<std::string, ValueAction> table{
      {"-o", [](Options& o, Text, Text v) { o.outputPath = v; }},
      {"--rate", [](Options& o, Text n, Text v) { o.rate = numberIn(n, v, kLowestRate, kHighestRate); }},
      {"--block", [](Options& o, Text n,
                     Text v) { o.settings.blockFrames = static_cast<int>(numberIn(n, v, 1, kLongestBlockOption)); }},
      {"--preroll", [](Options& o, Text n, Text v) { o.settings.prerollSeconds = numberIn(n, v, 0, kLongestTail); }},
      {"--tail", [](Options& o, Text n, Text v) { o.settings.tailSeconds = numberIn(n, v, 0, kLongestTail); }},
      {"--longest", [](Options& o, Text n, Text v) { o.longestScore = numberIn(n, v, 0, kLongestScore); }},
      {"--bits",
       [](Options& o, Text n, Text v) {
         if (v != "16" && v != "24") {
           throw UsageError(n + " takes 16 or 24, not '" + v + "'");
         }
         o.settings.bits = v == "16" ? 16 : 24;
       }},
      {"--notes", setNotes},
      {"--program", textOption(&Options::program)},
      {"--vary",
       [](Options& o, Text n, Text v) { o.varySeed = static_cast<std::uint32_t>(numberIn(n, v, 0, kMostSeed)); }},
      {"--macro", moveOption(AssignmentTarget::macro)},
      {"--param", moveOption(AssignmentTarget::hostParameter)},
      {"--set", moveOption(AssignmentTarget::engineParameter)},
      {"--wave", [](Options& o, Text n, Text v) { o.assignments.push_back(waveAssignment(n, v)); }},
      {"--fx", engineOption("fx.type")},
      {"--edit1", engineOption("fx.edit1")},
      {"--edit2", engineOption("fx.edit2")},
      {"--fx-tour", textOption(&Options::effectTourFolder)},
      {"--state", textOption(&Options::statePath)},
      {"--save-state", textOption(&Options::saveStatePath)},
      {"--save-kits", textOption(&Options::kitFolder)},
      {"--panel", setPicture},
      {"--page", [](Options& o, Text, Text v) { o.panelPage = v; }},
      {"--open", [](Options& o, Text, Text v) { o.panelOpen = v; }},
      {"--scale", [](Options& o, Text n, Text v) { o.panelScale = numberIn(n, v, kLeastScale, kGreatestScale); }},
      {"--lit", [](Options& o, Text n, Text v) { o.litPads.push_back(static_cast<int>(numberIn(n, v, 1, kPads))); }},
      {"--library", textOption(&Options::libraryPath)},
      {"--form",
       [](Options& o, Text n, Text v) {
         if (v != "vst2" && v != "vst3" && v != "lv2" && v != "clap") {
           throw UsageError(n + " takes vst2, vst3, lv2 or clap, not '" + v + "'");
         }
         o.checkForm = v;
       }},
      {"--bundle", textOption(&Options::bundlePath)},
      {"--only", [](Options& o, Text, Text v) { o.checkOnly = v; }},
      {"--soak", [](Options& o, Text n, Text v) { o.soakHours = numberIn(n, v, 0, kLongestSoak); }},
  };
  return table;
}

const std::map<std::string, FlagAction>& flagOptions() {
  static const std::map<std::string, FlagAction> table{
      {"--quiet", [](Options& o) { o.settings.quiet = true; }},
      {"--stems", [](Options& o) { o.settings.stems = true; }},
      {"--direct", [](Options& o) { o.direct = true; }},
      {"--fx-off",
       [](Options& o) {
         o.assignments.push_back({AssignmentTarget::engineParameter, "fx.switch", "0"});
       }},
      {"--list-programs", [](Options& o) { o.listPrograms = true; }},
      {"--list-effects", [](Options& o) { o.listEffects = true; }},
      {"--list-waves", [](Options& o) { o.listWaves = true; }},
      {"--list-parameters", [](Options& o) { o.listParameters = true; }},
      {"--check", [](Options& o) { o.check = true; }},
      {"--full", [](Options& o) { o.fullCheck = true; }},
      {"--help", [](Options& o) { o.help = true; }},
      {"-h", [](Options& o) { o.help = true; }},
      {"--version", [](Options& o) { o.version = true; }},
  };
  return table;
}

void requireSense(const Options& options) {
  if (options.help || options.version || options.lists() || options.check || options.panelPath || options.kitFolder) {
    return;
  }
  if ((options.direct || options.effectTourFolder) && options.rate && *options.rate != tesh::cofu::core::kEngineRate) {
    throw UsageError("--direct and --fx-tour play at the engine's own 44100 Hz; leave --rate away");
  }
  if (options.settings.stems && (options.direct || options.effectTourFolder)) {
    throw UsageError("--stems goes with neither --direct nor --fx-tour");
  }
  const bool onlySaves = options.saveStatePath && options.inputPath.empty() && options.outputPath.empty();
  if (options.inputPath.empty() && !onlySaves) {
    throw UsageError("name a MIDI file to play; see --help");
  }
  if (options.outputPath.empty() && !options.effectTourFolder && !onlySaves) {
    throw UsageError("name the WAV file to write with -o; see --help");
  }
}

}  // namespace

std::string helpText() {
  return "Usage: sivray-render IN.mid -o OUT.wav [options]\n"
         "       sivray-render --list-programs | --list-effects | --list-waves | --list-parameters\n"
         "       sivray-render --save-kits FOLDER\n"
         "       sivray-render --panel FILE.png [--program NAME] [--page NAME] [--open WHAT] [--scale S]\n"
         "       sivray-render --check [--form FORM] [--only TEXT] [--full] [--soak HOURS]\n"
         "\n"
         "Plays a MIDI file through the Sivray plug-in into a stereo WAV file. Notes 36 to 43 play pads 1 to 8; a "
         "text\n"
         "event such as \"pad3.pitch=30\" in the MIDI file moves an engine parameter, \"program=NAME\" chooses a kit.\n"
         "\n"
         "  -o FILE               the WAV file to write\n"
         "  --rate HZ             sample rate of the host (44100)\n"
         "  --block N             frames per block, 1 to 16384 (512)\n"
         "  --preroll SECONDS     how long the plug-in runs before the first frame, as in a host that runs already "
         "(0)\n"
         "  --tail SECONDS        how long to render after the last event (2)\n"
         "  --longest SECONDS     the longest MIDI file to play, up to 86400 (3600)\n"
         "  --bits 16|24          bits per sample of the WAV file (24)\n"
         "  --stems               also writes the outs of pads and effect, before the master level: OUT-pad1.wav to\n"
         "                        OUT-pad8.wav and OUT-effect.wav; plays the instrument itself instead of the library\n"
         "  --notes NAME|FILE     which notes play the pads: \"Sivray\" (36 to 43, unless given), \"All drums\",\n"
         "                        \"General MIDI\", \"Learn\" (taught to sivray), or a file of lines such as 60=36\n"
         "  --program N|NAME      the program to play; see --list-programs\n"
         "  --vary SEED           gives each pad one of the eight waves nearest to its own, as loud as before; the "
         "same "
         "number\n"
         "                        gives the same kit\n"
         "  --list-programs       prints number, name and style of all programs\n"
         "  --list-effects        prints number, long and short name of all effects, and what their edit values are\n"
         "  --list-waves          prints number, name and category of all waves\n"
         "  --list-parameters     prints name and range of all engine parameters, with the macros that move them and "
         "the\n"
         "                        parameters of the host\n"
         "  --macro N=VALUE[@S]   sets a macro, by number or name, to 0 .. 1, from the start or at S seconds\n"
         "  --param N=VALUE[@S]   as above for a parameter of the host, by index or name\n"
         "  --set PARAM=VALUE[@S] sets an engine parameter (\"pad3.punch\", \"fx.edit1\", \"master\") to an integer "
         "of\n"
         "                        its range; see --list-parameters\n"
         "  --wave PAD=WAVE       sets the wave of a pad, 1 to 8, by name or number; see --list-waves\n"
         "  --fx NAME             sets the master effect, by long or short name or number; see --list-effects\n"
         "  --edit1 N, --edit2 N  its two edit values, 0 to 127\n"
         "  --fx-off              switches the master effect off\n"
         "  --fx-tour FOLDER      renders all effect types one after the other into FOLDER, with a picture of their\n"
         "                        spectrograms\n"
         "  --state FILE          loads a state as saved by a host, or a VST 2 preset if its name ends with .fxp;\n"
         "                        all other options apply after it\n"
         "  --save-state FILE     saves the state at the end, in either format\n"
         "  --save-kits FOLDER    writes each factory kit as a preset file\n"
         "  --panel FILE.png      draws a picture of the plug-in's panel instead of playing, with:\n"
         "    --page NAME           the page: sound, character or mix\n"
         "    --open WHAT           samples=PAD, programs, save-as, effects, settings or tooltip=PARAMETER\n"
         "    --scale S             0.5 to 4 (1)\n"
         "    --lit PAD             lights a pad, 1 to 8; may be given several times\n"
         "  --library FILE        the plug-in to play ($SIVRAY_LIBRARY, else the one near this program or installed)\n"
         "  --direct              plays the same instrument without loading the plug-in, at 44100 Hz\n"
         "  --check               checks the plug-in as a strict host would, one line per check; --full runs all\n"
         "                        repetitions, --soak HOURS adds a long rendering, --only TEXT runs the checks\n"
         "                        with that text in their names\n"
         "    --form FORM           vst2, vst3, lv2 or clap (vst2); the others are also compared with VST 2\n"
         "    --bundle FOLDER       the form's bundle (near this program)\n"
         "  --quiet               no progress bar and no closing line\n"
         "  -h, --help            this text\n"
         "  --version             the version\n"
         "\n"
         "Exit status: 0 on success, 2 for a wrong command line (such as an unknown option or program), 1 for any "
         "other\n"
         "error or a failed check.\n";
}

Options parseOptions(const std::vector<std::string>& arguments) {
  Options options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    std::string name = arguments[i];
    std::optional<std::string> value;
    if (const std::size_t equals = name.find('='); name.starts_with("--") && equals != std::string::npos) {
      value = name.substr(equals + 1);
      name.resize(equals);
    }
    if (const auto flag = flagOptions().find(name); flag != flagOptions().end() && !value) {
      flag->second(options);
    } else if (const auto entry = valueOptions().find(name); entry != valueOptions().end()) {
      if (!value && i + 1 == arguments.size()) {
        throw UsageError(name + " needs a value; see --help");
      }
      entry->second(options, name, value ? *value : arguments[++i]);
    } else if (name.starts_with("-") && name.size() > 1) {
      throw UsageError("unknown option '" + arguments[i] + "'; see --help");
    } else if (options.inputPath.empty()) {
      options.inputPath = name;
    } else {
      throw UsageError("one MIDI file at a time: '" + options.inputPath + "' and '" + name + "' were given");
    }
  }
  requireSense(options);
  return options;
}

}  // namespace sivray::render
