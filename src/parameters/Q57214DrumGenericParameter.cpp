// Stores a group's rows and values.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameters/Q57214DrumGenericParameter.h"

namespace tesh::bramel::plugin::sivray {

Q57214DrumGenericParameter::Q57214DrumGenericParameter(std::span<const ParameterRow> rowTable)
    : rows(rowTable.begin(), rowTable.end()), values(rowTable.size()) {
  names.reserve(rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    names.emplace_back(rows[i].name);
    rows[i].name = names.back().c_str();
    values[i].store(static_cast<std::uint32_t>(rows[i].defaultValue), std::memory_order_relaxed);
  }
}

int Q57214DrumGenericParameter::setValue(int index, std::int32_t* value) {
  if (!has(index)) {
    return 0;
  }
  values[static_cast<std::size_t>(index)].store(static_cast<std::uint32_t>(*value), std::memory_order_relaxed);
  return *value;
}

std::int32_t Q57214DrumGenericParameter::value(int index) const {
  if (!has(index)) {
    return 0;
  }
  return static_cast<std::int32_t>(values[static_cast<std::size_t>(index)].load(std::memory_order_relaxed));
}

std::string Q57214DrumGenericParameter::format(int, std::int32_t value) const { return std::to_string(value); }

const ParameterRow* Q57214DrumGenericParameter::info(int index) const {
  return has(index) ? &rows[static_cast<std::size_t>(index)] : &kNoParameterRow;
}

int Q57214DrumGenericParameter::indexOf(std::string_view name) const {
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i] == name) {
      return static_cast<int>(i);
    }
  }
  return -1;
}

}  // namespace tesh::bramel::plugin::sivray
