// The scale of an on-screen keyboard: converts key numbers to notes and chords of the current scale.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "scale/ScaleConcept.h"
#include "scale/ScaleTables.h"

namespace scale {

/// The display name of a scale; an index out of range gives the name of the first or the last one. Any thread.
const char* scaleName(std::int32_t index);

/// One call per setter, made at the setter's end.
class ScaleHostListener {
 public:
  virtual ~ScaleHostListener() = default;
  virtual void scaleChanged() = 0;
  virtual void keyChanged() = 0;
  virtual void octaveChanged() = 0;
  virtual void keyRangeChanged() = 0;
  virtual void noteCountChanged() = 0;
  virtual void chordModeChanged() = 0;
};

/// Starts with the chromatic scale, root 0 and 12 notes per octave. Message thread only. Setters ignore a scale outside
/// 0 to 34 and a note count below 1; other values are stored as they are.
class ScaleHost {
 public:
  explicit ScaleHost(ScaleHostListener* hostListener = nullptr);

  /// Chooses a scale. It uses as many notes per octave as it has, but at most maxNotes().
  void setScale(std::int32_t index);

  /// The root, in semitones.
  void setKey(std::uint32_t key);
  void setOctave(std::int32_t newOctave);
  void setKeyRange(std::uint64_t range);

  /// Limits the scale to its `count` most important notes, also for scales that are chosen later.
  void setNoteCount(std::uint64_t count);
  void setChordMode(bool on);

  std::int32_t scaleIndex() const { return currentScale; }
  std::uint32_t rootKey() const { return root; }
  std::int32_t octave() const { return viewOctave; }
  std::uint64_t keyRange() const { return viewKeyRange; }

  /// Notes per octave in use, and their limit.
  std::uint64_t noteCount() const { return keysPerOctave; }
  std::uint64_t maxNotes() const { return ceiling; }
  bool chordMode() const { return viewChordMode; }

  /// The degrees that carry chords, and the notes in semitones above the root: noteCount() of each, in ascending order.
  const std::vector<std::int32_t>& degreeTable() const { return degrees; }
  const std::vector<std::int32_t>& noteTable() const { return notes; }

  /// The note of a key in semitones, raised by `octaveOffset` octaves. Keys count the notes of the scale upwards from
  /// the root; a negative key counts as 0.
  std::int32_t noteForKey(std::int32_t key, std::int32_t octaveOffset) const;

  /// The chord of a key, raised by `octaveOffset` octaves, with its notes in ascending order and each only once.
  ChordRecord chordForKey(std::int32_t key, std::int32_t octaveOffset) const;

 private:
  const ScaleConcept& currentConcept() const { return *scales[static_cast<std::size_t>(currentScale)]; }
  void rebuild();
  void tell(void (ScaleHostListener::*event)());

  ScaleHostListener* listener;
  std::array<std::unique_ptr<ScaleConcept>, kScaleCount> scales;
  std::int32_t currentScale = 0;
  std::uint32_t root = 0;
  std::int32_t viewOctave = 4;
  std::uint64_t viewKeyRange = 2;
  std::uint64_t keysPerOctave = 12;
  std::uint64_t ceiling = 12;
  bool viewChordMode = false;
  std::vector<std::int32_t> degrees;
  std::vector<std::int32_t> notes;
  std::vector<ChordRecord> chords;
};

}  // namespace scale
