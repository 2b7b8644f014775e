// The stepped set: the macro's range is divided into as many steps as there are values.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <utility>
#include <vector>

#include "macro/MacroSetBase.h"

namespace tesh::vimo {

class MacroSetQuantized final : public MacroSetBase {
 public:
  MacroSetType type() const override { return MacroSetType::quantized; }
  const char* typeName() const override { return "Quantized"; }
  std::uint32_t byteSize() const override;
  /// Appends the values of the record.
  bool deserialize(std::span<const std::uint8_t> record) override;
  void serialize(std::vector<std::uint8_t>& out) const override;
  /// The steps are centred on the points k / (n - 1). 0 if there are no values.
  float map(float x) const SIVRAY_NONBLOCKING override;
  std::uint32_t propertyCount() const override { return 1; }
  /// The values as an array of floats.
  BoxedValue property(std::uint32_t index) const override;
  void setProperty(std::uint32_t index, BoxedValue value) override;

  std::size_t valueCount() const { return values.size(); }
  void setValues(std::vector<float> steps) { values = std::move(steps); }

 private:
  std::vector<float> values;
};

}  // namespace tesh::vimo
