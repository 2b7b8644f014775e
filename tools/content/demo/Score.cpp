// The parser of the score's text.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/demo/Score.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>
#include <optional>
#include <sstream>
#include <utility>

#include "content/factory/Controllers.h"

namespace sivray::content {
namespace {

using Words = std::vector<std::string>;

constexpr double kEvenSwing = 50.0;
constexpr int kHighestValue = 127;

/// The lines of one pattern; steps count from its start.
struct Pattern {
  double steps = 0.0;
  std::vector<ScoreHit> hits;
  std::vector<ScoreControl> controls;
};

/// The names that a score uses for a pad's macros.
constexpr std::array<std::pair<std::string_view, factory::PadMacro>, 5> kPadMoves{{{"level", factory::kLevel},
                                                                                   {"decay", factory::kEnvelopeTime},
                                                                                   {"send", factory::kEffectSend},
                                                                                   {"pitch", factory::kPitch},
                                                                                   {"pan", factory::kPan}}};

constexpr std::array<std::pair<std::string_view, std::size_t>, 4> kSingleMoves{
    {{"effect.type", factory::kEffectTypeMacro},
     {"effect.edit1", factory::kEffectEdit1Macro},
     {"effect.edit2", factory::kEffectEdit2Macro},
     {"master", factory::kMasterLevelMacro}}};

std::optional<std::size_t> padOf(std::string_view role) {
  const auto* const found = std::ranges::find(kPadRoles, role);
  if (found == kPadRoles.end()) {
    return std::nullopt;
  }
  return static_cast<std::size_t>(found - kPadRoles.begin());
}

/// Returns the MIDI controller of a name such as "tom.pitch" or "master", or nothing if the name is unknown.
std::optional<int> controllerOf(std::string_view name) {
  for (const auto& [known, macro] : kSingleMoves) {
    if (name == known) {
      return std::ranges::find(factory::kControllerPlaces, macro, &factory::ControllerPlace::macro)->controller;
    }
  }
  const std::size_t dot = std::min(name.find('.'), name.size());
  const auto pad = padOf(name.substr(0, dot));
  for (const auto& [known, macro] : kPadMoves) {
    if (pad && name.substr(dot) == std::string(".").append(known)) {
      const auto* const row = std::ranges::find(factory::kControllerRows, macro, &factory::ControllerRow::macro);
      return row->first + static_cast<int>(*pad);
    }
  }
  return std::nullopt;
}

class ScoreReader {
 public:
  explicit ScoreReader(std::string_view fileName) : file(fileName) {}

  void read(const std::string& text) {
    std::istringstream lines(text);
    std::string row;
    while (std::getline(lines, row)) {
      ++line;
      const Words words = wordsOf(row);
      if (!words.empty()) {
        readLine(words);
      }
    }
    if (score.hits.empty()) {
      fail("the score plays nothing");
    }
  }

  DemoScore score;

 private:
  [[noreturn]] void fail(const std::string& reason) const { throw factory::TextError(file, line, reason); }

  static Words wordsOf(const std::string& row) {
    std::istringstream stream(row.substr(0, row.find('#')));
    Words words;
    for (std::string word; stream >> word;) {
      words.push_back(word);
    }
    return words;
  }

  void readLine(const Words& words) {
    const std::string& key = words[0];
    if (words.size() < 2) {
      fail("'" + key + "' needs something behind it");
    }
    if (key == "tempo") {
      score.tempo = numberOf(words[1], 20.0, 300.0);
    } else if (key == "swing") {
      swing = numberOf(words[1], kEvenSwing, 75.0);
    } else if (key == "pattern") {
      current = &patterns[words[1]];
    } else if (key == "play") {
      std::for_each(words.begin() + 1, words.end(), [this](const std::string& name) { play(name); });
    } else if (current == nullptr) {
      fail("'" + key + "' stands before the first pattern");
    } else if (key == "glide" || key == "set") {
      readMove(words, key == "glide");
    } else {
      readSteps(words);
    }
  }

  double numberOf(const std::string& text, double low, double high) const {
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size() || !(value >= low && value <= high)) {
      fail("'" + text + "' is no number from " + std::to_string(std::lround(low)) + " to " +
           std::to_string(std::lround(high)));
    }
    return value;
  }

  /// Reads a line that begins with a pad's name: its steps, in groups.
  void readSteps(const Words& words) {
    constexpr int kVelocityPerDigit = 14;  // 9 is a full hit.
    const auto pad = padOf(words[0]);
    if (!pad) {
      fail("there is no pad '" + words[0] + "'");
    }
    double step = 0.0;
    for (std::size_t group = 1; group < words.size(); ++group) {
      for (const char c : words[group]) {
        if (c >= '1' && c <= '9') {
          current->hits.push_back({step, factory::kFirstPadNote + static_cast<int>(*pad),
                                   std::min((c - '0') * kVelocityPerDigit + 1, kHighestValue)});
        } else if (c != '.') {
          fail(std::string("a step is 1 to 9 or a dot, not '").append(1, c).append("'"));
        }
        step += 1.0;
      }
    }
    current->steps = std::max(current->steps, step);
  }

  /// Reads a "set" or "glide" line: a controller's name and its step:value points.
  void readMove(const Words& words, bool glides) {
    const auto controller = controllerOf(words[1]);
    if (!controller) {
      fail("there is nothing called '" + words[1] + "' to move");
    }
    std::optional<ScoreControl> last;
    for (std::size_t i = 2; i < words.size(); ++i) {
      const std::size_t colon = words[i].find(':');
      if (colon == std::string::npos) {
        fail("expected STEP:VALUE, not '" + words[i] + "'");
      }
      const ScoreControl point{numberOf(words[i].substr(0, colon), 0.0, 1024.0), *controller,
                               static_cast<int>(numberOf(words[i].substr(colon + 1), 0.0, kHighestValue))};
      if (last && glides) {
        addGlide(*last, point);
      }
      current->controls.push_back(point);
      last = point;
    }
  }

  /// Adds linear steps between two points, eight for each sixteenth.
  void addGlide(const ScoreControl& from, const ScoreControl& to) {
    constexpr double kSpacing = 0.125;
    for (double step = from.step + kSpacing; step < to.step; step += kSpacing) {
      const double way = (step - from.step) / (to.step - from.step);
      const double value = from.value + way * (to.value - from.value);
      current->controls.push_back({step, from.controller, static_cast<int>(std::lround(value))});
    }
  }

  void play(const std::string& name) {
    const auto found = patterns.find(name);
    if (found == patterns.end()) {
      fail("there is no pattern '" + name + "'");
    }
    for (ScoreHit hit : found->second.hits) {
      hit.step = swung(hit.step) + score.steps;
      score.hits.push_back(hit);
    }
    for (ScoreControl control : found->second.controls) {
      control.step += score.steps;
      score.controls.push_back(control);
    }
    score.steps += found->second.steps;
  }

  /// Delays every second sixteenth by the swing.
  double swung(double step) const {
    const bool isSecond = std::fmod(step, 2.0) == 1.0;
    return isSecond ? step + (swing - kEvenSwing) / kEvenSwing : step;
  }

  std::string file;
  int line = 0;
  double swing = kEvenSwing;
  std::map<std::string, Pattern> patterns;
  Pattern* current = nullptr;
};

}  // namespace

DemoScore parseScore(std::string_view text, std::string_view file) {
  ScoreReader reader(file);
  reader.read(std::string(text));
  return std::move(reader.score);
}

}  // namespace sivray::content
