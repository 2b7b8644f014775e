// One wave of a sample library, from whoever makes it (the synthesis, a packed folder) to the writer of the files.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace sivray::content {

/// The categories of the browser, in its order.
inline constexpr std::array<std::string_view, 10> kCategoryNames{"Kick", "Snare",  "Clap", "Close HH", "Open HH",
                                                                 "Tom",  "Cymbal", "Perc", "FX",       "Hit"};

/// Characters of a wave's name that the library keeps.
inline constexpr std::size_t kLongestWaveName = 12;

struct Wave {
  std::string name;  ///< 1 to 12 characters, unique in its library.
  int category = 0;  ///< Index into kCategoryNames.
  int sampleRate = 44100;
  std::vector<std::int16_t> left;
  std::vector<std::int16_t> right;  ///< Empty for a mono wave, else as long as `left`.
};

}  // namespace sivray::content
