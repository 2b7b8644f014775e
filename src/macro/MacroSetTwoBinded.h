// A set that splits the macro's range at a point and has a curve for each half.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "macro/MacroSetBase.h"

namespace tesh::vimo {

/// Properties: 0 is the three points as `tmmm`, 1 the split as float, 2 and 3 the halves' property 0, 4 and 5 the
/// halves' types. Setting a type replaces that half.
class MacroSetTwoBinded final : public MacroSetBase {
 public:
  static constexpr std::uint32_t kRecordHeadBytes = 36;

  MacroSetType type() const override { return MacroSetType::twoBinded; }
  const char* typeName() const override { return "TwoBinded"; }
  std::uint32_t byteSize() const override;
  /// A half of an unknown type or with a truncated record stays missing. A split outside 0 to 1 would divide by zero
  /// and is replaced by 0.5.
  bool deserialize(std::span<const std::uint8_t> record) override;
  void serialize(std::vector<std::uint8_t>& out) const override;
  void setTargetId(std::uint32_t id) override;
  /// 0 in a missing half.
  float map(float x) const SIVRAY_NONBLOCKING override;
  std::uint32_t propertyCount() const override { return 6; }
  BoxedValue property(std::uint32_t index) const override;
  void setProperty(std::uint32_t index, BoxedValue value) override;

 private:
  void setSplit(float x);
  void setHalf(std::size_t half, MacroSetType type);

  std::array<std::unique_ptr<MacroSetBase>, 2> halves;
  tmmm points;
  float split = 0.5F;
};

}  // namespace tesh::vimo
