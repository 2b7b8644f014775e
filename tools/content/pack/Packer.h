// Makes waves from a user's folder of sound files, of any depth.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "content/library/Wave.h"
#include "content/pack/WaveNames.h"

namespace sivray::content {

/// Receives the packer's messages and progress, on the thread that called `packFolder`.
struct PackReport {
  std::function<void(const std::string& line)> say;  ///< One line about a file: the result, or why it was skipped.
  std::function<void(double done)> progress;         ///< 0 to 1.
};

/// A wave and its file's folder.
struct PackedWave {
  Wave wave;
  std::filesystem::path folder;
};

struct PackResult {
  std::vector<PackedWave> waves;  ///< In the order of categories, then of folders and file names.
  std::size_t unusable = 0;       ///< Files without a usable sound.
};

/// The names and the size in bytes of the library to which the packed waves will be added.
struct PackRoom {
  WaveNames names;
  std::uint64_t bytes = 0;
};

/// Reads the whole folder except hidden files. A file's category is that of the nearest folder that names one, or of
/// its own name where a folder holds several categories; else percussion. Skips the folder `leftOut` if given. Throws
/// std::runtime_error when `folder` cannot be read; unreadable folders below it are reported.
PackResult packFolder(const std::string& folder, PackRoom room, const PackReport& report,
                      const std::string& leftOut = {});

}  // namespace sivray::content
