// The lock of the folder, and the fingerprint of the installed content.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/own/OwnFolder.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <vector>

#include "content/Files.h"
#include "content/synth/Random.h"
#include "platform/SpecialFolders.h"
#include "terminal/Interrupt.h"

namespace sivray::content {
namespace fs = std::filesystem;
namespace platform = tesh::bramel::platform;

OwnPaths::OwnPaths() : root(pathOf(platform::ownContentFolder())) {
  if (root.empty()) {
    throw std::runtime_error("there is no place for your sounds: neither XDG_DATA_HOME nor HOME names a folder");
  }
  tree = root / "Tesh";
  newTree = root / "Tesh.new";
  library = libraryIn(tree);
  files = root / "files";
  ledger = root / "ledger.txt";
  exchanging = root / ".exchanging";
}

fs::path OwnPaths::libraryIn(const fs::path& someTree) { return someTree / "Bramel" / "Resource" / "SivrayPCM"; }

OwnLock::OwnLock(const OwnPaths& paths, const Say& say) {
  constexpr auto kPause = std::chrono::milliseconds(50);
  std::error_code error;
  fs::create_directories(paths.files, error);
  bool isTold = false;
  while ((file = LockFile::tryHold(paths.root / "lock")) == nullptr) {
    if (!isTold) {
      say("Another program is changing your sounds; waiting for it");
      isTold = true;
    }
    InterruptWatch::check();
    std::this_thread::sleep_for(kPause);
  }
  requireWritable(paths.root);
  requireWritable(paths.files);
}

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

}  // namespace sivray::content
