// Line breaks in Japanese texts.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "views/JapaneseText.h"
#include "views/SettingsCatalogue.h"

namespace tesh::bramel {
namespace {

TEST(JapaneseText, FitsItsWidthInLinesThatKeepLatinWordsAndBeginWithNoClosingMark) {
  const juce::Font font(12.0F);
  constexpr float kWidth = 276.0F;
  for (const CatalogueRow& row : settingsCatalogue()) {
    const auto text = juce::String::fromUTF8(row.japaneseDescription);
    const juce::String broken = inLines(text, font, kWidth);
    EXPECT_EQ(broken.removeCharacters("\n"), text);
    EXPECT_EQ(broken.contains("Save As"), text.contains("Save As"));
    for (const juce::String& line : juce::StringArray::fromLines(broken)) {
      EXPECT_LE(font.getStringWidthFloat(line), kWidth);
      EXPECT_FALSE(line.startsWith(juce::String::fromUTF8("\u3001")) ||
                   line.startsWith(juce::String::fromUTF8("\u3002")));
    }
  }
  const auto closed = juce::String::fromUTF8("\u97f3\u3002\u97f3");
  EXPECT_EQ(inLines(closed, font, 1.0F), juce::String::fromUTF8("\u97f3\u3002\n\u97f3"));
}

}  // namespace
}  // namespace tesh::bramel
