// Brings a user's files into the content with own sounds.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "content/own/OwnContent.h"

namespace sivray::content {

/// What became of a file.
struct FileOutcome {
  enum class Kind : std::uint8_t { added, known, unused };

  Kind kind = Kind::unused;
  std::string path;
  OwnSound sound;        ///< Of a file that is not unused.
  std::string note;      ///< Why it is unused, as "holds no samples"; else what is to be said of it, or empty.
  bool isGuess = false;  ///< No name told the category.
};

struct AddWish {
  std::vector<std::string> paths;              ///< Files and folders.
  std::optional<int> category;                 ///< Of all of them; else their names tell.
  std::map<std::string, int> categories = {};  ///< Of single files by their paths, before what their names tell.
};

struct AddReport {
  std::function<void(const FileOutcome&)> tell;  ///< When nothing can go wrong any more.
  /// On the calling thread: the part of the files that is read, rising. 1 once, when all are read and kept, and only
  /// the tables are left to write.
  std::function<void(double)> progress;
};

/// Adds all files that can be used, and returns how many there are with those that were there before. A sound that is
/// there already, or was, keeps its number, whatever its file is called. Takes everything back and throws what stopped
/// it: std::runtime_error with a line for the user, or Interrupted.
std::size_t addSounds(OwnContent& content, const AddWish& wish, const AddReport& report);

/// The list that an exported song's files bring along: the numbers that the song knows them by.
inline constexpr const char* kNumbersFile = "sivray-numbers.txt";

}  // namespace sivray::content
