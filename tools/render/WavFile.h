// Writes a rendering's WAV file. The data goes to a temporary file that replaces the target when it is complete, so a
// failed rendering leaves no file.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

namespace sivray::render {

class WavFile {
 public:
  /// Creates a stereo file of `bits` (16 or 24) per sample. Throws RenderError when that fails.
  WavFile(const std::string& path, double sampleRate, int bits);
  ~WavFile();
  WavFile(const WavFile&) = delete;
  WavFile& operator=(const WavFile&) = delete;

  /// Appends frames. Samples are scaled by a power of two and rounded, which reproduces the engine's 16-bit values
  /// exactly. Throws RenderError when the disk is full.
  void write(const float* left, const float* right, int frames);

  /// Completes the file and moves it to its final path. Throws RenderError on failure.
  void finish();

 private:
  struct Impl;
  std::unique_ptr<Impl> impl;
};

}  // namespace sivray::render
