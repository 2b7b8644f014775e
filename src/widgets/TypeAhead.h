// Finds a row by the first letters of one of its words.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#include <cstdint>
#include <functional>

namespace tesh::bramel {

/// Letters typed within a second of each other extend the search text. The time is an argument, in milliseconds.
class TypeAhead {
 public:
  static constexpr std::uint32_t kPause = 1000;

  /// The next row, from `current` on and cyclically, with a word that begins with the search text ("012 : Deep House"
  /// has three words); -1 if there is none. For a single letter, and for the same letter again, the search starts after
  /// the current row.
  int find(juce::juce_wchar letter, std::uint32_t now, int current, int rowCount,
           const std::function<juce::String(int)>& textOfRow);

 private:
  juce::String word;
  std::uint32_t lastTime = 0;
};

}  // namespace tesh::bramel
