// Names of the categories, and the parameters that choose samples.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewmodels/SivraySampleSelectorViewModel.h"

#include <array>

#include "viewmodels/texts/PanelMacros.h"

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

std::uint64_t SivraySampleSelectorViewModel::getParameterIndex(std::uint64_t part) const {
  return part < panel::kPads ? panel::padMacro(static_cast<std::size_t>(part), panel::kSample) : kNoParameter;
}

}  // namespace tesh::bramel::plugin::sivray
