// The outs of the pads: each voice's sound before its sends, sorted by the pads that the voices play.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "core/RealTime.h"
#include "engine/voice/VoiceBank.h"
#include "engine/voice/VoiceKernel.h"
#include "platform/ZeroedPages.h"

namespace tesh::bramel::plugin::sivray {

/// Two float channels; both null if nobody listens.
struct StereoOut {
  float* left = nullptr;
  float* right = nullptr;

  bool isConnected() const { return left != nullptr && right != nullptr; }
  void clear(int frames) const SIVRAY_NONBLOCKING {
    if (isConnected()) {
      std::fill_n(left, frames, 0.0F);
      std::fill_n(right, frames, 0.0F);
    }
  }
  /// The same out, starting `frame` frames later.
  StereoOut from(int frame) const { return isConnected() ? StereoOut{left + frame, right + frame} : StereoOut{}; }
};

/// One for each of the first eight pads.
inline constexpr std::size_t kPadOuts = 8;
using PadOuts = std::array<StereoOut, kPadOuts>;

/// Takes no memory until it is first used. Audio thread, except construction.
class PadTaps {
 public:
  static constexpr int kFrames = 2048;  ///< Longest render with taps, in frames.

  /// The place where the kernel writes the taps from frame `frame` on; see VoiceRun.
  std::int16_t* at(int frame) { return words.data() + static_cast<std::ptrdiff_t>(frame) * kTapWords; }

  /// Fills all connected outs from the taps of `frames` frames, with a full scale of 1.0. `padOfLane` has an entry for
  /// each sounding lane. Voices of the same pad are added; a pad without a voice is silent.
  void spread(std::span<const std::int32_t> padOfLane, int frames, const PadOuts& pads) SIVRAY_NONBLOCKING;

  /// Fills all connected outs with zeros.
  static void clear(const PadOuts& pads, int frames) SIVRAY_NONBLOCKING;

 private:
  platform::ZeroedArray<std::int16_t> words{static_cast<std::size_t>(kFrames) * kTapWords};
};

}  // namespace tesh::bramel::plugin::sivray
