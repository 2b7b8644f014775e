// A change of the user's own sounds, which is done as a whole or not at all.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "content/own/OwnContent.h"

namespace sivray::content {

/// New samples go behind the others in the data, where no table names them yet; the tables follow when the change is
/// committed, one after the other, so that whoever reads them meanwhile never hears another sound than the one named.
/// Unless it is committed, its end takes everything back. Operations throw std::runtime_error with a line for the user.
class OwnChange {
 public:
  /// `anew` builds all of the content again beside the installed factory content, which is also done where it has to
  /// be.
  enum class Build : std::uint8_t { asNeeded, anew };

  OwnChange(OwnContent& content, Build build);
  ~OwnChange();
  OwnChange(const OwnChange&) = delete;
  OwnChange& operator=(const OwnChange&) = delete;

  /// Whether the data can hold the samples of one more sound.
  bool hasRoomFor(const Wave& wave) const;

  /// Writes the samples of a new sound with a number. There must be room for them.
  void append(std::int32_t number, const Wave& wave);

  /// Copies the file of a new sound, and returns the name of the copy.
  std::string keepFile(std::int32_t number, const std::filesystem::path& source);

  /// Makes the ledger and the tables those of `next`, and removes the files of sounds that it no longer has. A sound
  /// whose samples are gone, as those of a ledger that somebody edited, becomes a removed one.
  void commit(Ledger next);

 private:
  void prepareTree();
  void reopen();
  void dropLost(Ledger& next) const;
  void amend(const Ledger& next);
  void replaceTree(const Ledger& next);
  void write(const std::filesystem::path& file, const std::vector<std::uint8_t>& bytes);
  void showFiles(const Ledger& next);
  void takeBack();

  OwnContent& content;
  bool isAnew = false;
  std::filesystem::path library;   ///< Whose data grows.
  std::optional<OwnTables> index;  ///< Of that library.
  OwnStretches stretches;
  std::vector<std::string> copies;
  std::unique_ptr<GrowingFile> data;
  std::uint64_t oldBytes = 0;
  std::uint64_t usedBytes = 0;
  bool isCommitted = false;
};

}  // namespace sivray::content
