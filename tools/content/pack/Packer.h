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

/// Receives the packer's messages and progress; both are called on the thread that called `packFolder`.
struct PackReport {
  std::function<void(const std::string& line)>
      say;                                    ///< One line about a file: what became of it, or why it was skipped.
  std::function<void(double done)> progress;  ///< 0 to 1.
};

/// A wave and the folder that its file lies in.
struct PackedWave {
  Wave wave;
  std::filesystem::path folder;
};

struct PackResult {
  std::vector<PackedWave> waves;  ///< In the order of categories, then of folders and file names.
  std::size_t unusable = 0;       ///< Files without a usable sound.
};

/// The bytes of a library and the names in it, to which packed waves come.
struct PackRoom {
  WaveNames names;
  std::uint64_t bytes = 0;
};

/// Reads the whole folder and ignores hidden files. A file's category is that of the nearest folder that names one, or
/// what its own name says where a folder holds several; else it is a percussion. The folder `leftOut`, if there is one,
/// is passed over. Throws std::runtime_error when `folder` cannot be read; one below it is reported.
PackResult packFolder(const std::string& folder, PackRoom room, const PackReport& report,
                      const std::string& leftOut = {});

}  // namespace sivray::content
