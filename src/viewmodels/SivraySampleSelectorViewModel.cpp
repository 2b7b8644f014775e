// The categories' names, and the parameters that select samples.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewmodels/SivraySampleSelectorViewModel.h"

namespace tesh::bramel::plugin::sivray {
namespace {

constexpr std::array kCategoryNames{"Kick", "Snare",  "Clap", "Close HH", "Open HH",
                                    "Tom",  "Cymbal", "Perc", "FX",       "Hit"};

}  // namespace

std::int32_t SivraySampleSelectorViewModel::getPartCount() const { return static_cast<std::int32_t>(panel::kPads); }

std::string SivraySampleSelectorViewModel::getCategoryName(std::int64_t category) const {
  const auto row = static_cast<std::uint64_t>(category);
  return row < kCategoryNames.size() ? kCategoryNames[static_cast<std::size_t>(row)] : "";
}

void SivraySampleSelectorViewModel::selectSample(std::uint64_t part, std::int64_t category, std::int64_t index) {
  constexpr std::size_t kMostChoices = 64;
  const std::optional<std::int32_t> after = waveAt(category, index);
  if (after && part < panel::kPads && *after != waveOfPart(part)) {
    std::vector<Choice>& made = choices[static_cast<std::size_t>(part)];
    if (!previousWave(part)) {
      made.clear();  // They led to a sample that is no longer set.
    } else if (made.size() == kMostChoices) {
      made.erase(made.begin());
    }
    made.push_back({waveOfPart(part), *after});
  }
  BXSampleSelectorViewModelBase::selectSample(part, category, index);
}

std::optional<std::int32_t> SivraySampleSelectorViewModel::previousWave(std::uint64_t part) const {
  if (part >= panel::kPads) {
    return std::nullopt;
  }
  const std::vector<Choice>& made = choices[static_cast<std::size_t>(part)];
  return made.empty() || made.back().after != waveOfPart(part) ? std::nullopt : std::optional(made.back().before);
}

void SivraySampleSelectorViewModel::goBack(std::uint64_t part) {
  if (const auto before = previousWave(part)) {
    choices[static_cast<std::size_t>(part)].pop_back();
    giveWave(part, *before);
  }
}

std::uint64_t SivraySampleSelectorViewModel::getParameterIndex(std::uint64_t part) const {
  return part < panel::kPads ? panel::padMacro(static_cast<std::size_t>(part), panel::kSample) : kNoParameter;
}

}  // namespace tesh::bramel::plugin::sivray
