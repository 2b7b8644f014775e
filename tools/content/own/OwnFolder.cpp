// The lock, and steps on the disk that the standard library does not offer.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/own/OwnFolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <vector>

#include "content/Files.h"
#include "content/synth/Random.h"
#include "platform/SpecialFolders.h"
#include "terminal/Interrupt.h"

namespace sivray::content {
namespace {

namespace fs = std::filesystem;
namespace platform = tesh::bramel::platform;

std::runtime_error systemFault(const fs::path& path, const char* what) {
  return std::runtime_error(textOf(path) + ": " + what + ": " + std::strerror(errno));
}

}  // namespace

OwnPaths::OwnPaths() : root(pathOf(platform::ownContentFolder())) {
  if (root.empty()) {
    throw std::runtime_error("there is no place for your sounds: neither XDG_DATA_HOME nor HOME names a folder");
  }
  tree = root / "Tesh";
  newTree = root / "Tesh.new";
  library = libraryIn(tree);
  files = root / "files";
  ledger = root / "ledger.txt";
}

fs::path OwnPaths::libraryIn(const fs::path& someTree) { return someTree / "Bramel" / "Resource" / "SivrayPCM"; }

OwnLock::OwnLock(const OwnPaths& paths, const Say& say) {
  constexpr auto kPause = std::chrono::milliseconds(50);
  std::error_code error;
  fs::create_directories(paths.files, error);
  const fs::path file = paths.root / "lock";
  handle = ::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
  if (handle < 0) {
    throw systemFault(paths.root, "cannot be written");
  }
  bool isTold = false;
  while (::flock(handle, LOCK_EX | LOCK_NB) != 0) {
    if (!isTold) {
      say("Another program is changing your sounds; waiting for it");
      isTold = true;
    }
    if (InterruptWatch::hasArrived()) {
      ::close(handle);
      InterruptWatch::check();
    }
    std::this_thread::sleep_for(kPause);
  }
  if (::access(paths.root.c_str(), W_OK) != 0 || ::access(paths.files.c_str(), W_OK) != 0) {
    const int reason = errno;
    ::close(handle);
    errno = reason;
    throw systemFault(paths.root, "cannot be written");
  }
}

OwnLock::~OwnLock() { ::close(handle); }

fs::path installedTree() {
  const std::string folder = platform::installedFilesFolder();
  return folder.empty() ? fs::path() : pathOf(folder) / "Tesh";
}

std::uint64_t fingerprintOf(const fs::path& tree) {
  std::vector<std::string> lines;
  std::error_code error;
  for (fs::recursive_directory_iterator entry(tree, fs::directory_options::follow_directory_symlink, error), end;
       !error && entry != end; entry.increment(error)) {
    std::error_code unreadable;
    if (entry->is_regular_file(unreadable)) {
      const auto time = entry->last_write_time(unreadable).time_since_epoch();
      lines.push_back(textOf(entry->path().lexically_relative(tree)) + '|' +
                      std::to_string(entry->file_size(unreadable)) + '|' +
                      std::to_string(std::chrono::duration_cast<std::chrono::seconds>(time).count()));
    }
  }
  std::ranges::sort(lines);
  std::string text;
  for (const std::string& line : lines) {
    text += line + '\n';
  }
  return lines.empty() ? 0 : seedOf(text);
}

void flush(const fs::path& path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  const bool good = file >= 0 && ::fsync(file) == 0;
  if (file >= 0) {
    ::close(file);
  }
  if (!good) {
    throw systemFault(path, "cannot be written");
  }
}

void exchange(const fs::path& current, const fs::path& next) {
  if (!fs::exists(current)) {
    fs::rename(next, current);
    return;
  }
#ifdef RENAME_EXCHANGE
  if (::renameat2(AT_FDCWD, current.c_str(), AT_FDCWD, next.c_str(), RENAME_EXCHANGE) == 0) {
    return;
  }
#endif
  const fs::path aside = fs::path(current) += ".old";
  fs::remove_all(aside);
  fs::rename(current, aside);
  try {
    fs::rename(next, current);
  } catch (...) {
    fs::rename(aside, current);
    throw;
  }
  fs::rename(aside, next);
}

}  // namespace sivray::content
