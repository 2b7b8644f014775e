// A sound file as a stream for libsndfile, with the correct length where the program that wrote it, to a pipe, could
// not put it into the header.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sndfile.h>

#include <cstdint>
#include <fstream>
#include <memory>
#include <optional>
#include <string>

namespace sivray::content {

/// The samples of a WAV or AIFF file: where they begin, and their bytes according to the header.
struct SoundChunk {
  std::int64_t place = 0;
  std::uint32_t told = 0;
  std::int64_t there = 0;     ///< Bytes from there to the file's end.
  bool isLengthOpen = false;  ///< The header holds the placeholder of a program that wrote to a pipe.
};

class SoundStream {
 public:
  /// Throws std::runtime_error with the reason, for example "cannot be read: Permission denied".
  explicit SoundStream(const std::string& path);

  const SF_INFO& info() const { return soundInfo; }
  SNDFILE* sound() const { return file.get(); }
  /// Whether the file holds fewer samples than its header says.
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
