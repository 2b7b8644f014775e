// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewmodels/SivrayTooltipProvider.h"

#include <array>

#include "effects/interfaces/EditScreenEffects.h"
#include "viewmodels/ParameterFormatter.h"
#include "viewmodels/ParameterSteps.h"

namespace tesh::bramel::tooltip {
namespace {

using plugin::sivray::effects::editScreenLabel;
using plugin::sivray::effects::editScreenName;
using plugin::sivray::effects::kEditScreenEffectCount;

constexpr std::uint64_t kParametersPerPad = 12;
constexpr std::uint64_t kEffectType = 96;
constexpr std::uint64_t kEffectEdit1 = 97;
constexpr std::uint64_t kEffectEdit2 = 98;
constexpr auto kEffectSteps = static_cast<std::int32_t>(kEditScreenEffectCount);
constexpr std::array<const char*, 3> kExclusiveGroups{"Off", "A", "B"};

std::string padText(std::uint64_t padParameter, float value) {
  switch (padParameter) {
    case 2:  // Pan.
      return IntegerParameterFormatter(-63, 63, 1).format(value);
    case 3:   // Mute.
    case 6:   // Effect send.
    case 10:  // Reverse.
      return BinaryParameterFormatter("Off", "On").format(value);
    case 4:  // Pitch.
      return IntegerParameterFormatter(-24, 24, 1).format(value);
    case 5:  // Exclusive group.
      return TableParameterFormatter(kExclusiveGroups.data(), kExclusiveGroups.size()).format(value);
    case 7:  // Envelope mode.
      return BinaryParameterFormatter("Oneshot", "Gate").format(value);
    default:
      return IntegerParameterFormatter(0, 127, 1).format(value);
  }
}

}  // namespace

std::string SivrayTooltipProvider::getParameterName(std::uint64_t index) {
  if (index != kEffectEdit1 && index != kEffectEdit2) {
    return {};
  }
  const std::int32_t effect = truncateValue(getValue(kEffectType), kEffectSteps, 0);
  const std::string label = editScreenLabel(static_cast<std::size_t>(effect), index == kEffectEdit1 ? 0 : 1);
  return label.empty() ? "----" : label;
}

std::string SivrayTooltipProvider::getParameterText(std::uint64_t index) {
  const float value = getValue(index);
  if (index < kEffectType) {
    return padText(index % kParametersPerPad, value);
  }
  if (index == kEffectType) {
    return editScreenName(static_cast<std::size_t>(quantizeValue(value, kEffectSteps, 0)));
  }
  return IntegerParameterFormatter(0, 127, 1).format(value);
}

}  // namespace tesh::bramel::tooltip
