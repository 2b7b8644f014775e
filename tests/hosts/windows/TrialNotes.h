// The notes that every form plays, so that their samples can be compared.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace sivray::trial {

inline constexpr int kBlock = 512;       ///< Frames.
inline constexpr double kTempo = 120.0;  ///< Beats per minute.

/// Returns the number of blocks in four seconds.
inline int blocksAt(float rate) {
  constexpr float kSeconds = 4.0F;
  return static_cast<int>(kSeconds * rate) / kBlock;
}

struct TrialNote {
  std::array<std::uint8_t, 3> bytes;
  int frame;
};

/// Returns a note for every third block.
inline std::optional<TrialNote> noteOfBlock(int block) {
  constexpr std::uint8_t kNoteOn = 0x90;
  constexpr int kFirstNote = 36;
  constexpr int kPads = 8;
  constexpr int kNotesEach = 3;
  if (block % kNotesEach != 0) {
    return std::nullopt;
  }
  return TrialNote{
      {kNoteOn, static_cast<std::uint8_t>(kFirstNote + block % kPads), static_cast<std::uint8_t>(1 + block * 13 % 127)},
      block % kBlock};
}

/// Appends left and right, interleaved.
inline void appendInterleaved(const std::array<std::array<float, kBlock>, 2>& sides, std::vector<float>& samples) {
  for (std::size_t frame = 0; frame < kBlock; ++frame) {
    samples.push_back(sides[0][frame]);
    samples.push_back(sides[1][frame]);
  }
}

}  // namespace sivray::trial
