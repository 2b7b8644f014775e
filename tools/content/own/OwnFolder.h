// The folder of the user's own sounds: its paths, the lock that lets one program at a time change it, and the leftovers
// of a program that was killed.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "content/own/OwnDisk.h"

namespace sivray::content {

/// Receives a line of text for the user.
using Say = std::function<void(const std::string& line)>;

/// The paths below platform::ownContentFolder().
struct OwnPaths {
  /// Throws std::runtime_error if the system has no folder for the user's data.
  OwnPaths();

  std::filesystem::path root;
  std::filesystem::path tree;     ///< The folder Tesh, which every form of the plug-in reads.
  std::filesystem::path newTree;  ///< The next version of it, while it is being built.
  std::filesystem::path library;  ///< SivrayPCM in `tree`.
  std::filesystem::path files;    ///< The copies of the user's own files.
  std::filesystem::path ledger;
  std::filesystem::path exchanging;  ///< Exists while newTree is replacing tree.

  static std::filesystem::path libraryIn(const std::filesystem::path& someTree);
};

/// Prefix of a file's name in the folder of own files until the ledger lists it.
inline constexpr const char* kUnlistedPrefix = ".new ";

/// The folder's lock, held by one program at a time until the object ends.
class OwnLock {
 public:
  /// Creates the folder, and waits while another program changes it; `say` reports the wait. Throws std::runtime_error
  /// if the folder is not writable, and Interrupted.
  OwnLock(const OwnPaths& paths, const Say& say);

 private:
  std::unique_ptr<LockFile> file;
};

/// Returns a hash of the installed content's file names, sizes and times, which changes with the content. 0 if none is
/// installed.
std::uint64_t fingerprintOf(const std::filesystem::path& installedTree);

/// Returns the folder Tesh of the installed content; empty if there is none.
std::filesystem::path installedTree();

}  // namespace sivray::content
