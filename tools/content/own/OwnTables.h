// The index files of a sample library with own sounds, made from the factory's records and the ledger.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "content/own/Ledger.h"

namespace sivray::content {

/// The contents of the three index files.
struct IndexFiles {
  std::vector<std::uint8_t> samples;     ///< sampleparam.bin
  std::vector<std::uint8_t> waves;       ///< drumparam.bin
  std::vector<std::uint8_t> categories;  ///< drumparam_category.bin

  bool operator==(const IndexFiles&) const = default;
};

/// The position of a sound's samples in the data; all values in samples.
struct OwnStretch {
  std::uint32_t left = 0;
  std::uint32_t right = 0;  ///< Equals `left` for a mono sound.
  std::uint32_t frames = 0;
  std::uint32_t rate = 0;  ///< Hz.

  bool isStereo() const { return left != right; }
};

/// By wave number.
using OwnStretches = std::map<std::int32_t, OwnStretch>;

/// Each number between two factory waves has two fixed records in sampleparam.bin, so that adding or removing a sound
/// changes no other record. If the files are replaced one after another, each therefore still refers to the right
/// sounds.
class OwnTables {
 public:
  /// Takes the files of a factory library, or files that `files` returned. Throws std::runtime_error if they are
  /// inconsistent.
  explicit OwnTables(IndexFiles given);

  bool hasOwnNumbers() const { return isOwn; }
  std::int32_t factoryWaves() const { return waveCount; }
  std::int32_t numbers() const { return numbersBeside(waveCount); }
  const std::string& factoryName(std::int32_t wave) const { return names[static_cast<std::size_t>(wave)]; }
  /// Returns the category of a factory wave; both count from 0.
  int factoryCategory(std::int32_t wave) const;
  OwnStretch factoryStretch(std::int32_t wave) const;

  /// Returns the files for a ledger's sounds; each sound that is not removed must have a stretch. A free number plays
  /// the nearest factory wave, the number of a removed sound its stand-in.
  IndexFiles files(const Ledger& ledger, const OwnStretches& stretches) const;

  /// Returns the stretches of own numbers in the given files.
  OwnStretches stretches() const;

  /// Returns the sounds that the given files list, without their hashes and file names.
  std::vector<OwnSound> listed() const;

 private:
  std::size_t indexOf(std::int32_t wave) const;
  std::size_t sampleRecordOf(std::int32_t number) const;
  OwnStretch stretchAt(std::size_t left, std::size_t right) const;

  IndexFiles source;
  bool isOwn = false;
  std::int32_t waveCount = 0;
  std::size_t factorySampleBytes = 0;
  std::vector<std::string> names;
};

}  // namespace sivray::content
