// Makes waves of a user's folder of sound files: one sub-folder per category, named as the browser shows it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "content/library/Wave.h"

namespace sivray::content {

/// Where a run of the packer reports to; both may be called at any time from its own thread.
struct PackReport {
  std::function<void(const std::string& line)> say;  ///< One line about a file: why it is not used, or what was cut.
  std::function<void(double done)> progress;         ///< 0 to 1.
};

struct PackResult {
  std::vector<Wave> waves;   ///< In the order of categories, then of file names.
  std::size_t unusable = 0;  ///< Files and folders that gave nothing.
};

/// Reads the whole folder. Hidden files are passed over in silence. Throws std::runtime_error when the folder cannot be
/// read.
PackResult packFolder(const std::string& folder, const PackReport& report);

}  // namespace sivray::content
