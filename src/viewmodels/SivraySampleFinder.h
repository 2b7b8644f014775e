// Finds samples of the drum module by what its library knows of them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "engine/samples/SampleLibrary.h"
#include "engine/samples/SimilarWaves.h"
#include "viewmodels/IPluginEditViewModel.h"
#include "viewmodels/ISampleFinder.h"
#include "viewmodels/SivraySampleSelectorViewModel.h"

namespace tesh::bramel::plugin::sivray {

class SivraySampleFinder final : public ISampleFinder {
 public:
  /// The model must outlive this object, as must the library, which may be null: then it counts as empty.
  SivraySampleFinder(IPluginEditViewModel& editViewModel, const vimo::SampleLibrary* sampleLibrary,
                     std::shared_ptr<SivraySampleSelectorViewModel> sampleSelector);

  std::vector<Sample> similarTo(std::int64_t category, std::int64_t index) const override;
  std::optional<Sample> somethingElse(std::int64_t category, std::int64_t index) const override;
  std::optional<Sample> previousOf(std::uint64_t part) const override;
  void goBack(std::uint64_t part) override;
  bool canVary() const override;
  void vary(std::uint32_t seed) override;
  bool canUndoVary() const override;
  void undoVary() override;

 private:
  using Kit = std::vector<vimo::PadSound>;

  const vimo::WaveKin* kinAt(std::int64_t category, std::int64_t index) const;
  Sample sampleOf(std::int32_t wave) const;
  Kit currentKit() const;
  void play(const Kit& kit);
  void write(std::uint64_t parameter, std::int32_t state, std::int32_t states);

  struct Variation {
    std::uint32_t program;
    Kit before;
  };

  IPluginEditViewModel& model;
  const vimo::SampleLibrary* library;
  std::shared_ptr<SivraySampleSelectorViewModel> selector;
  std::vector<Variation> variations;
};

}  // namespace tesh::bramel::plugin::sivray
