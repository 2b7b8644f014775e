// The list of the user's own sounds with their wave numbers, removed sounds included. It is a text file that a person
// can read.
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

/// One of the user's sounds, or a removed one.
struct OwnSound {
  std::int32_t number = 0;
  int category = 0;          ///< Index into kCategoryNames.
  std::uint64_t hash = 0;    ///< Of its sample rate and samples, see hashOf.
  std::string name;          ///< 1 to 12 bytes.
  std::string file;          ///< Name in the folder of own files; empty for a removed sound.
  std::int32_t standIn = 0;  ///< The factory wave that plays instead of a removed sound.

  bool isRemoved() const { return file.empty(); }
};

struct Ledger {
  std::uint64_t factory = 0;     ///< Fingerprint of the factory content that the tables were built from.
  std::vector<OwnSound> sounds;  ///< In the order in which they were added; removed ones in the order of their removal.

  /// Returns null if no sound, present or removed, has that number.
  const OwnSound* withNumber(std::int32_t number) const;
};

/// Returns the hash by which a sound is recognised under any file name.
std::uint64_t hashOf(const Wave& wave);

/// Returns the ledger's text, one line for each sound, and a last line whose absence shows that the text was cut.
std::string textOf(const Ledger& ledger);

struct LedgerReading {
  Ledger ledger;      ///< The contents of the valid lines.
  std::string fault;  ///< The first fault, for example "line 3: there is no category 'Kik'"; empty if there is none.
};

/// Reads a ledger whose sounds are beside `factoryWaves` factory waves.
LedgerReading readLedger(std::string_view text, std::int32_t factoryWaves);

/// Returns the number of wave numbers in content with own sounds and this many factory waves.
constexpr std::int32_t numbersBeside(std::int32_t factoryWaves) {
  return (factoryWaves - 1) * kNumbersPerFactoryWave + 1;
}

}  // namespace sivray::content
