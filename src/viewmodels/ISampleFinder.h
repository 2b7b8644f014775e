// Finds samples by ear: those that sound alike, the way back to what a part played before, and a whole kit by chance.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tesh::bramel {

/// Message thread only. Parts, categories and samples count as in ISampleSelectorViewModel.
class ISampleFinder {
 public:
  struct Sample {
    std::int64_t category = 0;
    std::int64_t index = 0;
    std::string name;
  };

  virtual ~ISampleFinder() = default;

  /// At most eight others, the most similar first; none if the library was not measured.
  virtual std::vector<Sample> similarTo(std::int64_t category, std::int64_t index) const = 0;
  /// The most different one of the category.
  virtual std::optional<Sample> somethingElse(std::int64_t category, std::int64_t index) const = 0;

  /// What the part played before its last choice; nothing if something else than a choice has changed it since.
  virtual std::optional<Sample> previousOf(std::uint64_t part) const = 0;
  /// Gives the part that sample back.
  virtual void goBack(std::uint64_t part) = 0;

  /// Whether `vary` would change anything.
  virtual bool canVary() const = 0;
  /// Gives each part one of the samples similar to its own by chance, as loud as before. One edit for each parameter.
  virtual void vary(std::uint32_t seed) = 0;
  /// Whether the current kit has been varied.
  virtual bool canUndoVary() const = 0;
  /// Takes the last `vary` back.
  virtual void undoVary() = 0;
};

}  // namespace tesh::bramel
