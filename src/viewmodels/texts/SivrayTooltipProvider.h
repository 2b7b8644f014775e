// The texts of this instrument's parameters.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "viewmodels/texts/BramelTooltipProvider.h"

namespace tesh::bramel::tooltip {

class SivrayTooltipProvider : public BramelTooltipProvider {
 public:
  /// For the two edit knobs of the master effect, their label for the current effect, or "----" if they have none;
  /// empty for all other parameters.
  std::string getParameterName(std::uint64_t index) override;
  std::string getParameterText(std::uint64_t index) override;
};

}  // namespace tesh::bramel::tooltip
