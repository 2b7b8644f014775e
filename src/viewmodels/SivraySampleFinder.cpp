// Converts the library's numbers to positions in the browser, and a kit's sounds to parameters.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewmodels/SivraySampleFinder.h"

#include <utility>

#include "viewmodels/texts/PanelMacros.h"

namespace tesh::bramel::plugin::sivray {
namespace {

constexpr std::int32_t kLevels = 128;
constexpr std::size_t kMostVariations = 64;

}  // namespace

SivraySampleFinder::SivraySampleFinder(IPluginEditViewModel& editViewModel, const vimo::SampleLibrary* sampleLibrary,
                                       std::shared_ptr<SivraySampleSelectorViewModel> sampleSelector)
    : model(editViewModel), library(sampleLibrary), selector(std::move(sampleSelector)) {}

const vimo::WaveKin* SivraySampleFinder::kinAt(std::int64_t category, std::int64_t index) const {
  const std::optional<std::int32_t> wave = selector->waveAt(category, index);
  return wave ? library->similarWaves().of(*wave) : nullptr;
}

SivraySampleFinder::Sample SivraySampleFinder::sampleOf(std::int32_t wave) const {
  const auto [category, index] = selector->placeOfWave(wave);
  return {category, index, selector->getSampleName(category, index)};
}

std::vector<SivraySampleFinder::Sample> SivraySampleFinder::similarTo(std::int64_t category, std::int64_t index) const {
  std::vector<Sample> samples;
  if (const vimo::WaveKin* const kin = kinAt(category, index)) {
    for (const std::int32_t wave : kin->nearest) {
      samples.push_back(sampleOf(wave));
    }
  }
  return samples;
}

std::optional<SivraySampleFinder::Sample> SivraySampleFinder::somethingElse(std::int64_t category,
                                                                            std::int64_t index) const {
  const vimo::WaveKin* const kin = kinAt(category, index);
  return kin == nullptr || kin->farthest < 0 ? std::nullopt : std::optional(sampleOf(kin->farthest));
}

std::optional<SivraySampleFinder::Sample> SivraySampleFinder::previousOf(std::uint64_t part) const {
  const auto wave = selector->previousWave(part);
  return wave ? std::optional(sampleOf(*wave)) : std::nullopt;
}

bool SivraySampleFinder::canVary() const {
  return library != nullptr && vimo::varied(library->similarWaves(), currentKit(), 0) != currentKit();
}

void SivraySampleFinder::vary(std::uint32_t seed) {
  if (!canVary()) {
    return;
  }
  const Kit kit = currentKit();
  if (!canUndoVary()) {
    variations.clear();  // They belonged to another kit.
  } else if (variations.size() == kMostVariations) {
    variations.erase(variations.begin());
  }
  const std::uint32_t program = model.getProgramNumber();
  variations.push_back({model.getProgramListViewModel()->getCurrentBank(), program, kit});
  play(vimo::varied(library->similarWaves(), kit, seed));
}

bool SivraySampleFinder::canUndoVary() const {
  return !variations.empty() && variations.back().program == model.getProgramNumber() &&
         variations.back().bank == model.getProgramListViewModel()->getCurrentBank();
}

void SivraySampleFinder::undoVary() {
  if (canUndoVary()) {
    const Kit before = std::move(variations.back().before);
    variations.pop_back();
    play(before);
  }
}

SivraySampleFinder::Kit SivraySampleFinder::currentKit() const {
  Kit kit;
  for (std::size_t pad = 0; pad < panel::kPads; ++pad) {
    const float level = model.getParameterValue(panel::padMacro(pad, panel::kLevel));
    kit.push_back({.wave = selector->waveOfPart(pad),
                   .level = static_cast<std::int32_t>(model.getParameterQuantizer()->valueToState(level, kLevels))});
  }
  return kit;
}

void SivraySampleFinder::play(const Kit& kit) {
  const Kit now = currentKit();
  for (std::size_t pad = 0; pad < kit.size(); ++pad) {
    if (kit[pad].wave != now[pad].wave) {
      selector->giveWave(pad, kit[pad].wave);
    }
    if (kit[pad].level != now[pad].level) {
      giveLevel(pad, kit[pad].level);
    }
  }
}

void SivraySampleFinder::giveLevel(std::size_t pad, std::int32_t level) {
  const std::uint64_t parameter = panel::padMacro(pad, panel::kLevel);
  model.setParameterValue(parameter, model.getParameterQuantizer()->stateToValue(level, kLevels));
  model.getParameterValue(parameter);  // Applies the write and so notifies the view, also while no block runs.
}

}  // namespace tesh::bramel::plugin::sivray
