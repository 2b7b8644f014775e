// A sound file as its decoder gives it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "content/pack/Downmix.h"

namespace sivray::content {

struct SoundFormat {
  std::size_t channels = 0;
  double rate = 0.0;              ///< Hz, as the file tells it.
  std::int64_t frames = 0;        ///< 0 if the file does not tell.
  std::vector<Speaker> speakers;  ///< One for each channel; empty if the file does not tell.
  bool isCutShort = false;        ///< The sound is shorter than its head says.
};

class SoundDecoder {
 public:
  virtual ~SoundDecoder() = default;

  const SoundFormat& format() const { return told; }

  /// Returns the first frames of all channels, at most `most`: fewer where the sound ends or is damaged. To be called
  /// once.
  virtual std::vector<Channel> read(std::int64_t most) = 0;

 protected:
  SoundFormat told;
};

/// Opens a file by the decoders of this system: on Windows those of PlainSound.h, elsewhere libsndfile's. Throws
/// std::runtime_error with the reason, as "cannot be read: Permission denied".
std::unique_ptr<SoundDecoder> openSound(const std::string& path);

}  // namespace sivray::content
