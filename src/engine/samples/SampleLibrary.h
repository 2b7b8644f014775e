// The interface through which a browser lists waves by category.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "engine/samples/SimilarWaves.h"

namespace tesh::vimo {

/// A flat index is a position in the list of all waves, sorted by category; an id is the engine's wave number.
/// Categories count from 0. Not every number needs to have an entry in the list: a free number plays the sound of an
/// entry. Anything out of range gives 0 or an empty string. Message thread.
class SampleLibrary {
 public:
  virtual ~SampleLibrary() = default;

  /// Reads the index file at `path`. Returns whether the file held anything.
  virtual bool load(const std::string& path) = 0;
  /// The number of waves in a category.
  virtual std::int32_t categorySize(std::int32_t category) const = 0;
  /// The number of entries in the list.
  virtual std::int32_t waveCount() const = 0;
  /// How many wave numbers there are, free ones included; the number of states of a parameter that chooses a wave.
  virtual std::int32_t numberCount() const { return waveCount(); }
  /// Whether the number has no entry of its own.
  virtual bool isFree(std::int32_t) const { return false; }
  /// The distance of the factory waves' numbers, between which are those of the user's own sounds; 1 if there is no
  /// room between them.
  virtual std::int32_t numbersPerFactoryWave() const { return 1; }
  /// The highest category in use, plus 1.
  virtual std::int32_t categoryCount() const = 0;
  virtual std::string waveName(std::int32_t flatIndex) const = 0;
  virtual std::int32_t waveCategory(std::int32_t flatIndex) const = 0;
  virtual std::int32_t waveId(std::int32_t flatIndex) const = 0;
  /// The first flat index with this id; for a free number the entry whose sound it plays; 0 if there is none.
  virtual std::int32_t flatIndexOf(std::int32_t id) const = 0;
  /// Which of its waves sound alike, as far as that was measured.
  virtual const SimilarWaves& similarWaves() const;
  /// Empty if the library does not name its categories.
  virtual std::string categoryName(std::int32_t) const { return {}; }
};

inline const SimilarWaves& SampleLibrary::similarWaves() const {
  static const SimilarWaves kNone;
  return kNone;
}

}  // namespace tesh::vimo
