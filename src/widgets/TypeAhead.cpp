// Finds a row by the first letters of one of its words.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/TypeAhead.h"

namespace tesh::bramel {
namespace {

/// Whether one of the words in `text` begins with `start`.
bool hasWord(const juce::String& text, const juce::String& start) {
  bool isInWord = false;
  for (auto place = text.getCharPointer(); !place.isEmpty(); ++place) {
    const bool isLetter = place.isLetterOrDigit();
    if (isLetter && !isInWord && juce::String(place).startsWithIgnoreCase(start)) {
      return true;
    }
    isInWord = isLetter;
  }
  return false;
}

}  // namespace

int TypeAhead::find(juce::juce_wchar letter, std::uint32_t now, int current, int rowCount,
                    const std::function<juce::String(int)>& textOfRow) {
  if (now - lastTime > kPause) {
    word.clear();
  }
  lastTime = now;
  const juce::String typed = juce::String::charToString(letter);
  if (!word.equalsIgnoreCase(typed)) {
    word += typed;
  }
  const int start = word.length() == 1 ? current + 1 : juce::jmax(current, 0);
  for (int i = 0; i < rowCount; ++i) {
    const int row = (start + i) % rowCount;
    if (hasWord(textOfRow(row), word)) {
      return row;
    }
  }
  return -1;
}

}  // namespace tesh::bramel
