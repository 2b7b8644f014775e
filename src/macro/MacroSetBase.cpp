// Makes sets of every type.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "macro/MacroSetBase.h"

#include "macro/MacroSetLinear.h"
#include "macro/MacroSetQuantized.h"
#include "macro/MacroSetTwoBinded.h"

namespace tesh::vimo {

std::unique_ptr<MacroSetBase> makeMacroSet(MacroSetType type) {
  switch (type) {
    case MacroSetType::linear:
      return std::make_unique<MacroSetLinear>();
    case MacroSetType::linearFlipped:
      return std::make_unique<MacroSetLinearFlipped>();
    case MacroSetType::quantized:
      return std::make_unique<MacroSetQuantized>();
    case MacroSetType::squared:
      return std::make_unique<MacroSetSquared>();
    case MacroSetType::squaredFlipped:
      return std::make_unique<MacroSetSquaredFlipped>();
    case MacroSetType::logCurved:
      return std::make_unique<MacroSetLogCurved>();
    case MacroSetType::logCurvedFlipped:
      return std::make_unique<MacroSetLogCurvedFlipped>();
    case MacroSetType::cubicCurve:
      return std::make_unique<MacroSetCubicCurve>();
    case MacroSetType::biquadCurve:
      return std::make_unique<MacroSetBiquadCurve>();
    case MacroSetType::twoBinded:
      return std::make_unique<MacroSetTwoBinded>();
  }
  return nullptr;
}

}  // namespace tesh::vimo
