// Maps sample parameters to positions in a sample library.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "engine/samples/SampleLibrary.h"
#include "viewmodels/IPluginEditViewModel.h"
#include "viewmodels/ISampleSelectorViewModel.h"

namespace tesh::bramel {

/// A sample has three addresses: its id, which is the value of a parameter; its flat index, the position in the
/// library's browsing order; and its category with the position in that. An instrument says which parameters select
/// samples.
class BXSampleSelectorViewModelBase : public ISampleSelectorViewModel {
 public:
  /// The model must outlive this object. So must the library, which may be null and then counts as empty.
  BXSampleSelectorViewModelBase(IPluginEditViewModel& editViewModel, const vimo::SampleLibrary* sampleLibrary);

  std::int32_t getPartCount() const override { return 0; }
  std::int64_t getCategoryIndex(std::uint64_t part) const override;
  std::int64_t getSampleIndex(std::uint64_t part) const override;
  void selectSample(std::uint64_t part, std::int64_t category, std::int64_t index) override;
  std::int64_t getCategoryCount() const override;
  std::string getCategoryName(std::int64_t) const override { return {}; }
  std::int64_t getSampleCount(std::int64_t category) const override;
  std::string getSampleName(std::int64_t category, std::int64_t index) const override;

  // As above, by the sample's id.

  struct Place {
    std::int64_t category;
    std::int64_t index;
  };

  /// Nothing if there is no such sample.
  std::optional<std::int32_t> waveAt(std::int64_t category, std::int64_t index) const;
  /// Category -1 with an empty library.
  Place placeOfWave(std::int64_t id) const;
  /// The id that the part's parameter has, even if the browser does not list it; 0 with an empty library.
  std::int32_t waveOfPart(std::uint64_t part) const;
  /// Makes the part's parameter select the sample with this id, even if the browser does not list it.
  void giveWave(std::uint64_t part, std::int32_t id);

 protected:
  static constexpr std::uint64_t kNoParameter = ~std::uint64_t{0};

  /// The parameter that selects the part's sample; kNoParameter for a part that does not exist.
  virtual std::uint64_t getParameterIndex(std::uint64_t part) const = 0;

 private:
  Place placeOf(std::uint64_t part) const { return placeOfWave(waveOfPart(part)); }
  std::int64_t firstOf(std::int64_t category) const;
  bool exists(std::int64_t category, std::int64_t index) const;

  IPluginEditViewModel& model;
  const vimo::SampleLibrary* library;
};

}  // namespace tesh::bramel
