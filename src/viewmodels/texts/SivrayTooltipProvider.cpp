// Names and value texts of the drum module's parameters.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewmodels/texts/SivrayTooltipProvider.h"

#include <array>

#include "viewmodels/texts/EditScreenEffects.h"
#include "viewmodels/texts/PanelMacros.h"
#include "viewmodels/texts/ParameterFormatter.h"
#include "viewmodels/texts/ParameterSteps.h"

namespace tesh::bramel::tooltip {
namespace {

using namespace panel;

constexpr auto kEffectSteps = static_cast<std::int32_t>(kEditScreenEffectCount);
constexpr std::array<const char*, 3> kExclusiveGroups{"Off", "A", "B"};

std::string padText(std::uint64_t padParameter, float value) {
  switch (padParameter) {
    case kPan:
      return IntegerParameterFormatter(-63, 63, 1).format(value);
    case kMute:
    case kEffectSend:
    case kReverse:
      return BinaryParameterFormatter("Off", "On").format(value);
    case kPitch:
      return IntegerParameterFormatter(-24, 24, 1).format(value);
    case kExclusiveGroup:
      return TableParameterFormatter(kExclusiveGroups.data(), kExclusiveGroups.size()).format(value);
    case kEnvelopeMode:
      return BinaryParameterFormatter("Oneshot", "Gate").format(value);
    default:
      return IntegerParameterFormatter(0, 127, 1).format(value);
  }
}

}  // namespace

std::string SivrayTooltipProvider::getParameterName(std::uint64_t index) {
  if (index != kEffectEdit1Macro && index != kEffectEdit2Macro) {
    return {};
  }
  const std::int32_t effect = truncateValue(getValue(kEffectTypeMacro), kEffectSteps, 0);
  const std::string label = editScreenLabel(static_cast<std::size_t>(effect), index == kEffectEdit1Macro ? 0 : 1);
  return label.empty() ? "----" : label;
}

std::string SivrayTooltipProvider::getParameterText(std::uint64_t index) {
  const float value = getValue(index);
  if (index < kEffectTypeMacro) {
    return padText(index % kMacrosPerPad, value);
  }
  if (index == kEffectTypeMacro) {
    return editScreenName(static_cast<std::size_t>(quantizeValue(value, kEffectSteps, 0)));
  }
  return IntegerParameterFormatter(0, 127, 1).format(value);
}

}  // namespace tesh::bramel::tooltip
