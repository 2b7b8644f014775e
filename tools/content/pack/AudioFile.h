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

/// Reads a sound file of any format that this system's decoders support (SoundDecoder.h) as 16-bit samples. Rates up to
/// 48000 Hz stay, higher ones become 44100 or 48000 Hz. More than two channels are mixed down, and samples after six
/// seconds or beyond a pad's sample memory are cut; the note tells either. Throws std::runtime_error for an unusable
/// file, with the reason but without the path.
AudioFile readAudioFile(const std::string& path);

}  // namespace sivray::content
