// Makes waves from a user's folder of sound files. It holds a sub-folder for each category, named as in the browser.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "content/library/Wave.h"

namespace sivray::content {

/// Receives the packer's messages and progress; both are called on the thread that called `packFolder`.
struct PackReport {
  std::function<void(const std::string& line)> say;  ///< One line about a file: why it was skipped, or what was cut.
  std::function<void(double done)> progress;         ///< 0 to 1.
};

struct PackResult {
  std::vector<Wave> waves;   ///< In the order of categories, then of file names.
  std::size_t unusable = 0;  ///< Files and folders without a usable sound.
};

/// Reads the whole folder and ignores hidden files. Throws std::runtime_error when the folder cannot be read.
PackResult packFolder(const std::string& folder, const PackReport& report);

}  // namespace sivray::content
