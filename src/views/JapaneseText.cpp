// Looks for an installed font with Japanese characters, and breaks lines between characters.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/JapaneseText.h"

#include "platform/Locale.h"
#include "viewmodels/resources/InstalledFonts.h"

namespace tesh::bramel {
namespace {

#ifndef _WIN32
/// The panel's default typeface, which borrows Japanese characters if an installed font has them.
juce::String installedFace() {
  constexpr std::uint32_t kHiraganaA = 0x3042;
  return InstalledFonts().find(kHiraganaA).path.empty() ? juce::String() : juce::Font::getDefaultSansSerifFontName();
}
#endif

bool isLatin(juce::juce_wchar letter) { return letter < 0x80; }

bool isClosingMark(juce::juce_wchar letter) {
  return juce::String(juce::CharPointer_UTF8("\u3001\u3002\u300d\uff09\u30fc)")).containsChar(letter);
}

/// The number of characters at the start of `text` that must stay on one line.
int lengthOfUnit(const juce::String& text) {
  int length = 1;
  while (length < text.length() &&
         (isClosingMark(text[length]) || (isLatin(text[length - 1]) && isLatin(text[length])))) {
    ++length;
  }
  return length;
}

}  // namespace

juce::String japaneseFace([[maybe_unused]] const char* windowsFace) {
  if (platform::userInterfaceLanguage() != platform::kLanguageJapanese) {
    return {};
  }
#ifdef _WIN32
  return windowsFace;
#else
  return installedFace();
#endif
}

juce::String inLines(const juce::String& text, const juce::Font& font, float width) {
  juce::String lines;
  juce::String line;
  for (juce::String rest = text; rest.isNotEmpty();) {
    const int length = lengthOfUnit(rest);
    const juce::String longer = line + rest.substring(0, length);
    if (line.isNotEmpty() && font.getStringWidthFloat(longer) > width) {
      lines << line << '\n';
      line = rest.substring(0, length).trimStart();
    } else {
      line = longer;
    }
    rest = rest.substring(length);
  }
  return lines + line;
}

}  // namespace tesh::bramel
