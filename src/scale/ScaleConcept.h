// What every scale can tell: its notes, its chords, and which of its degrees matter most.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace scale {

inline constexpr std::size_t kChordNotes = 4;

/// A chord of up to four notes, in semitones.
struct ChordRecord {
  std::array<std::uint16_t, kChordNotes> notes{};
  std::int32_t count = 0;
  std::int32_t bass = 0;

  friend bool operator==(const ChordRecord&, const ChordRecord&) = default;
};

/// Per chord note: 0 follows the octave, 1 stays where it is.
using OctaveFlags = std::array<std::uint8_t, kChordNotes>;

/// A scale. Degrees run from 0 to noteCount() - 1; callers keep within.
class ScaleConcept {
 public:
  virtual ~ScaleConcept() = default;

  /// Notes of the scale within one octave.
  virtual std::size_t noteCount() const = 0;
  virtual std::size_t chordNoteCount() const { return kChordNotes; }

  /// Semitones of a degree above the root.
  virtual std::int32_t interval(std::int32_t degree) const = 0;

  /// The chord on a degree, spread over two octaves.
  virtual ChordRecord chord(std::int32_t degree) const = 0;

  /// The chord of `noteCount` notes on a degree, in close position and inverted `inversion` times.
  virtual ChordRecord chordVoicing(std::int32_t degree, std::int32_t inversion, std::int32_t noteCount) const = 0;

  virtual const OctaveFlags& octaveFlags() const;

  /// The degrees by importance, for keys and for chords: noteCount() of them.
  virtual const std::int32_t* keyOrder() const = 0;
  virtual const std::int32_t* chordOrder() const = 0;
};

/// Inverts the first `record.count` notes `inversion` times: each inversion lifts the lowest note an octave.
void invertChord(ChordRecord& record, std::int32_t inversion);

/// Adds `semitones` to all four notes.
void transposeNotes(ChordRecord& record, std::int32_t semitones);

}  // namespace scale
