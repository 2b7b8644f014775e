// The interface of a scale: its notes, its chords, and the importance of its degrees. A degree is a note of the scale,
// counted from 0 at the root.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace scale {

inline constexpr std::size_t kChordNotes = 4;

/// A chord of up to four notes, in semitones above the scale's root. `notes` past `count` are unused.
struct ChordRecord {
  std::array<std::uint16_t, kChordNotes> notes{};
  std::int32_t count = 0;
  std::int32_t bass = 0;

  friend bool operator==(const ChordRecord&, const ChordRecord&) = default;
};

/// Per note of a chord: 0 if it moves with the keyboard's octave, 1 if it stays.
using OctaveFlags = std::array<std::uint8_t, kChordNotes>;

/// A scale. Any thread. Degrees must be from 0 to noteCount() - 1.
class ScaleConcept {
 public:
  virtual ~ScaleConcept() = default;

  /// Notes of the scale within one octave.
  virtual std::size_t noteCount() const = 0;
  virtual std::size_t chordNoteCount() const { return kChordNotes; }

  /// A degree's distance from the root, in semitones.
  virtual std::int32_t interval(std::int32_t degree) const = 0;

  /// The chord on a degree in open position: its notes lie within two octaves.
  virtual ChordRecord chord(std::int32_t degree) const = 0;

  /// The chord on a degree in close position, cut to `noteCount` notes (1 to 4) and inverted `inversion` times, which
  /// may be negative.
  virtual ChordRecord chordVoicing(std::int32_t degree, std::int32_t inversion, std::int32_t noteCount) const = 0;

  virtual const OctaveFlags& octaveFlags() const;

  /// All degrees, the most important first, for single notes and for chords. The scale owns the array.
  virtual const std::int32_t* keyOrder() const = 0;
  virtual const std::int32_t* chordOrder() const = 0;
};

/// Inverts the first `record.count` notes. Each inversion moves the first note to the end and an octave up; a negative
/// one moves the last note to the front and an octave down.
void invertChord(ChordRecord& record, std::int32_t inversion);

/// Adds `semitones` to all four notes, but not to the bass.
void transposeNotes(ChordRecord& record, std::int32_t semitones);

}  // namespace scale
