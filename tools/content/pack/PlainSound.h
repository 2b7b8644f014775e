// Decoders for a system without libsndfile: WAV and AIFF, FLAC, and on Windows OGG Vorbis.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "content/pack/SoundDecoder.h"

namespace sivray::content {

/// Chooses the decoder by the file's first bytes. WAV, AIFF and AIFF-C may hold integers of 8 to 32 bits or floating
/// point. Throws std::runtime_error with the reason.
std::unique_ptr<SoundDecoder> openPlainSound(std::vector<std::uint8_t> file);

/// The decoders of each format, for files that begin with its mark.
std::unique_ptr<SoundDecoder> openWave(std::vector<std::uint8_t> file);
std::unique_ptr<SoundDecoder> openFlac(std::vector<std::uint8_t> file);
std::unique_ptr<SoundDecoder> openVorbis(std::vector<std::uint8_t> file);

}  // namespace sivray::content
