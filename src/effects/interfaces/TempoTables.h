// Note values: their lengths, their names, the knob positions that choose them, and the step of an oscillator that is
// locked to the tempo.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "effects/interfaces/Knobs.h"

namespace tesh::bramel::plugin::sivray::effects {

inline constexpr std::size_t kNoteCount = 14;

/// Display names from the shortest note to the longest.
inline constexpr std::array<const char*, kNoteCount> kNoteNames{"1/64", "1/32", "1/24", "1/16", "1/12", "1/8", "1/6",
                                                                "3/16", "1/4",  "1/3",  "3/8",  "1/2",  "3/4", "1/1"};

/// Length of each note in samples at 44100 Hz and one beat per minute.
inline constexpr std::array<std::int32_t, kNoteCount> kNoteLengths{165375,  330750,  441000,  661500,  882000,
                                                                   1323000, 1764000, 1984500, 2646000, 3528000,
                                                                   3969000, 5292000, 7938000, 10584000};

/// The note for a delay-time knob: rising, nine knob values per note, except eleven for "1/4".
constexpr std::size_t delayNoteIndex(int knob) {
  const int k = knobOf(knob);
  return static_cast<std::size_t>(k < 72 ? k / 9 : (k < 83 ? 8 : (k - 83) / 9 + 9));
}

/// The note for the Freq knob of a tempo-synchronised oscillator: falling, so that the oscillator speeds up.
constexpr std::size_t lfoNoteIndex(int knob) {
  const int k = knobOf(knob);
  return static_cast<std::size_t>(k < 45 ? 13 - k / 9 : (k < 56 ? 8 : 7 - (k - 56) / 9));
}

/// Phase step per sample of a 32-bit oscillator whose cycle lasts the note of Edit1 at the tempo: 2 / (length / bpm) *
/// 2^31, truncated, in single precision. Returns 0 for a tempo of 0 or less, and the largest step for an absurdly fast
/// one.
inline std::int32_t tempoStep(const Knobs& knobs) {
  if (knobs.tempoTenths <= 0) {
    return 0;
  }
  const float bpm = static_cast<float>(knobs.tempoTenths) / 10.0F;
  const float samples = static_cast<float>(kNoteLengths[lfoNoteIndex(knobs.edit1)]) / bpm;
  const float cycles = 2.0F / samples;
  const float step = cycles * 2147483648.0F;
  return step < 2147483648.0F ? static_cast<std::int32_t>(step) : std::numeric_limits<std::int32_t>::max();
}

}  // namespace tesh::bramel::plugin::sivray::effects
