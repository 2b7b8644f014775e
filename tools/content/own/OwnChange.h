// A transaction on the user's own sounds: it takes effect as a whole or not at all.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "content/own/OwnContent.h"

namespace sivray::content {

/// New samples are appended to the data, where no table refers to them yet. `commit` writes the tables one after the
/// other, in an order in which a plug-in that reads them meanwhile never plays a wrong sound. The destructor undoes an
/// uncommitted change. Operations throw std::runtime_error with a line for the user.
class OwnChange {
 public:
  /// `anew` rebuilds all content from the installed factory content; `asNeeded` does so only where it is required.
  enum class Build : std::uint8_t { asNeeded, anew };

  OwnChange(OwnContent& content, Build build);
  ~OwnChange();
  OwnChange(const OwnChange&) = delete;
  OwnChange& operator=(const OwnChange&) = delete;

  /// Whether the data can hold the samples of one more sound.
  bool hasRoomFor(const Wave& wave) const;

  /// Appends the samples of a new sound with this number. Requires hasRoomFor.
  void append(std::int32_t number, const Wave& wave);

  /// Copies the file of a new sound, and returns the name of the copy.
  std::string keepFile(std::int32_t number, const std::filesystem::path& source);

  /// Writes `next` as ledger and tables, and deletes the files of sounds that it no longer has. A sound without samples
  /// (its line was edited by hand) becomes a removed one.
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
  std::filesystem::path library;   ///< Folder of the library whose data grows.
  std::optional<OwnTables> index;  ///< The tables of that library.
  OwnStretches stretches;
  std::vector<std::string> copies;
  std::unique_ptr<GrowingFile> data;
  std::uint64_t oldBytes = 0;
  std::uint64_t usedBytes = 0;
  bool isCommitted = false;
};

}  // namespace sivray::content
