// The three formatters: two words, integer, table row.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewmodels/texts/ParameterFormatter.h"

#include <array>
#include <cstdio>
#include <utility>

#include "viewmodels/texts/ParameterSteps.h"

namespace tesh::bramel {

BinaryParameterFormatter::BinaryParameterFormatter(std::string low, std::string high)
    : lowText(std::move(low)), highText(std::move(high)) {}

std::string BinaryParameterFormatter::format(float value) const { return value < 0.5F ? lowText : highText; }

IntegerParameterFormatter::IntegerParameterFormatter(std::int32_t minimum, std::int32_t maximum, std::int32_t step)
    : low(minimum), high(maximum), increment(step) {}

std::string IntegerParameterFormatter::format(float value) const {
  const std::int32_t steps = (high - low) / increment + 1;
  const std::int32_t number = quantizeValue(value, steps, 0) * increment + low;
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), low < 0 && number != 0 ? "%+d" : "%d", number);
  return text.data();
}

TableParameterFormatter::TableParameterFormatter(const char* const* table, std::int32_t rowCount)
    : rows(table), count(rowCount) {}

std::string TableParameterFormatter::format(float value) const { return rows[quantizeValue(value, count, 0)]; }

}  // namespace tesh::bramel
