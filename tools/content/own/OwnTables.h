// The index files of a sample library with own sounds, made of the factory's records and the ledger.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "content/own/Ledger.h"

namespace sivray::content {

/// The bytes of the three index files.
struct IndexFiles {
  std::vector<std::uint8_t> samples;     ///< sampleparam.bin
  std::vector<std::uint8_t> waves;       ///< drumparam.bin
  std::vector<std::uint8_t> categories;  ///< drumparam_category.bin

  bool operator==(const IndexFiles&) const = default;
};

/// Where the samples of a sound are in the data, in samples.
struct OwnStretch {
  std::uint32_t left = 0;
  std::uint32_t right = 0;  ///< As `left` for a mono sound.
  std::uint32_t frames = 0;
  std::uint32_t rate = 0;  ///< Hz.

  bool isStereo() const { return left != right; }
};

/// By number.
using OwnStretches = std::map<std::int32_t, OwnStretch>;

/// Each number between two factory waves has two records in sampleparam.bin, always the same ones, so that no record of
/// a wave changes when another sound comes or goes. A file that is replaced after another one therefore never names
/// another sound than before.
class OwnTables {
 public:
  /// Takes the files of a factory library, or those that `files` returned. Throws std::runtime_error if they do not
  /// belong together.
  explicit OwnTables(IndexFiles given);

  bool hasOwnNumbers() const { return isOwn; }
  std::int32_t factoryWaves() const { return waveCount; }
  std::int32_t numbers() const { return numbersBeside(waveCount); }
  const std::string& factoryName(std::int32_t wave) const { return names[static_cast<std::size_t>(wave)]; }
  /// From 0.
  int factoryCategory(std::int32_t wave) const;
  OwnStretch factoryStretch(std::int32_t wave) const;

  /// Returns the files for the sounds of a ledger, of which each that is not removed has a stretch. A free number plays
  /// the nearest factory wave, a removed sound's its stand-in.
  IndexFiles files(const Ledger& ledger, const OwnStretches& stretches) const;

  /// Returns the stretches that the given files hold for own numbers.
  OwnStretches stretches() const;

  /// Returns the sounds that the given files list, without hashes and files.
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
