// Transposes frames of lanes into channels of lanes, eight frames at a time.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/voice/PadTaps.h"

#include <algorithm>

#include "registers/Registers128.h"

namespace tesh::bramel::plugin::sivray {
namespace {

using R = cofu::registers::Registers128;
using Integers = R::Integers;

constexpr int kFramesAtOnce = 8;
constexpr std::size_t kWordsOfGroup = 8;
constexpr float kScale = 1.0F / 32768.0F;

struct Rows {
  Integers at[kWordsOfGroup];
};

/// Transposes eight frames of a group of four lanes into eight channels: the left ones of all lanes, then the right
/// ones. Zipping each row with the one four below moves the highest bit of a word's row number to the lowest of its
/// column number; after three times all bits have changed places.
Rows channelsOf(const std::int16_t* taps) {
  Rows rows;
  for (std::size_t row = 0; row < kWordsOfGroup; ++row) {
    rows.at[row] = R::loadAligned(taps + row * kTapWords);
  }
  for (int times = 0; times < 3; ++times) {
    Rows zipped;
    for (std::size_t row = 0; row < kWordsOfGroup / 2; ++row) {
      zipped.at[2 * row] = R::zipLow16(rows.at[row], rows.at[row + 4]);
      zipped.at[2 * row + 1] = R::zipHigh16(rows.at[row], rows.at[row + 4]);
    }
    rows = zipped;
  }
  return rows;
}

/// An output channel, which a lane's words are written to, or added to if another lane has written it.
struct Channel {
  float* out = nullptr;
  bool adds = false;

  void put(int frame, Integers words) const {
    // The words are in the upper halves of the lanes, so no shift is needed; all steps to a float are exact.
    putFour(out + frame, R::zipLow16(R::zero(), words));
    putFour(out + frame + 4, R::zipHigh16(R::zero(), words));
  }
  void put(int frame, std::int16_t word) const {
    const float value = static_cast<float>(word) * kScale;
    out[frame] = adds ? out[frame] + value : value;
  }

 private:
  void putFour(float* to, Integers uppers) const {
    const auto values = R::floatsOf(uppers) * R::allFloats(kScale / 65536.0F);
    R::storeFloats(to, adds ? R::loadFloats(to) + values : values);
  }
};

/// The channels of a group, in the order of its words. Null if nobody listens.
using GroupChannels = std::array<Channel, kWordsOfGroup>;

void spreadGroup(const std::int16_t* taps, int frames, const GroupChannels& channels) {
  int frame = 0;
  for (; frame + kFramesAtOnce <= frames; frame += kFramesAtOnce) {
    const Rows rows = channelsOf(taps + static_cast<std::ptrdiff_t>(frame) * kTapWords);
    for (std::size_t word = 0; word < channels.size(); ++word) {
      if (channels[word].out != nullptr) {
        channels[word].put(frame, rows.at[word]);
      }
    }
  }
  for (; frame < frames; ++frame) {
    for (std::size_t word = 0; word < channels.size(); ++word) {
      if (channels[word].out != nullptr) {
        channels[word].put(frame, taps[static_cast<std::size_t>(frame) * kTapWords + word]);
      }
    }
  }
}

}  // namespace

void PadTaps::spread(std::span<const std::int32_t> padOfLane, int frames, const PadOuts& pads) {
  PadOuts silent = pads;
  for (std::size_t first = 0; first < padOfLane.size(); first += kLanesPerQuad) {
    GroupChannels channels;
    bool isHeard = false;
    const std::size_t end = std::min(first + kLanesPerQuad, padOfLane.size());
    for (std::size_t lane = first; lane < end; ++lane) {
      const auto pad = static_cast<std::size_t>(padOfLane[lane]);
      if (pad < pads.size() && pads[pad].isConnected()) {
        const bool adds = !silent[pad].isConnected();
        silent[pad] = {};
        channels[lane - first] = {pads[pad].left, adds};
        channels[lane - first + kLanesPerQuad] = {pads[pad].right, adds};
        isHeard = true;
      }
    }
    if (isHeard) {
      spreadGroup(words.data() + 2 * first, frames, channels);
    }
  }
  clear(silent, frames);
}

void PadTaps::clear(const PadOuts& pads, int frames) {
  for (const StereoOut& pad : pads) {
    pad.clear(frames);
  }
}

}  // namespace tesh::bramel::plugin::sivray
