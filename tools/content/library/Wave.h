// One wave of a sample library, as synthesis and packer make it and the library writer takes it.
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

/// The longest name, in bytes, that the library can hold.
inline constexpr std::size_t kLongestWaveName = 12;

struct Wave {
  std::string name;  ///< 1 to 12 characters, unique in its library.
  int category = 0;  ///< Index into kCategoryNames.
  int sampleRate = 44100;
  std::vector<std::int16_t> left;
  std::vector<std::int16_t> right;  ///< Empty for a mono wave, else as long as `left`.
};

}  // namespace sivray::content
