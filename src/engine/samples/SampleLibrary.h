// The interface by which a browser lists waves by category.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "engine/samples/SimilarWaves.h"

namespace tesh::vimo {

/// A flat index is a position in the list of all waves, sorted by category. An id is the engine's wave number.
/// Categories count from 0. Not every number has an entry in the list: a free number plays the sound of some entry.
/// Arguments out of range give 0 or an empty string. Message thread.
class SampleLibrary {
 public:
  virtual ~SampleLibrary() = default;

  /// Reads the index file at `path`. Returns whether the file held anything.
  virtual bool load(const std::string& path) = 0;
  /// The number of waves in a category.
  virtual std::int32_t categorySize(std::int32_t category) const = 0;
  /// The number of entries in the list.
  virtual std::int32_t waveCount() const = 0;
  /// The number of wave numbers, free ones included: the number of states of a parameter that selects a wave.
  virtual std::int32_t numberCount() const { return waveCount(); }
  /// Whether the number has no entry in the list.
  virtual bool isFree(std::int32_t) const { return false; }
  /// The distance of the factory waves' numbers, if the user's own sounds lie between them; otherwise 1.
  virtual std::int32_t numbersPerFactoryWave() const { return 1; }
  /// The highest category in use, plus 1.
  virtual std::int32_t categoryCount() const = 0;
  virtual std::string waveName(std::int32_t flatIndex) const = 0;
  virtual std::int32_t waveCategory(std::int32_t flatIndex) const = 0;
  virtual std::int32_t waveId(std::int32_t flatIndex) const = 0;
  /// The first flat index with this id. For a free number, the entry whose sound it plays. 0 if there is none.
  virtual std::int32_t flatIndexOf(std::int32_t id) const = 0;
  /// Which waves sound alike, as far as it was measured.
  virtual const SimilarWaves& similarWaves() const;
  /// Empty if the library does not name its categories.
  virtual std::string categoryName(std::int32_t) const { return {}; }
};

inline const SimilarWaves& SampleLibrary::similarWaves() const {
  static const SimilarWaves kNone;
  return kNone;
}

}  // namespace tesh::vimo
