// Reads one sound file as a wave.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "content/library/Wave.h"

namespace sivray::content {

/// A wave without name and category, and a note for the user (empty if there is nothing to say).
struct AudioFile {
  Wave wave;
  std::string note;
};

/// Reads a sound file of any format that this system's decoders know (SoundDecoder.h) in 16 bits, at its own rate up to
/// 48000 Hz, else at 44100 or 48000 Hz. More than two channels are mixed down, and the note says so. Anything past six
/// seconds, or past a pad's sample memory, is cut, and the note says so. Throws std::runtime_error for a file that
/// cannot be used; its text is the reason alone, without the path.
AudioFile readAudioFile(const std::string& path);

}  // namespace sivray::content
