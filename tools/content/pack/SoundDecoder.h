// The interface of a sound file's decoder.
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
  double rate = 0.0;              ///< Hz, from the file's header.
  std::int64_t frames = 0;        ///< 0 if the header does not tell.
  std::vector<Speaker> speakers;  ///< One for each channel; empty if the header does not tell.
  bool isCutShort = false;        ///< The file holds fewer samples than its header says.
};

class SoundDecoder {
 public:
  virtual ~SoundDecoder() = default;

  const SoundFormat& format() const { return told; }

  /// Returns the first frames of all channels, at most `most`; fewer if the sound ends or is damaged. May be called
  /// once.
  virtual std::vector<Channel> read(std::int64_t most) = 0;

 protected:
  SoundFormat told;
};

/// Opens a file with this system's decoders: those of PlainSound.h on Windows, libsndfile elsewhere. Throws
/// std::runtime_error with the reason, for example "cannot be read: Permission denied".
std::unique_ptr<SoundDecoder> openSound(const std::string& path);

}  // namespace sivray::content
