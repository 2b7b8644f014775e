// Keeps the current scale of an instrument and turns key numbers into notes and chords of it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "scale/ScaleConcept.h"
#include "scale/ScaleTables.h"

namespace scale {

/// The display name of a scale; indices outside the catalogue are held to its ends.
const char* scaleName(std::int32_t index);

/// Told at the end of each setter.
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

/// Starts with the chromatic scale, root 0 and 12 keys. Message thread only. Scale indices outside 0 to 34, a note
/// count below 1 and negative keys change nothing or read as key 0.
class ScaleHost {
 public:
  explicit ScaleHost(ScaleHostListener* hostListener = nullptr);

  void setScale(std::int32_t index);
  void setKey(std::uint32_t key);
  void setOctave(std::int32_t newOctave);
  void setKeyRange(std::uint64_t range);
  void setNoteCount(std::uint64_t count);
  void setChordMode(bool on);

  std::int32_t scaleIndex() const { return currentScale; }
  std::uint32_t rootKey() const { return root; }
  std::int32_t octave() const { return viewOctave; }
  std::uint64_t keyRange() const { return viewKeyRange; }
  std::uint64_t noteCount() const { return keysPerOctave; }
  std::uint64_t maxNotes() const { return ceiling; }
  bool chordMode() const { return viewChordMode; }
  const std::vector<std::int32_t>& degreeTable() const { return degrees; }
  const std::vector<std::int32_t>& noteTable() const { return notes; }

  /// The note of a key, counted upward in notes of the scale, `octaveOffset` octaves up.
  std::int32_t noteForKey(std::int32_t key, std::int32_t octaveOffset) const;

  /// The chord of a key, `octaveOffset` octaves up, its notes ascending and without doubles.
  ChordRecord chordForKey(std::int32_t key, std::int32_t octaveOffset) const;

 private:
  const ScaleConcept& scaleInForce() const { return *scales[static_cast<std::size_t>(currentScale)]; }
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
