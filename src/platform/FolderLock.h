// Lets one process at a time change what is in a folder.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace tesh::bramel::platform {

/// Excludes others of its kind for the same folder, in this process too, from construction to destruction, both on one
/// thread. Leaves no file behind, and a process that crashes lets go. Any thread but the audio thread.
class FolderLock {
 public:
  static constexpr std::chrono::milliseconds kLongestWait{1000};

  /// Waits at most `longest` while another lock is held. If it cannot lock the folder, `isHeld` is false, and the
  /// caller goes ahead unprotected.
  explicit FolderLock(const std::string& folder, std::chrono::milliseconds longest = kLongestWait);
  ~FolderLock();
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

  bool isHeld() const { return handle != kNotHeld; }

 private:
  static constexpr std::intptr_t kNotHeld = -1;
  std::intptr_t handle = kNotHeld;
};

}  // namespace tesh::bramel::platform
