// The text form of a kit: a line a setting, then a line a pad:
//
//   name    "Studio Dry"
//   style   "Acoustic"
//   effect  "Room Reverb" edit1=40 edit2=30
//   master  100
//   pad 36  "Kick Maple" level=110 punch=20
//
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/factory/Kit.h"

#include <functional>
#include <map>
#include <set>
#include <utility>

#include "core/Text.h"

namespace sivray::factory {
namespace {

/// The current file and line, for errors.
struct Place {
  std::string_view file;
  int line = 0;

  [[noreturn]] void fail(const std::string& reason) const { throw TextError(file, line, reason); }
};

/// Splits a line at blanks. Double quotes keep words together; # outside quotes begins a comment.
std::vector<std::string> wordsOf(std::string_view line, const Place& place) {
  std::vector<std::string> words;
  std::string word;
  bool quoted = false;
  bool begun = false;
  const auto end = [&] {
    if (begun) {
      words.push_back(word);
    }
    word.clear();
    begun = false;
  };
  for (const char c : line) {
    if (c == '"') {
      quoted = !quoted;
      begun = true;
    } else if (!quoted && c == '#') {
      break;
    } else if (!quoted && (c == ' ' || c == '\t' || c == '\r')) {
      end();
    } else {
      word += c;
      begun = true;
    }
  }
  if (quoted) {
    place.fail("a quotation mark is not closed");
  }
  end();
  return words;
}

int numberIn(const std::string& name, const std::string& text, int low, int high, const Place& place) {
  const std::string_view digits = text.starts_with('+') ? std::string_view(text).substr(1) : std::string_view(text);
  const auto value = tesh::cofu::core::readNumber<int>(digits);
  if (!value || *value < low || *value > high) {
    place.fail("'" + name + "' takes a whole number from " + std::to_string(low) + " to " + std::to_string(high) +
               ", not '" + text + "'");
  }
  return *value;
}

/// Returns the index of `text` in `words`. Throws TextError, listing them, if it is not there.
int choiceOf(const std::string& name, const std::string& text, const std::vector<std::string>& words,
             const Place& place) {
  std::string known;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i] == text) {
      return static_cast<int>(i);
    }
    known += (i == 0 ? "" : ", ") + words[i];
  }
  place.fail("'" + name + "' takes one of " + known + ", not '" + text + "'");
}

std::pair<std::string, std::string> assignmentOf(const std::string& word, const Place& place) {
  const std::size_t equals = word.find('=');
  if (equals == std::string::npos || equals == 0) {
    place.fail("expected NAME=VALUE, not '" + word + "'");
  }
  return {word.substr(0, equals), word.substr(equals + 1)};
}

using PadSetter = std::function<void(KitPad&, const std::string& name, const std::string& value, const Place&)>;

PadSetter number(int KitPad::*field, int low, int high) {
  return [=](KitPad& pad, const std::string& name, const std::string& value, const Place& place) {
    pad.*field = numberIn(name, value, low, high, place);
  };
}

PadSetter choice(bool KitPad::*field, const std::vector<std::string>& words) {
  return [=](KitPad& pad, const std::string& name, const std::string& value, const Place& place) {
    pad.*field = choiceOf(name, value, words, place) == 1;
  };
}

const std::map<std::string, PadSetter>& padSettings() {
  static const std::map<std::string, PadSetter> table{
      {"level", number(&KitPad::level, 0, 127)},
      {"pan", number(&KitPad::pan, -63, 63)},
      {"mute", choice(&KitPad::mute, {"off", "on"})},
      {"pitch", number(&KitPad::pitch, -24, 24)},
      {"fine", number(&KitPad::fine, -100, 100)},
      {"group",
       [](KitPad& pad, const std::string& name, const std::string& value, const Place& place) {
         pad.group = static_cast<ExclusiveGroup>(choiceOf(name, value, {"off", "A", "B"}, place));
       }},
      {"send", choice(&KitPad::send, {"off", "on"})},
      {"mode", choice(&KitPad::gate, {"oneshot", "gate"})},
      {"decay", number(&KitPad::decay, 0, 127)},
      {"punch", number(&KitPad::punch, 0, 127)},
      {"reverse", choice(&KitPad::reverse, {"off", "on"})},
      {"boost", number(&KitPad::boost, 0, 127)},
  };
  return table;
}

