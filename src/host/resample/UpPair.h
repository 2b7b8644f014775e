// Two channels of the engine's output on their way to the host's rate: buffer, resampler, and the ring that evens out
// blocks a frame too short or too long.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "core/RealTime.h"
#include "host/resample/CFsCwInterpolation.h"
#include "platform/ZeroedPages.h"

namespace tesh::bramel::vst {

/// Left and right.
using ChannelPair = std::array<float*, 2>;

/// Both channels of a work buffer in one allocation. Its pages take no memory until they are written to, which they
/// never are at the engine's own rate.
class StereoBuffer {
 public:
  explicit StereoBuffer(std::size_t frames) : samples(2 * frames) {}
  ChannelPair channels() const { return {samples.data(), samples.data() + samples.size() / 2}; }
  void clear() const { std::fill_n(samples.data(), samples.size(), 0.0F); }
  /// Makes the pages of the first `frames` frames of each channel present.
  void makePresent(std::size_t frames) const {
    samples.makePresent(0, frames);
    samples.makePresent(samples.size() / 2, frames);
  }

 private:
  platform::ZeroedArray<float> samples;
};

/// All pairs of a converter move together: their owner keeps the read and write positions of the rings, below
/// kRingFrames, and lets all resamplers run over the same frames. One call at a time. Audio thread, except where an
/// operation says otherwise.
class UpPair {
 public:
  static constexpr std::size_t kEngineFrames = 16384;  ///< Longest piece in engine frames.
  static constexpr std::size_t kHostFrames = 16392;    ///< Longest piece in host frames.
  /// Longest usual block in host frames; hosts rarely send longer ones.
  static constexpr std::size_t kUsualFrames = 2048;
  static constexpr std::size_t kRingFrames = 32768;  ///< A power of two, twice the longest piece.
  static constexpr std::uint32_t kRingMask = kRingFrames - 1;

  UpPair();

  /// Designs the resampler for a host's rate in whole Hz and starts it from silence; the ring stays as it is.
  /// Allocates.
  void setSampleRate(std::int32_t rate);

  /// Fills the ring with zeros.
  void clear();

  /// Starts from silence at the position of another pair that runs at the same rate. `read` and `written` are the
  /// positions of the rings.
  void joinIn(const UpPair& other, std::uint32_t read, std::uint32_t written) SIVRAY_NONBLOCKING;

  /// The buffers that the engine renders to.
  ChannelPair engineChannels() const { return engineOut.channels(); }

  /// Resamples `frames` engine frames and writes the result to the ring, from `written` on. `isKnownSilent`: all of
  /// them are zero. Returns the number of host frames.
  std::size_t write(std::size_t frames, std::uint32_t written, bool isKnownSilent) SIVRAY_NONBLOCKING;

  /// Reads `frames` frames from the ring, from `read` on.
  void read(ChannelPair outputs, std::size_t frames, std::uint32_t read) const SIVRAY_NONBLOCKING;

 private:
  CFsCwInterpolation resampler;
  StereoBuffer engineOut;
  StereoBuffer resampled;
  StereoBuffer ring;
  std::size_t mostPerFrame = 0;  ///< The most host frames for one engine frame.
  /// Zeros written to the ring since the last sound, at most the ring's length.
  std::size_t silentInRing = kRingFrames;
};

/// If ring and input are all zeros, nothing needs to be written.
inline std::size_t UpPair::write(std::size_t frames, std::uint32_t written, bool isKnownSilent) {
  if (isKnownSilent && silentInRing == kRingFrames && resampler.canSkip()) {
    return resampler.skip(frames);
  }
  const ChannelPair kept = ring.channels();
  const bool fits = written + frames * mostPerFrame <= kRingFrames;
  const ChannelPair made = fits ? ChannelPair{kept[0] + written, kept[1] + written} : resampled.channels();
  const std::size_t count = resampler.process(engineOut.channels().data(), made.data(), frames, isKnownSilent);
  silentInRing = resampler.isResting() ? std::min(silentInRing + count, kRingFrames) : 0;
  const bool isWritten = silentInRing == kRingFrames || (fits && silentInRing == 0);
  const std::size_t toEnd = std::min<std::size_t>(count, kRingFrames - written);
  for (std::size_t c = 0; !isWritten && c < made.size(); ++c) {
    if (resampler.isResting()) {
      std::fill_n(kept[c] + written, toEnd, 0.0F);
      std::fill_n(kept[c], count - toEnd, 0.0F);
    } else {
      std::copy_n(made[c], toEnd, kept[c] + written);
      std::copy_n(made[c] + toEnd, count - toEnd, kept[c]);
    }
  }
  return count;
}

inline void UpPair::read(ChannelPair outputs, std::size_t frames, std::uint32_t read) const {
  if (silentInRing == kRingFrames) {
    std::fill_n(outputs[0], frames, 0.0F);
    std::fill_n(outputs[1], frames, 0.0F);
    return;
  }
  const ChannelPair kept = ring.channels();
  const std::size_t toEnd = std::min<std::size_t>(frames, kRingFrames - read);
  for (std::size_t c = 0; c < outputs.size(); ++c) {
    std::copy_n(kept[c] + read, toEnd, outputs[c]);
    std::copy_n(kept[c], frames - toEnd, outputs[c] + toEnd);
  }
}

}  // namespace tesh::bramel::vst
