// Finds a row by the first letters that are typed.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#include <cstdint>
#include <functional>

namespace tesh::bramel {

/// Letters that follow within a second make a longer word. The time is an argument, in milliseconds.
class TypeAhead {
 public:
  static constexpr std::uint32_t kPause = 1000;

  /// The next row at or after `current` that begins with the word, past the last row from the first on; -1 if there is
  /// none. A number in front of a row's name ("012 : Deep House") may be typed or left out. The first letter of a word,
  /// and the same letter again, look past the current row.
  int find(juce::juce_wchar letter, std::uint32_t now, int current, int rowCount,
           const std::function<juce::String(int)>& textOfRow);

 private:
  juce::String word;
  std::uint32_t lastTime = 0;
};

}  // namespace tesh::bramel
