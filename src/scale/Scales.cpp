// Each family of scales and its way of making chords.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "scale/Scales.h"

#include <algorithm>

namespace scale {
namespace {

/// The three notes of a raga's drone in semitones above the root, by inversion: a major triad in open position.
constexpr std::array<std::array<std::uint16_t, 3>, 5> kDrones{
    {{36, 43, 52}, {40, 48, 55}, {43, 52, 60}, {48, 55, 64}, {52, 60, 67}}};

ChordRecord singleNote(std::int32_t note) {
  ChordRecord record;
  record.notes[0] = static_cast<std::uint16_t>(note);
  record.count = 1;
  record.bass = note;
  return record;
}

/// All four notes of `row` above `root`, with the root as bass.
ChordRecord chordOn(const ChordRow& row, std::int32_t root) {
  ChordRecord record{row, static_cast<std::int32_t>(kChordNotes), root};
  transposeNotes(record, root);
  return record;
}

/// The first `count` notes of the close chord `row` above `root`, inverted.
ChordRecord voicingOn(const ChordRow& row, std::int32_t root, std::int32_t inversion, std::int32_t count) {
  ChordRecord record = chordOn(row, root);
  record.count = std::min(count, static_cast<std::int32_t>(kChordNotes));
  record.bass = record.notes[0];
  invertChord(record, inversion);
  return record;
}

}  // namespace

const ChordRow& ChordScale::openChordRow(std::int32_t degree) const {
  return kOpenRows[static_cast<std::size_t>(table.chords[index(degree)])];
}

const ChordRow& ChordScale::closedChordRow(std::int32_t degree) const {
  return kClosedRows[static_cast<std::size_t>(table.chords[index(degree)])];
}

ChordRecord ChordScale::chord(std::int32_t degree) const { return chordOn(openChordRow(degree), chordRoot(degree)); }

ChordRecord ChordScale::chordVoicing(std::int32_t degree, std::int32_t inversion, std::int32_t noteCount) const {
  if (noteCount == 1) {
    return singleNote(interval(degree) + 12 * inversion);
  }
  return voicingOn(closedChordRow(degree), chordRoot(degree), inversion, noteCount);
}

const ChordRow& DiatonicScale::chordRow(std::int32_t degree) const {
  const bool hasPattern = table.pattern != ChordRow{};
  return hasPattern ? table.pattern : kOpenRows[static_cast<std::size_t>(table.chords[index(degree)])];
}

ChordRecord DiatonicScale::chord(std::int32_t degree) const { return chordOn(chordRow(degree), interval(degree)); }

ChordRecord DiatonicScale::chordVoicing(std::int32_t degree, std::int32_t inversion, std::int32_t noteCount) const {
  ChordRecord record;
  record.count = std::min(noteCount, static_cast<std::int32_t>(kChordNotes));
  const auto degrees = static_cast<std::int32_t>(table.noteCount);
  for (std::int32_t k = 0; k < record.count; ++k) {
    const std::int32_t stacked = table.stack[index(k)] + degree;
    record.notes[index(k)] = static_cast<std::uint16_t>(stacked / degrees * 12 + interval(stacked % degrees));
  }
  record.bass = record.notes[0];
  invertChord(record, inversion);
  return record;
}

ChordRecord RagaScale::chord(std::int32_t degree) const {
  const std::int32_t root = interval(degree);
  return {{static_cast<std::uint16_t>(root), 36, 43, 52}, static_cast<std::int32_t>(kChordNotes), root};
}

ChordRecord RagaScale::chordVoicing(std::int32_t degree, std::int32_t inversion, std::int32_t noteCount) const {
  if (noteCount == 1) {
    return singleNote(interval(degree) + 12 * inversion);
  }
  ChordRecord record = singleNote(interval(degree));
  record.count = std::min(noteCount, static_cast<std::int32_t>(kChordNotes));
  const auto& drone = kDrones[index(std::clamp<std::int32_t>(inversion, 0, kDrones.size() - 1))];
  std::copy(drone.begin(), drone.end(), record.notes.begin() + 1);
  return record;
}

const OctaveFlags& RagaScale::octaveFlags() const {
  static constexpr OctaveFlags kDroneStays{0, 1, 1, 1};
  return kDroneStays;
}

ChordRecord UniformChordScale::chord(std::int32_t degree) const {
  return chordOn(kOpenRows[static_cast<std::size_t>(table.chords[0])], interval(degree));
}

ChordRecord UniformChordScale::chordVoicing(std::int32_t degree, std::int32_t inversion, std::int32_t noteCount) const {
  return voicingOn(kClosedRows[static_cast<std::size_t>(table.chords[0])], interval(degree), inversion, noteCount);
}

}  // namespace scale
