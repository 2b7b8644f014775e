// The four user parameters of the master effect as a parameter group.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "parameters/IParameter.h"

namespace tesh::bramel::plugin::sivray::effects {

class SivrayMultiEffector;

/// Type (0 to 29), Switch (0 or 1), Edit1 and Edit2 (0 to 127). Names and display texts follow the type now set. Any
/// thread.
class MultiEffectorParam : public IParameter {
 public:
  explicit MultiEffectorParam(SivrayMultiEffector& multiEffector) : owner(multiEffector) {}

  int count() const override;

  /// Clamps `*value` to the range of the index, writes it back and sets it. A bad index is ignored and gives 0.
  int setValue(int index, std::int32_t* value) override;

  /// The value now set; 0 for a bad index.
  std::int32_t value(int index) const override;

  std::string format(int index, std::int32_t value) const override;

  /// The row at `index` for the type now set, or the row "----" for a bad index.
  const ParameterRow* info(int index) const override;

  int indexOf(std::string_view name) const override;

 private:
  SivrayMultiEffector& owner;
};

}  // namespace tesh::bramel::plugin::sivray::effects
