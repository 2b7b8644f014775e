// A sound file as libsndfile reads it, with the length that a program writing to a pipe could not put into its head.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sndfile.h>

#include <cstdint>
#include <fstream>
#include <memory>
#include <optional>
#include <string>

namespace sivray::content {

/// The sound of a WAV or AIFF file: where it begins, and how many bytes the head says that it has.
struct SoundChunk {
  std::int64_t place = 0;
  std::uint32_t told = 0;
  std::int64_t there = 0;     ///< From its begin to the file's end.
  bool isLengthOpen = false;  ///< The head holds what a program writes that cannot come back to it.
};

class SoundStream {
 public:
  /// Throws std::runtime_error with the reason, as "cannot be read: Permission denied".
  explicit SoundStream(const std::string& path);

  const SF_INFO& info() const { return soundInfo; }
  SNDFILE* sound() const { return file.get(); }
  /// Whether the sound is shorter than its head says.
  bool isCutShort() const;

 private:
  struct Close {
    void operator()(SNDFILE* opened) const { sf_close(opened); }
  };

  sf_count_t read(char* bytes, sf_count_t count);
  sf_count_t seek(sf_count_t offset, int whence);

  std::ifstream stream;
  std::int64_t size = 0;
  std::int64_t position = 0;
  std::optional<SoundChunk> chunk;
  SF_INFO soundInfo{};
  std::unique_ptr<SNDFILE, Close> file;
};

}  // namespace sivray::content
