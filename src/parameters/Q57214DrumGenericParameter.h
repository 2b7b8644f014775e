// A parameter group that only stores values: a table of names and ranges, and one value per row.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <span>
#include <string>
#include <vector>

#include "parameters/IParameter.h"

namespace tesh::bramel::plugin::sivray {

/// Values are initially their defaults and are stored without clamping. For an index out of range, `setValue` does
/// nothing, the value is 0, and the row is {"----", 0, 0, 0}.
class Q57214DrumGenericParameter : public IParameter {
 public:
  /// Copies the rows and their names.
  explicit Q57214DrumGenericParameter(std::span<const ParameterRow> rowTable);
  Q57214DrumGenericParameter(const Q57214DrumGenericParameter&) = delete;
  Q57214DrumGenericParameter& operator=(const Q57214DrumGenericParameter&) = delete;

  int count() const override { return static_cast<int>(rows.size()); }
  int setValue(int index, std::int32_t* value) override;
  std::int32_t value(int index) const override;
  std::string format(int index, std::int32_t value) const override;
  const ParameterRow* info(int index) const override;
  int indexOf(std::string_view name) const override;

 private:
  bool has(int index) const { return index >= 0 && index < count(); }

  std::vector<std::string> names;
  std::vector<ParameterRow> rows;
  std::vector<std::atomic<std::uint32_t>> values;
};

}  // namespace tesh::bramel::plugin::sivray