using Words = std::vector<std::string>;

void readPad(Kit& kit, const Words& words, const Place& place) {
  if (words.size() < 3) {
    place.fail("'pad' takes a note, a wave and its settings");
  }
  const int note = numberIn("pad", words[1], kFirstPadNote, padNote(kPads - 1), place);
  KitPad& pad = kit.pads[static_cast<std::size_t>(note - kFirstPadNote)];
  if (!pad.wave.empty()) {
    place.fail("pad " + words[1] + " stands twice");
  }
  pad.wave = words[2];
  pad.line = place.line;
  for (std::size_t i = 3; i < words.size(); ++i) {
    const auto [name, value] = assignmentOf(words[i], place);
    const auto setting = padSettings().find(name);
    if (setting == padSettings().end()) {
      place.fail("a pad has no setting '" + name + "'");
    }
    setting->second(pad, name, value, place);
  }
}

void readEffect(Kit& kit, const Words& words, const Place& place) {
  kit.effect = words[1];
  kit.effectLine = place.line;
  for (std::size_t i = 2; i < words.size(); ++i) {
    const auto [name, value] = assignmentOf(words[i], place);
    if (name != "edit1" && name != "edit2") {
      place.fail("an effect has no setting '" + name + "'");
    }
    (name == "edit1" ? kit.edit1 : kit.edit2) = numberIn(name, value, 0, 127, place);
  }
}

void readLine(Kit& kit, const Words& words, std::set<std::string>& seen, const Place& place) {
  const std::string& key = words[0];
  if (words.size() < 2) {
    place.fail("'" + key + "' needs a value");
  }
  if (key != "pad" && !seen.insert(key).second) {
    place.fail("'" + key + "' stands twice");
  }
  if (key != "pad" && key != "effect" && words.size() > 2) {
    place.fail("'" + key + "' takes one value; put words with blanks between quotation marks");
  }
  if (key == "pad") {
    readPad(kit, words, place);
  } else if (key == "effect") {
    readEffect(kit, words, place);
  } else if (key == "name") {
    kit.name = words[1];
  } else if (key == "style") {
    kit.comment = words[1];
  } else if (key == "master") {
    kit.master = numberIn(key, words[1], 0, 127, place);
  } else {
    place.fail("unknown setting '" + key + "'");
  }
}

void requireComplete(const Kit& kit, const Place& place) {
  constexpr std::size_t kLongestName = 24;
  if (kit.name.empty() || kit.name.size() > kLongestName) {
    place.fail("a kit needs a name of 1 to 24 characters");
  }
  for (std::size_t pad = 0; pad < kPads; ++pad) {
    if (kit.pads[pad].wave.empty()) {
      place.fail("pad " + std::to_string(padNote(pad)) + " is missing");
    }
  }
}

}  // namespace

TextError::TextError(std::string_view file, int line, std::string_view reason)
    : std::runtime_error(std::string(file) + ":" + std::to_string(line) + ": " + std::string(reason)) {}

Kit parseKit(std::string_view text, std::string_view file) {
  Kit kit;
  std::set<std::string> seen;
  Place place{file, 0};
  while (!text.empty()) {
    ++place.line;
    const std::size_t newline = text.find('\n');
    const Words words = wordsOf(text.substr(0, newline), place);
    if (!words.empty()) {
      readLine(kit, words, seen, place);
    }
    text.remove_prefix(newline == std::string_view::npos ? text.size() : newline + 1);
  }
  requireComplete(kit, place);
  return kit;
}

}  // namespace sivray::factory
