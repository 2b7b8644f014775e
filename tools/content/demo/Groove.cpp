// The parser of a groove's text, and of the suite's list.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/demo/Groove.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <random>
#include <sstream>
#include <utility>

#include "content/Files.h"
#include "content/factory/Controllers.h"
#include "content/factory/FileList.h"
#include "core/Text.h"
#include "viewmodels/texts/EditScreenEffects.h"

namespace sivray::content {
namespace {

using Words = std::vector<std::string>;

constexpr double kEvenSwing = 50.0;
constexpr int kHighestValue = 127;
constexpr double kMillisecondsPerMinute = 60000.0;

/// A step of a pattern: a number of hits at equal distances.
struct Step {
  int step = 0;
  std::size_t pad = 0;
  int count = 1;
  int velocity = 0;
};

struct Point {
  double step = 0.0;
  int controller = 0;
  int value = 0;
};

/// The lines of one pattern; steps count from its start.
struct Pattern {
  int steps = 0;
  std::vector<Step> hits;
  std::vector<Point> moves;
};

/// The names that a groove uses for a pad's macros.
constexpr std::array<std::pair<std::string_view, factory::PadMacro>, 5> kPadMoves{{{"level", factory::kLevel},
                                                                                   {"decay", factory::kEnvelopeTime},
                                                                                   {"send", factory::kEffectSend},
                                                                                   {"pitch", factory::kPitch},
                                                                                   {"pan", factory::kPan}}};

constexpr std::array<std::pair<std::string_view, std::size_t>, 5> kSingleMoves{
    {{"effect.type", factory::kEffectTypeMacro},
     {"effect.on", factory::kEffectSwitchMacro},
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

class GrooveReader {
 public:
  explicit GrooveReader(std::string_view fileName) : file(fileName) {}

  std::vector<Groove> read(const std::string& text) {
    std::istringstream lines(text);
    std::string row;
    while (std::getline(lines, row)) {
      ++line;
      const Words words = wordsOf(row);
      if (!words.empty()) {
        readLine(words);
      }
    }
    finishGroove();
    return std::move(grooves);
  }

 private:
  void finishGroove() {
    if (groove.hits.empty()) {
      fail("the groove plays nothing");
    }
    Groove next;
    next.tempo = groove.tempo;
    grooves.push_back(std::exchange(groove, std::move(next)));
  }

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
    if (key == "kit") {
      if (!groove.kit.empty()) {
        finishGroove();
      }
      groove.kit = joined(words);
    } else if (key == "pattern") {
      current = &patterns[words[1]];
    } else if (key == "play") {
      std::for_each(words.begin() + 1, words.end(), [this](const std::string& name) { groove.beats += play(name); });
    } else if (key == "end") {
      groove.endBeats += play(words[1]);
    } else if (current == nullptr) {
      readSetting(key, words[1]);
    } else if (key == "glide" || key == "set") {
      readMove(words, key == "glide");
    } else {
      readSteps(words);
    }
  }

  /// The words after the first, without quotation marks around them.
  std::string joined(const Words& words) const {
    std::string text = words[1];
    std::for_each(words.begin() + 2, words.end(), [&](const std::string& word) { text += " " + word; });
    if (text.size() < 3 || text.front() != '"' || text.back() != '"') {
      fail("'" + words[0] + "' takes a name between quotation marks");
    }
    return text.substr(1, text.size() - 2);
  }

  void readSetting(const std::string& key, const std::string& text) {
    if (key == "tempo") {
      groove.tempo = numberOf(text, 20.0, 300.0);
    } else if (key == "beat") {
      stepsPerBeat = wholeOf(text, 1, 8);
    } else if (key == "swing") {
      swing = numberOf(text, kEvenSwing, 75.0);
    } else if (key == "human") {
      human = wholeOf(text, 0, 20);
    } else if (key == "master") {
      groove.moves.push_back({0.0, *controllerOf(key), wholeOf(text, 0, kHighestValue)});
    } else {
      fail("'" + key + "' stands before the first pattern");
    }
  }

  double numberOf(const std::string& text, double low, double high) const {
    const auto value = tesh::cofu::core::readNumber<double>(text);
    if (!value || !(*value >= low && *value <= high)) {
      fail("'" + text + "' is no number from " + std::to_string(std::lround(low)) + " to " +
           std::to_string(std::lround(high)));
    }
    return *value;
  }

  int wholeOf(const std::string& text, int low, int high) const { return static_cast<int>(numberOf(text, low, high)); }

  /// Reads a line that begins with a pad's name: its steps, in groups.
  void readSteps(const Words& words) {
    const auto pad = padOf(words[0]);
    if (!pad) {
      fail("there is no pad '" + words[0] + "'");
    }
    int step = 0;
    for (std::size_t group = 1; group < words.size(); ++group) {
      for (const char c : words[group]) {
        if (c != '.') {
          current->hits.push_back(stepOf(c, step, *pad));
        }
        ++step;
      }
    }
    current->steps = std::max(current->steps, step);
  }

  Step stepOf(char c, int step, std::size_t pad) const {
    constexpr int kVelocityPerDigit = 14;  // 9 is a full hit.
    constexpr std::array<char, 3> kFirsts{'1', 'a', 'r'};
    for (std::size_t i = 0; i < kFirsts.size(); ++i) {
      if (c >= kFirsts[i] && c < kFirsts[i] + 9) {
        return {step, pad, static_cast<int>(i) + 1, (c - kFirsts[i] + 1) * kVelocityPerDigit + 1};
      }
    }
    fail(std::string("a step is 1 to 9, a to i, r to z or a dot, not '").append(1, c).append("'"));
  }

  /// Reads a "set" or "glide" line: a controller's name and its points, step:value.
  void readMove(const Words& words, bool glides) {
    const auto controller = controllerOf(words[1]);
    if (!controller) {
      fail("there is nothing called '" + words[1] + "' to move");
    }
    std::optional<Point> last;
    for (std::size_t i = 2; i < words.size(); ++i) {
      const std::size_t colon = words[i].find(':');
      if (colon == std::string::npos) {
        fail("expected STEP:VALUE, not '" + words[i] + "'");
      }
      const Point point{numberOf(words[i].substr(0, colon), 0.0, 1024.0), *controller,
                        valueOf(words[1], words[i].substr(colon + 1))};
      if (last && glides) {
        addGlide(*last, point);
      }
      current->moves.push_back(point);
      last = point;
    }
  }

  /// An effect's type is its name without blanks. A pitch may be given in semitones, with its sign.
  int valueOf(const std::string& name, const std::string& text) const {
    if (name == "effect.type") {
      return effectOf(text);
    }
    constexpr int kSemitones = 24;  // Either way, over the controller's range.
    const bool isSigned = text.starts_with('+') || text.starts_with('-');
    if (!isSigned || !name.ends_with(".pitch")) {
      return wholeOf(text, 0, kHighestValue);
    }
    const int semitones = wholeOf(text.substr(text.starts_with('+') ? 1 : 0), -kSemitones, kSemitones);
    return static_cast<int>(std::lround((semitones + kSemitones) * kHighestValue / (2.0 * kSemitones)));
  }

  int effectOf(const std::string& text) const {
    for (std::size_t step = 0; step < tesh::bramel::kEditScreenEffectCount; ++step) {
      std::string name = tesh::bramel::editScreenName(step);
      std::erase(name, ' ');
      if (name == text) {
        return static_cast<int>(std::lround(static_cast<double>(step) * kHighestValue /
                                            static_cast<double>(tesh::bramel::kEditScreenEffectCount - 1)));
      }
    }
    fail("there is no effect '" + text + "'");
  }

  /// Adds linear steps between two points, eight for each step of the pattern.
  void addGlide(const Point& from, const Point& to) {
    constexpr double kSpacing = 0.125;
    for (double step = from.step + kSpacing; step < to.step; step += kSpacing) {
      const double way = (step - from.step) / (to.step - from.step);
      const double value = from.value + way * (to.value - from.value);
      current->moves.push_back({step, from.controller, static_cast<int>(std::lround(value))});
    }
  }

  /// Appends a pattern and returns its length in beats.
  double play(const std::string& name) {
    const auto found = patterns.find(name);
    if (found == patterns.end()) {
      fail("there is no pattern '" + name + "'");
    }
    const double start = groove.beats + groove.endBeats;
    for (const Step& step : found->second.hits) {
      addHits(step, start);
    }
    for (const Point& point : found->second.moves) {
      // Before the hits of its step.
      const double beat = start + swung(point.step) / stepsPerBeat - human * groove.tempo / kMillisecondsPerMinute;
      groove.moves.push_back({std::max(beat, 0.0), point.controller, point.value});
    }
    return static_cast<double>(found->second.steps) / stepsPerBeat;
  }

  void addHits(const Step& step, double start) {
    constexpr double kHeldSteps = 0.9;
    constexpr int kSofter = 12;  // Each repetition within a step, as a stick that bounces.
    const double first = swung(step.step);
    const double length = (swung(step.step + 1.0) - first) / step.count;
    for (int i = 0; i < step.count; ++i) {
      const double beat = start + (first + i * length) / stepsPerBeat + away() * groove.tempo / kMillisecondsPerMinute;
      const int velocity = step.velocity - i * kSofter + static_cast<int>(std::lround(away()));
      groove.hits.push_back({std::max(beat, 0.0), kHeldSteps * length / stepsPerBeat, factory::padNote(step.pad),
                             std::clamp(velocity, 1, kHighestValue)});
    }
  }

  /// Delays every second step by the swing, and times in between in proportion.
  double swung(double step) const {
    const double even = 2.0 * std::floor(step / 2.0);
    const double late = swing / kEvenSwing;
    const double inPair = step - even;
    return even + (inPair < 1.0 ? inPair * late : late + (inPair - 1.0) * (2.0 - late));
  }

  /// A random deviation, -human to human.
  double away() {
    constexpr int kParts = 1000;
    return human * (static_cast<double>(random() % (2 * kParts + 1)) / kParts - 1.0);
  }

  std::string file;
  int line = 0;
  double swing = kEvenSwing;
  int stepsPerBeat = 4;
  int human = 0;
  std::minstd_rand random;
  std::map<std::string, Pattern> patterns;
  Pattern* current = nullptr;
  Groove groove;  ///< On the kit that was named last.
  std::vector<Groove> grooves;
};

}  // namespace

std::vector<Groove> parseGrooves(std::string_view text, std::string_view file) {
  return GrooveReader(file).read(std::string(text));
}

std::vector<Groove> readSuite(const std::string& folder) {
  std::vector<Groove> suite;
  for (const std::string& path : factory::readFileList(folder, "suite.txt", ".groove")) {
    std::ranges::move(parseGrooves(readText(path), path), std::back_inserter(suite));
  }
  return suite;
}

}  // namespace sivray::content
