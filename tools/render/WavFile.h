// The WAV file that a rendering becomes. It is written beside its target and takes the target's name only when it is
// whole, so that a failed rendering leaves nothing behind.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

namespace sivray::render {

class WavFile {
 public:
  /// Begins a stereo file of `bits` (16 or 24) per sample. Throws RenderError when the place cannot be written.
  WavFile(const std::string& path, double sampleRate, int bits);
  ~WavFile();
  WavFile(const WavFile&) = delete;
  WavFile& operator=(const WavFile&) = delete;

  /// Appends frames. Samples are scaled by a power of two and rounded, so that what the engine computes on its 16-bit
  /// scale comes back exactly. Throws RenderError when the disk is full.
  void write(const float* left, const float* right, int frames);

  /// Completes the file and gives it its name. Throws RenderError on failure.
  void finish();

 private:
  struct Impl;
  std::unique_ptr<Impl> impl;
};

}  // namespace sivray::render
