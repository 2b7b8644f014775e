// Plug-in bundles, the folders in which VST 3 and LV2 hosts look for a library.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace tesh::bramel::platform {

/// The folder that holds the bundle in which a library's `folder` lies: Name.lv2 itself, or Contents/<system> in
/// Name.vst3. Empty if it lies in none.
inline std::string folderAroundBundle(std::string_view folder) {
  constexpr int kDeepest = 3;
#ifdef _WIN32
  constexpr std::string_view kSeparators = "/\\";
#else
  constexpr std::string_view kSeparators = "/";
#endif
  for (int level = 0; level < kDeepest; ++level) {
    const auto cut = folder.find_last_of(kSeparators);
    if (cut == std::string_view::npos) {
      break;
    }
    const std::string_view name = folder.substr(cut + 1);
    folder = folder.substr(0, cut);
    if (name.ends_with(".vst3") || name.ends_with(".lv2")) {
      return std::string(folder);
    }
  }
  return {};
}

}  // namespace tesh::bramel::platform
