// The four user parameters of the master effect as a parameter group.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "parameters/IParameter.h"

namespace tesh::bramel::plugin::sivray::effects {

class SivrayMultiEffector;

/// Type (0 to 29), Switch (0 or 1), Edit1 and Edit2 (0 to 127). Names and display texts are those of the current type.
/// Any thread.
class MultiEffectorParam : public IParameter {
 public:
  explicit MultiEffectorParam(SivrayMultiEffector& multiEffector) : owner(multiEffector) {}

  int count() const override;

  /// Clamps `*value` to the range of the index, writes it back and sets it. For an index out of range it does nothing
  /// and returns 0.
  int setValue(int index, std::int32_t* value) override;

  /// The current value; 0 for an index out of range.
  std::int32_t value(int index) const override;

  std::string format(int index, std::int32_t value) const override;

  /// The row at `index` for the current type, or the row "----" for an index out of range.
  const ParameterRow* info(int index) const override;

  int indexOf(std::string_view name) const override;

 private:
  SivrayMultiEffector& owner;
};

}  // namespace tesh::bramel::plugin::sivray::effects
