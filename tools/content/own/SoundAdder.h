// Adds a user's files to the content with own sounds.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "content/own/OwnContent.h"

namespace sivray::content {

/// The result for one file.
struct FileOutcome {
  enum class Kind : std::uint8_t { added, known, unused };

  Kind kind = Kind::unused;
  std::string path;
  OwnSound sound;  ///< Valid unless the file is unused.
  /// The reason if it is unused, for example "holds no samples"; else a remark for the user, or empty.
  std::string note;
  bool isGuess = false;  ///< No name told the category, so it is a guess.
};

struct AddWish {
  std::vector<std::string> paths;  ///< Files and folders.
  std::optional<int> category;     ///< Category of all files; if not given, their names decide.
  /// Categories of single files, by path; they take precedence over names.
  std::map<std::string, int> categories = {};
};

struct AddReport {
  /// Called for each file once the change is complete and cannot fail any more.
  std::function<void(const FileOutcome&)> tell;
  /// Called on the calling thread with the share of the files that have been read, ascending. 1 is sent once, when all
  /// files are read and stored and only the tables remain to be written.
  std::function<void(double)> progress;
};

/// Adds all usable files and returns their number, including those that were there before. A sound that is or was there
/// keeps its number under any file name. On an error undoes everything and throws std::runtime_error with a line for
/// the user, or Interrupted.
std::size_t addSounds(OwnContent& content, const AddWish& wish, const AddReport& report);

/// The list in an exported song's folder: the numbers by which the song refers to its sounds.
inline constexpr const char* kNumbersFile = "sivray-numbers.txt";

}  // namespace sivray::content
