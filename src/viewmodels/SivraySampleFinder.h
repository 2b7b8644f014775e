// Finds samples by similarity, goes back to a pad's previous sample, and varies a whole kit at random.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engine/samples/SampleLibrary.h"
#include "engine/samples/SimilarWaves.h"
#include "viewmodels/IPluginEditViewModel.h"
#include "viewmodels/SivraySampleSelectorViewModel.h"

namespace tesh::bramel::plugin::sivray {

/// Message thread only. Parts, categories and samples count as in ISampleSelectorViewModel.
class SivraySampleFinder final {
 public:
  struct Sample {
    std::int64_t category = 0;
    std::int64_t index = 0;
    std::string name;
  };

  /// The model must outlive this object. So must the library, which may be null and then counts as empty.
  SivraySampleFinder(IPluginEditViewModel& editViewModel, const vimo::SampleLibrary* sampleLibrary,
                     std::shared_ptr<SivraySampleSelectorViewModel> sampleSelector);

  /// At most eight samples, the most similar first; none if the library was not measured.
  std::vector<Sample> similarTo(std::int64_t category, std::int64_t index) const;
  /// The most different sample of the category.
  std::optional<Sample> somethingElse(std::int64_t category, std::int64_t index) const;

  /// The part's sample before the last choice; nothing if anything else has changed it since.
  std::optional<Sample> previousOf(std::uint64_t part) const;
  /// Gives the part that sample again.
  void goBack(std::uint64_t part) { selector->goBack(part); }

  /// Whether `vary` would change anything.
  bool canVary() const;
  /// Gives each pad a random sample of those similar to its own, at the same loudness. Each parameter is one edit.
  void vary(std::uint32_t seed);
  /// Whether the current kit was varied.
  bool canUndoVary() const;
  /// Undoes the last `vary`.
  void undoVary();

 private:
  using Kit = std::vector<vimo::PadSound>;

  const vimo::WaveKin* kinAt(std::int64_t category, std::int64_t index) const;
  Sample sampleOf(std::int32_t wave) const;
  Kit currentKit() const;
  void play(const Kit& kit);
  void giveLevel(std::size_t pad, std::int32_t level);

  struct Variation {
    std::string bank;
    std::uint32_t program;
    Kit before;
  };

  IPluginEditViewModel& model;
  const vimo::SampleLibrary* library;
  std::shared_ptr<SivraySampleSelectorViewModel> selector;
  std::vector<Variation> variations;
};

}  // namespace tesh::bramel::plugin::sivray
