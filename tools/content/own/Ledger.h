// The list of the user's own sounds: which wave number each has, and had. It is a text that a person can read.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "content/library/Wave.h"
#include "engine/samples/IndexRecords.h"

namespace sivray::content {

using tesh::bramel::plugin::sivray::kNumbersPerFactoryWave;

/// A sound of the user's, or one that was.
struct OwnSound {
  std::int32_t number = 0;
  int category = 0;          ///< Index into kCategoryNames.
  std::uint64_t hash = 0;    ///< Of its rate and samples.
  std::string name;          ///< 1 to 12 bytes.
  std::string file;          ///< In the folder of own files; empty for a removed sound.
  std::int32_t standIn = 0;  ///< Of a removed sound: the factory wave that plays in its place.

  bool isRemoved() const { return file.empty(); }
};

struct Ledger {
  std::uint64_t factory = 0;     ///< Fingerprint of the factory content beside which the sounds are.
  std::vector<OwnSound> sounds;  ///< In the order in which they were added; removed ones in that of their removal.

  /// Null if there is no such sound, removed or not.
  const OwnSound* withNumber(std::int32_t number) const;
  const OwnSound* withHash(std::uint64_t hash) const;
};

/// Returns the hash by which a sound is known again, whatever its file is called.
std::uint64_t hashOf(const Wave& wave);

/// Returns the ledger's text, a sound a line, with a last line by which a text that was cut is recognised.
std::string textOf(const Ledger& ledger);

struct LedgerReading {
  Ledger ledger;      ///< What the lines without fault tell.
  std::string fault;  ///< The first one, as "line 3: there is no category 'Kik'"; empty if there is none.
};

/// Reads a ledger of sounds beside so many factory waves.
LedgerReading readLedger(std::string_view text, std::int32_t factoryWaves);

/// Returns how many wave numbers content with own sounds has beside so many factory waves.
constexpr std::int32_t numbersBeside(std::int32_t factoryWaves) {
  return (factoryWaves - 1) * kNumbersPerFactoryWave + 1;
}

}  // namespace sivray::content
