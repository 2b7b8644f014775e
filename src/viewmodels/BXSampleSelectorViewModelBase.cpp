// Converts between the three addresses of a sample.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewmodels/BXSampleSelectorViewModelBase.h"

namespace tesh::bramel {

BXSampleSelectorViewModelBase::BXSampleSelectorViewModelBase(IPluginEditViewModel& editViewModel,
                                                             const vimo::SampleLibrary* sampleLibrary)
    : model(editViewModel), library(sampleLibrary) {}

std::int64_t BXSampleSelectorViewModelBase::getCategoryCount() const {
  return library == nullptr ? 0 : library->categoryCount();
}

std::int64_t BXSampleSelectorViewModelBase::getSampleCount(std::int64_t category) const {
  const bool isCategory = category >= 0 && category < getCategoryCount();
  return isCategory ? library->categorySize(static_cast<std::int32_t>(category)) : 0;
}

/// The flat index of a category's first sample.
std::int64_t BXSampleSelectorViewModelBase::firstOf(std::int64_t category) const {
  std::int64_t first = 0;
  for (std::int64_t before = 0; before < category; ++before) {
    first += getSampleCount(before);
  }
  return first;
}

bool BXSampleSelectorViewModelBase::exists(std::int64_t category, std::int64_t index) const {
  return index >= 0 && index < getSampleCount(category);
}

std::string BXSampleSelectorViewModelBase::getSampleName(std::int64_t category, std::int64_t index) const {
  return exists(category, index) ? library->waveName(static_cast<std::int32_t>(firstOf(category) + index))
                                 : std::string();
}

std::optional<std::int32_t> BXSampleSelectorViewModelBase::waveAt(std::int64_t category, std::int64_t index) const {
  return exists(category, index) ? std::optional(library->waveId(static_cast<std::int32_t>(firstOf(category) + index)))
                                 : std::nullopt;
}

std::int32_t BXSampleSelectorViewModelBase::waveOfPart(std::uint64_t part) const {
  if (library == nullptr) {
    return 0;
  }
  const auto numbers = static_cast<std::uint64_t>(library->numberCount());
  const float value = model.getParameterValue(getParameterIndex(part));
  return static_cast<std::int32_t>(model.getParameterQuantizer()->valueToState(value, numbers));
}

BXSampleSelectorViewModelBase::Place BXSampleSelectorViewModelBase::placeOfWave(std::int64_t id) const {
  const std::int64_t categories = getCategoryCount();
  if (categories == 0) {
    return {-1, 0};
  }
  std::int64_t index = library->flatIndexOf(static_cast<std::int32_t>(id));
  std::int64_t category = 0;
  while (category < categories - 1 && index >= getSampleCount(category)) {
    index -= getSampleCount(category);
    ++category;
  }
  return {category, index};
}

std::int64_t BXSampleSelectorViewModelBase::getCategoryIndex(std::uint64_t part) const {
  return placeOf(part).category;
}

std::int64_t BXSampleSelectorViewModelBase::getSampleIndex(std::uint64_t part) const { return placeOf(part).index; }

void BXSampleSelectorViewModelBase::selectSample(std::uint64_t part, std::int64_t category, std::int64_t index) {
  if (const std::optional<std::int32_t> id = waveAt(category, index)) {
    giveWave(part, *id);
  }
}

void BXSampleSelectorViewModelBase::giveWave(std::uint64_t part, std::int32_t id) {
  if (library == nullptr) {
    return;
  }
  const auto numbers = static_cast<std::uint64_t>(library->numberCount());
  const std::uint64_t parameter = getParameterIndex(part);
  model.setParameterValue(parameter, model.getParameterQuantizer()->stateToValue(id, numbers));
  model.getParameterValue(parameter);  // Applies the write and so notifies the view, also while no block runs.
}

}  // namespace tesh::bramel
