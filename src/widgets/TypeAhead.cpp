// Finds a row by the first letters that are typed.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/TypeAhead.h"

namespace tesh::bramel {
namespace {

bool beginsWith(const juce::String& text, const juce::String& word) {
  return text.startsWithIgnoreCase(word) || text.trimCharactersAtStart("0123456789 :").startsWithIgnoreCase(word);
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
    if (beginsWith(textOfRow(row), word)) {
      return row;
    }
  }
  return -1;
}

}  // namespace tesh::bramel
