// The browser's question: which waves are there, sorted into categories.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

namespace tesh::vimo {

/// A library of waves. A flat index is a place in the list sorted by category; an id is the engine's wave number.
/// Categories count from 0. Anything out of range gives 0 or an empty string. Message thread.
class SampleLibrary {
 public:
  virtual ~SampleLibrary() = default;

  /// Reads the index file at `path`. Gives true if the file held anything.
  virtual bool load(const std::string& path) = 0;
  /// The number of waves in a category.
  virtual std::int32_t categorySize(std::int32_t category) const = 0;
  virtual std::int32_t waveCount() const = 0;
  /// The highest category in use, plus 1.
  virtual std::int32_t categoryCount() const = 0;
  virtual std::string waveName(std::int32_t flatIndex) const = 0;
  virtual std::int32_t waveCategory(std::int32_t flatIndex) const = 0;
  virtual std::int32_t waveId(std::int32_t flatIndex) const = 0;
  /// The first place that holds the wave `id`; 0 if there is none.
  virtual std::int32_t flatIndexOf(std::int32_t id) const = 0;
  /// A library without names of its own gives an empty string.
  virtual std::string categoryName(std::int32_t) const { return {}; }
};

}  // namespace tesh::vimo
