// The words that name a category, and the splitting of a name into words.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/pack/Categories.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <vector>

namespace sivray::content {
namespace {

enum Category { kKick, kSnare, kClap, kClosed, kOpen, kTom, kCymbal, kPerc, kFx, kHit };

struct Word {
  std::string_view text;  ///< In lower case, without the plural's s.
  Category category;
};

/// The first of these words that a name contains decides: names of instruments come before ways of playing.
constexpr Word kWords[] = {
    {"ohh", kOpen},      {"oh", kOpen},       {"chh", kClosed},      {"ch", kClosed},      {"clap", kClap},
    {"handclap", kClap}, {"cp", kClap},       {"cymbal", kCymbal},   {"cym", kCymbal},     {"crash", kCymbal},
    {"crashe", kCymbal}, {"ride", kCymbal},   {"china", kCymbal},    {"splash", kCymbal},  {"gong", kCymbal},
    {"cy", kCymbal},     {"tom", kTom},       {"tomtom", kTom},      {"lt", kTom},         {"mt", kTom},
    {"ht", kTom},        {"rimshot", kSnare}, {"rim", kPerc},        {"sidestick", kPerc}, {"stick", kPerc},
    {"rs", kPerc},       {"perc", kPerc},     {"percussion", kPerc}, {"conga", kPerc},     {"bongo", kPerc},
    {"shaker", kPerc},   {"tamb", kPerc},     {"tambourine", kPerc}, {"cowbell", kPerc},   {"cb", kPerc},
    {"clave", kPerc},    {"maraca", kPerc},   {"cabasa", kPerc},     {"guiro", kPerc},     {"agogo", kPerc},
    {"triangle", kPerc}, {"timbale", kPerc},  {"woodblock", kPerc},  {"block", kPerc},     {"djembe", kPerc},
    {"cajon", kPerc},    {"tabla", kPerc},    {"bell", kPerc},       {"castanet", kPerc},  {"vibraslap", kPerc},
    {"snap", kPerc},     {"kick", kKick},     {"kik", kKick},        {"bd", kKick},        {"bassdrum", kKick},
    {"snare", kSnare},   {"snr", kSnare},     {"sd", kSnare},        {"sn", kSnare},       {"fx", kFx},
    {"sfx", kFx},        {"effect", kFx},     {"riser", kFx},        {"sweep", kFx},       {"noise", kFx},
    {"impact", kFx},     {"scratch", kFx},    {"zap", kFx},          {"laser", kFx},       {"hit", kHit},
    {"stab", kHit},      {"chord", kHit},     {"orch", kHit},        {"vox", kHit},        {"vocal", kHit},
};

/// Splits at each character that is not a letter, and where a capital follows a lower-case letter.
std::vector<std::string> wordsOf(std::string_view name) {
  std::vector<std::string> words;
  bool isInWord = false;
  char last = ' ';
  for (const char letter : name) {
    const auto code = static_cast<unsigned char>(letter);
    const bool isLetter = code >= 0x80 || std::isalpha(code) != 0;
    if (isLetter && (!isInWord || (std::isupper(code) != 0 && std::islower(static_cast<unsigned char>(last)) != 0))) {
      words.emplace_back();
    }
    if (isLetter) {
      words.back() += static_cast<char>(std::tolower(code));
    }
    isInWord = isLetter;
    last = letter;
  }
  return words;
}

bool isWord(std::string_view word, std::string_view known) {
  return word == known || (word.ends_with('s') && word.substr(0, word.size() - 1) == known);
}

bool holds(const std::vector<std::string>& words, std::initializer_list<std::string_view> known) {
  return std::ranges::any_of(words, [&](const std::string& word) {
    return std::ranges::any_of(known, [&](std::string_view one) { return isWord(word, one); });
  });
}

/// Recognises a hat in one word ("openhat", "hihat") or in two ("hi hat open").
std::optional<CategoryMatch> hatIn(const std::vector<std::string>& words) {
  std::string all;
  for (const std::string& word : words) {
    all += word;
  }
  const bool isHat = holds(words, {"hat", "hh"}) || all.find("hihat") != std::string::npos ||
                     all.find("openhat") != std::string::npos || all.find("closedhat") != std::string::npos;
  if (!isHat) {
    return std::nullopt;
  }
  const bool isOpen = holds(words, {"open", "op", "o", "half"}) || all.find("openh") != std::string::npos;
  const bool isClosed =
      holds(words, {"closed", "close", "cl", "c", "pedal", "foot"}) || all.find("closedh") != std::string::npos;
  return CategoryMatch{isOpen ? kOpen : kClosed, isOpen || isClosed};
}

}  // namespace

std::optional<CategoryMatch> categoryIn(std::string_view name) {
  const std::vector<std::string> words = wordsOf(name);
  if (const auto hat = hatIn(words)) {
    return hat;
  }
  if (holds(words, {"bass"}) && holds(words, {"drum"})) {
    return CategoryMatch{kKick, true};
  }
  for (const Word& known : kWords) {
    if (holds(words, {known.text})) {
      return CategoryMatch{known.category, true};
    }
  }
  // Compound words in lower case, such as "layeredkick".
  constexpr std::size_t kTellingLength = 4;
  for (const Word& known : kWords) {
    const auto isPart = [&](const std::string& word) { return word.find(known.text) != std::string::npos; };
    if (known.text.size() >= kTellingLength && std::ranges::any_of(words, isPart)) {
      return CategoryMatch{known.category, true};
    }
  }
  return std::nullopt;
}

}  // namespace sivray::content
