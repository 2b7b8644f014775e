// Text of the instrument as JUCE's strings.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#include <string>

namespace tesh::bramel {

/// A program's name may hold any bytes: a text that is not UTF-8 is read byte by byte as Latin-1.
inline juce::String textFrom(const std::string& text) {
  return juce::String::createStringFromData(text.data(), static_cast<int>(text.size()));
}

}  // namespace tesh::bramel
