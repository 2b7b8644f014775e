// What this instrument's parameters read as.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "viewmodels/texts/BramelTooltipProvider.h"

namespace tesh::bramel::tooltip {

class SivrayTooltipProvider : public BramelTooltipProvider {
 public:
  /// For the two edit knobs of the master effect, the label that the chosen effect gives them, "----" where it gives
  /// none; otherwise the empty string.
  std::string getParameterName(std::uint64_t index) override;
  std::string getParameterText(std::uint64_t index) override;
};

}  // namespace tesh::bramel::tooltip
