// The user's content with own sounds: the ledger and the tables made of it, and how both change together.
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

/// Returns the begin of an own file's name, such as "0017 ".
std::string ownFileStart(std::int32_t number);

/// Reads the index files of a sample library's folder. Throws std::runtime_error naming the file.
IndexFiles readIndexFiles(const std::filesystem::path& library);

/// What the folder holds, as one program sees it that holds the folder's lock. Nothing is written before a change is
/// committed, but for what mends what a killed program left.
class OwnContent {
 public:
  /// Reads ledger and tables. Where the ledger is broken, its good lines and the tables give a new one; the broken one
  /// is kept beside it, and `say` tells so. Throws std::runtime_error if neither own content nor a factory's is there,
  /// and as OwnLock does.
  explicit OwnContent(Say say);

  const OwnPaths& paths() const { return places; }
  const Ledger& ledger() const { return list; }
  const OwnTables& tables() const { return *index; }

  /// Whether the factory content that is installed is another one than that beside the sounds.
  bool isOutdated() const;
  /// Whether the tables have to be built anew before they can hold the ledger's sounds.
  bool needsBuilding() const;
  /// Whether the tables say something else than the ledger.
  bool differs() const;

  /// Of the ledger's sounds that the tables know.
  const OwnStretches& stretches() const { return known; }

  /// Returns the samples of a wave, own or of the factory, by its stretch in the data.
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
