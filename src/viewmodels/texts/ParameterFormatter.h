// The text of a normalised parameter value: one of two words, an integer, or a row of a table.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

namespace tesh::bramel {

class ParameterFormatter {
 public:
  virtual ~ParameterFormatter() = default;

  /// The text of a value from 0 to 1. A value outside is limited to the range, and NaN counts as 0, unless a class says
  /// otherwise. Any thread; allocates.
  virtual std::string format(float value) const = 0;
};

/// One of two words: the first below 0.5, the second from 0.5 on and for NaN.
class BinaryParameterFormatter : public ParameterFormatter {
 public:
  BinaryParameterFormatter(std::string low, std::string high);
  std::string format(float value) const override;

 private:
  std::string lowText;
  std::string highText;
};

/// An integer from `minimum` to `maximum` in steps of `step` (above 0). If `minimum` is negative, all numbers except 0
/// have a sign.
class IntegerParameterFormatter : public ParameterFormatter {
 public:
  IntegerParameterFormatter(std::int32_t minimum, std::int32_t maximum, std::int32_t step);
  std::string format(float value) const override;

 private:
  std::int32_t low;
  std::int32_t high;
  std::int32_t increment;
};

/// A row of a table of `rowCount` strings, which must outlive the formatter.
class TableParameterFormatter : public ParameterFormatter {
 public:
  TableParameterFormatter(const char* const* table, std::int32_t rowCount);
  std::string format(float value) const override;

 private:
  const char* const* rows;
  std::int32_t count;
};

}  // namespace tesh::bramel
