// One sound file as a wave.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "content/library/Wave.h"

namespace sivray::content {

/// A wave without name and category, and what has to be said about it (empty when there is nothing).
struct AudioFile {
  Wave wave;
  std::string note;
};

/// Reads a WAV, AIFF or FLAC file of one or two channels, at its own rate, in 16 bits. What is longer than six seconds,
/// or than a pad's sample memory, is cut, which the note tells. Throws std::runtime_error with the reason alone for a
/// file that cannot be used.
AudioFile readAudioFile(const std::string& path);

}  // namespace sivray::content
