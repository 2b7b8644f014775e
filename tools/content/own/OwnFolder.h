// The folder of the user's own sounds: what lies in it, the lock by which one program at a time changes it, and what a
// program that was killed left half done.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "content/own/OwnDisk.h"

namespace sivray::content {

/// Receives a line for the user.
using Say = std::function<void(const std::string& line)>;

/// Where things are below platform::ownContentFolder().
struct OwnPaths {
  /// Throws std::runtime_error if the system has no place for data of the user.
  OwnPaths();

  std::filesystem::path root;
  std::filesystem::path tree;     ///< Tesh, as every form reads it.
  std::filesystem::path newTree;  ///< The next one while it is being built.
  std::filesystem::path library;  ///< SivrayPCM in `tree`.
  std::filesystem::path files;    ///< The user's own files.
  std::filesystem::path ledger;
  std::filesystem::path exchanging;  ///< Is there while one tree takes the other's place.

  static std::filesystem::path libraryIn(const std::filesystem::path& someTree);
};

/// What a file is called in the folder of own files until the ledger names it.
inline constexpr const char* kUnlistedPrefix = ".new ";

/// Held by one program at a time, until it ends.
class OwnLock {
 public:
  /// Makes the folder and waits for a program that changes it, which `say` tells. Throws std::runtime_error if the
  /// folder cannot be written, and Interrupted.
  OwnLock(const OwnPaths& paths, const Say& say);

 private:
  std::unique_ptr<LockFile> file;
};

/// Returns a number that tells one state of the installed content from another, by its files' names, sizes and times.
/// 0 if none is installed.
std::uint64_t fingerprintOf(const std::filesystem::path& installedTree);

/// The tree Tesh of the installed content; empty if there is none.
std::filesystem::path installedTree();

}  // namespace sivray::content
