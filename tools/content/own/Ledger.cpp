// Writes and reads the ledger, whose fields are separated by tabs.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/own/Ledger.h"

#include <algorithm>
#include <cstdio>
#include <set>
#include <stdexcept>

#include "content/synth/Random.h"
#include "core/Text.h"

namespace sivray::content {
namespace {

constexpr std::string_view kFirstLine = "Sivray's own sounds, form 1";
constexpr int kHexadecimal = 16;

std::string hexOf(std::uint64_t number) {
  char text[kHexadecimal + 1];
  std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(number));
  return text;
}

template <typename Number>
Number numberIn(std::string_view field, int base = 10) {
  if (const auto number = tesh::cofu::core::readNumber<Number>(field, base)) {
    return *number;
  }
  throw std::invalid_argument("'" + std::string(field) + "' is no number");
}

std::vector<std::string_view> cutAt(std::string_view text, char mark) {
  std::vector<std::string_view> parts;
  for (std::size_t from = 0;; ++from) {
    const std::size_t to = text.find(mark, from);
    parts.push_back(text.substr(from, to == std::string_view::npos ? to : to - from));
    if (to == std::string_view::npos) {
      return parts;
    }
    from = to;
  }
}

/// Parses the ledger line by line and keeps the valid ones.
class LedgerReader {
 public:
  explicit LedgerReader(std::int32_t waves) : factoryWaves(waves) {}

  /// Throws std::invalid_argument for an invalid line.
  void take(std::string_view line) {
    const std::vector<std::string_view> fields = cutAt(line, '\t');
    if (isEnded) {
      throw std::invalid_argument("there is something behind the end");
    }
    if (fields.front() == "factory" && fields.size() == 2) {
      ledger.factory = numberIn<std::uint64_t>(fields[1], kHexadecimal);
    } else if (fields.front() == "end" && fields.size() == 2) {
      isEnded = true;
      if (numberIn<std::size_t>(fields[1]) != ledger.sounds.size()) {
        throw std::invalid_argument("the lines before are not " + std::string(fields[1]) + " sounds");
      }
    } else if (fields.size() == 6 && (fields.front() == "sound" || fields.front() == "removed")) {
      takeSound(fields);
    } else {
      throw std::invalid_argument("this is no line of a ledger");
    }
  }

  Ledger ledger;
  bool isEnded = false;

 private:
  void takeSound(const std::vector<std::string_view>& fields) {
    OwnSound sound;
    sound.number = numberIn<std::int32_t>(fields[1]);
    const auto* const category = std::ranges::find(kCategoryNames, fields[2]);
    sound.category = static_cast<int>(category - kCategoryNames.begin());
    sound.hash = numberIn<std::uint64_t>(fields[3], kHexadecimal);
    sound.name = fields[4];
    const auto quoted = [](std::string_view text) { return "'" + std::string(text) + "'"; };
    if (sound.number <= 0 || sound.number >= numbersBeside(factoryWaves) ||
        sound.number % kNumbersPerFactoryWave == 0 || numbers.contains(sound.number)) {
      throw std::invalid_argument(quoted(fields[1]) + " is no free number of an own sound");
    }
    if (category == kCategoryNames.end()) {
      throw std::invalid_argument("there is no category " + quoted(fields[2]));
    }
    if (sound.name.empty() || sound.name.size() > kLongestWaveName) {
      throw std::invalid_argument(quoted(fields[4]) + " is no name of 1 to 12 bytes");
    }
    if (fields.front() == "removed") {
      sound.standIn = numberIn<std::int32_t>(fields[5]);
      if (sound.standIn < 0 || sound.standIn >= factoryWaves) {
        throw std::invalid_argument("there is no factory wave " + quoted(fields[5]));
      }
    } else {
      sound.file = fields[5];
      if (sound.file.empty() || sound.file.find('/') != std::string::npos || sound.file.front() == '.') {
        throw std::invalid_argument(quoted(fields[5]) + " is no name of an own file");
      }
      if (!names.insert(sound.name).second) {
        throw std::invalid_argument("another sound is called " + quoted(sound.name) + " as well");
      }
    }
    numbers.insert(sound.number);
    ledger.sounds.push_back(std::move(sound));
  }

  std::int32_t factoryWaves;
  std::set<std::int32_t> numbers;
  std::set<std::string> names;
};

}  // namespace

const OwnSound* Ledger::withNumber(std::int32_t number) const {
  const auto found = std::ranges::find(sounds, number, &OwnSound::number);
  return found == sounds.end() ? nullptr : &*found;
}

std::uint64_t hashOf(const Wave& wave) {
  const auto bytesOf = [](const std::vector<std::int16_t>& side) {
    return std::string_view(reinterpret_cast<const char*>(side.data()), 2 * side.size());
  };
  return seedOf(std::to_string(wave.sampleRate) + '|' + hexOf(seedOf(bytesOf(wave.left))) + '|' +
                hexOf(seedOf(bytesOf(wave.right))));
}

std::string textOf(const Ledger& ledger) {
  std::string text = std::string(kFirstLine) + "\nfactory\t" + hexOf(ledger.factory) + "\n";
  for (const OwnSound& sound : ledger.sounds) {
    text += (sound.isRemoved() ? "removed\t" : "sound\t") + std::to_string(sound.number) + '\t' +
            std::string(kCategoryNames[static_cast<std::size_t>(sound.category)]) + '\t' + hexOf(sound.hash) + '\t' +
            sound.name + '\t' + (sound.isRemoved() ? std::to_string(sound.standIn) : sound.file) + '\n';
  }
  return text + "end\t" + std::to_string(ledger.sounds.size()) + "\n";
}

LedgerReading readLedger(std::string_view text, std::int32_t factoryWaves) {
  LedgerReader reader(factoryWaves);
  LedgerReading reading;
  const auto keep = [&reading](std::size_t line, const std::string& reason) {
    if (reading.fault.empty()) {
      reading.fault = "line " + std::to_string(line) + ": " + reason;
    }
  };
  std::vector<std::string_view> lines = cutAt(text, '\n');
  const bool isWhole = lines.back().empty();
  lines.pop_back();  // The empty text after the last line break.
  for (std::size_t i = 0; i < lines.size(); ++i) {
    try {
      if (i == 0 && lines[i] != kFirstLine) {
        throw std::invalid_argument("this is no list of own sounds");
      }
      if (i > 0) {
        reader.take(lines[i]);
      }
    } catch (const std::invalid_argument& error) {
      keep(i + 1, error.what());
    }
  }
  if (!reader.isEnded || !isWhole) {
    keep(lines.size() + 1, "the end is missing");
  }
  reading.ledger = std::move(reader.ledger);
  return reading;
}

}  // namespace sivray::content
