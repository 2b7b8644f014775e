// SPDX-License-Identifier: GPL-3.0-or-later
#include "Options.h"

#include <charconv>
#include <functional>
#include <map>

#include "RenderError.h"

namespace sivray::render {
namespace {

constexpr int kLongestBlockOption = 16384;
constexpr double kLongestTail = 3600.0;

double numberIn(const std::string& option, const std::string& text, double low, double high) {
  double value = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || end != text.data() + text.size() || !(value >= low && value <= high)) {
    throw RenderError(option + " takes a number from " + std::to_string(static_cast<long>(low)) + " to " +
                      std::to_string(static_cast<long>(high)) + ", not '" + text + "'");
  }
  return value;
}

std::pair<std::string, std::string> assignment(const std::string& option, const std::string& text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string::npos || equals == 0) {
    throw RenderError(option + " takes NAME=VALUE, not '" + text + "'");
  }
  return {text.substr(0, equals), text.substr(equals + 1)};
}

using ValueAction = std::function<void(Options&, const std::string& option, const std::string& value)>;
using FlagAction = std::function<void(Options&)>;

const std::map<std::string, ValueAction>& valueOptions() {
  static const std::map<std::string, ValueAction> table{
      {"-o", [](Options& o, const std::string&, const std::string& v) { o.outputPath = v; }},
      {"--block",
       [](Options& o, const std::string& n, const std::string& v) {
         o.settings.blockFrames = static_cast<int>(numberIn(n, v, 1, kLongestBlockOption));
       }},
      {"--tail", [](Options& o, const std::string& n,
                    const std::string& v) { o.settings.tailSeconds = numberIn(n, v, 0, kLongestTail); }},
      {"--bits",
       [](Options& o, const std::string& n, const std::string& v) {
         if (v != "16" && v != "24") {
           throw RenderError(n + " takes 16 or 24, not '" + v + "'");
         }
         o.settings.bits = v == "16" ? 16 : 24;
       }},
      {"--wave", [](Options& o, const std::string& n, const std::string& v) { o.waves.push_back(assignment(n, v)); }},
      {"--set", [](Options& o, const std::string& n, const std::string& v) { o.sets.push_back(assignment(n, v)); }},
      {"--fx", [](Options& o, const std::string&, const std::string& v) { o.effect = v; }},
      {"--edit1", [](Options& o, const std::string&, const std::string& v) { o.edit1 = v; }},
      {"--edit2", [](Options& o, const std::string&, const std::string& v) { o.edit2 = v; }},
      {"--fx-tour", [](Options& o, const std::string&, const std::string& v) { o.effectTourFolder = v; }},
  };
  return table;
}

const std::map<std::string, FlagAction>& flagOptions() {
  static const std::map<std::string, FlagAction> table{
      {"--quiet", [](Options& o) { o.settings.quiet = true; }},
      {"--fx-off", [](Options& o) { o.effectOff = true; }},
      {"--help", [](Options& o) { o.help = true; }},
      {"-h", [](Options& o) { o.help = true; }},
  };
  return table;
}

void requirePaths(const Options& options) {
  if (options.help) {
    return;
  }
  if (options.inputPath.empty()) {
    throw RenderError("name a MIDI file to play; see --help");
  }
  if (options.outputPath.empty() && !options.effectTourFolder) {
    throw RenderError("name the WAV file to write with -o; see --help");
  }
}

}  // namespace

std::string helpText() {
  return "Usage: sivray-render IN.mid -o OUT.wav [options]\n"
         "\n"
         "Plays a MIDI file through the drum engine into a stereo WAV file at 44100 Hz.\n"
         "Notes 36 to 43 play pads 0 to 7.\n"
         "\n"
         "  -o FILE               the WAV file to write\n"
         "  --block N             frames per block, 1 to 16384 (512)\n"
         "  --tail SECONDS        how long to render after the last event (2)\n"
         "  --bits 16|24          bits per sample of the WAV file (24)\n"
         "  --wave PAD=WAVE       the wave of a pad, by name or number\n"
         "  --set PARAM=VALUE     an engine parameter by its name (\"003: Punch\", \"pad3.punch\", \"master\") and an\n"
         "                        integer of its range\n"
         "  --fx NAME             the master effect by its long or short name\n"
         "  --edit1 N, --edit2 N  its two edit values, 0 to 127\n"
         "  --fx-off              switches the master effect off\n"
         "  --fx-tour FOLDER      renders all effect types one after the other into FOLDER, with a picture of their\n"
         "                        spectrograms\n"
         "  --quiet               no progress bar and no closing line\n"
         "  -h, --help            this text\n";
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
        throw RenderError(name + " needs a value; see --help");
      }
      entry->second(options, name, value ? *value : arguments[++i]);
    } else if (name.starts_with("-") && name.size() > 1) {
      throw RenderError("unknown option '" + arguments[i] + "'; see --help");
    } else if (options.inputPath.empty()) {
      options.inputPath = name;
    } else {
      throw RenderError("one MIDI file at a time: '" + options.inputPath + "' and '" + name + "' were given");
    }
  }
  requirePaths(options);
  return options;
}

}  // namespace sivray::render
