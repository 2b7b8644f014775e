// The instrument's texts as JUCE strings.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#include <string>

namespace tesh::bramel {

/// Names of programs and samples may hold any bytes: a text that is not UTF-8 is read as Latin-1. A text of the maximum
/// length may end within a character, which is then left out.
inline juce::String textFrom(const std::string& text) {
  constexpr int kLongestName = 95;  // Bytes of a program's name.
  constexpr int kLongestRest = 3;   // Most bytes of an incomplete character.
  const auto size = static_cast<int>(text.size());
  const int shortest = size < kLongestName ? size : size - kLongestRest;
  for (int bytes = size; bytes >= shortest; --bytes) {
    if (juce::CharPointer_UTF8::isValidString(text.data(), bytes)) {
      return juce::String::fromUTF8(text.data(), bytes);
    }
  }
  return juce::String::createStringFromData(text.data(), size);
}

}  // namespace tesh::bramel
