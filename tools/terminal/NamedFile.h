// A file or folder that somebody names on the command line.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#include <string>

namespace sivray {

/// Returns the file of a path in UTF-8, which counts from the present folder unless it is absolute.
inline juce::File namedFile(const std::string& path) {
  return juce::File::getCurrentWorkingDirectory().getChildFile(juce::String::fromUTF8(path.c_str()));
}

}  // namespace sivray
