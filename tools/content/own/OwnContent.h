// The user's content with own sounds: the ledger, the tables made from it, and how both change together.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "content/library/Wave.h"
#include "content/own/Ledger.h"
#include "content/own/OwnFolder.h"
#include "content/own/OwnTables.h"

namespace sivray::content {

/// Returns the start of an own file's name, for example "0017 ".
std::string ownFileStart(std::int32_t number);

/// Reads the index files of a sample library's folder. Throws std::runtime_error naming the file.
IndexFiles readIndexFiles(const std::filesystem::path& library);

/// The contents of the folder, as read by the program that holds its lock. Only a committed change writes to it, except
/// for repairs after a killed program.
class OwnContent {
 public:
  /// Reads ledger and tables. If the ledger is broken, a new one is made from its good lines and the tables; the broken
  /// one is kept beside it, and `say` reports this. Throws std::runtime_error if there is neither own nor factory
  /// content, and whatever OwnLock throws.
  explicit OwnContent(Say say);

  const OwnPaths& paths() const { return places; }
  const Ledger& ledger() const { return list; }
  const OwnTables& tables() const { return *index; }

  /// Whether the installed factory content differs from the one that the tables were built from.
  bool isOutdated() const;
  /// Whether the tables must be rebuilt before they can hold the ledger's sounds.
  bool needsBuilding() const;
  /// Whether the tables disagree with the ledger.
  bool differs() const;

  /// Where the samples of the ledger's sounds are, for those that the tables hold.
  const OwnStretches& stretches() const { return known; }

  /// Returns the samples at a stretch of the data, of an own sound or a factory wave.
  Wave waveAt(const OwnStretch& stretch) const;

  const Say& say() const { return tell; }

 private:
  friend class OwnChange;

  void readTables();
  void readList();
  void mend();

  Say tell;
  OwnPaths places;
  OwnLock lock;
  bool hasTree = false;
  std::optional<OwnTables> index;
  IndexFiles onDisk;
  OwnStretches known;
  Ledger list;
};

}  // namespace sivray::content
