// Finds a row by the first letters of a word that are typed.
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

  /// The next row at or after `current` with a word that begins so ("012 : Deep House" has three), past the last row
  /// from the first on; -1 if there is none. The first letter that is typed, and the same letter again, look past the
  /// current row.
  int find(juce::juce_wchar letter, std::uint32_t now, int current, int rowCount,
           const std::function<juce::String(int)>& textOfRow);

 private:
  juce::String word;
  std::uint32_t lastTime = 0;
};

}  // namespace tesh::bramel
