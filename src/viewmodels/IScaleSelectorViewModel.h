// The choice of a scale, and of the notes that a keyboard shows.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

namespace tesh::bramel {

/// Message thread only. The keyboard view model's listener is notified of changes.
class IScaleSelectorViewModel {
 public:
  virtual ~IScaleSelectorViewModel() = default;

  virtual std::int32_t getScaleCount() const = 0;
  /// Indices outside the catalogue are limited to its ends.
  virtual std::string getScaleName(std::int32_t index) const = 0;
  /// The number of notes per octave in the current scale.
  virtual std::uint64_t getMaxNoteCount() const = 0;
  virtual std::int32_t getScaleIndex() const = 0;
  /// Ignores an index outside the catalogue.
  virtual void setScale(std::int32_t index) = 0;

  virtual std::int32_t getKey() const = 0;
  virtual void setKey(std::int32_t key) = 0;
  /// Keys per octave in use.
  virtual std::uint64_t getNoteCount() const = 0;
  /// 0 is ignored.
  virtual void setNoteCount(std::uint64_t count) = 0;
  virtual std::int32_t getOctave() const = 0;
  virtual void setOctave(std::int32_t octave) = 0;
  virtual std::uint64_t getKeyRange() const = 0;
  virtual void setKeyRange(std::uint64_t range) = 0;
  virtual bool getChordMode() const = 0;
  virtual void setChordMode(bool isOn) = 0;
};

}  // namespace tesh::bramel
