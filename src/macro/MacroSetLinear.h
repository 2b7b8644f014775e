// The sets with two ends: a straight line, and curves between the same ends.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "macro/MacroSetBase.h"

namespace tesh::vimo {

class MacroSetLinear : public MacroSetBase {
 public:
  static constexpr std::uint32_t kRecordBytes = 12;

  MacroSetType type() const override { return MacroSetType::linear; }
  const char* typeName() const override { return "Linear"; }
  std::uint32_t byteSize() const override { return kRecordBytes; }
  bool deserialize(std::span<const std::uint8_t> record) override;
  void serialize(std::vector<std::uint8_t>& out) const override;
  float map(float x) const SIVRAY_NONBLOCKING override;
  std::uint32_t propertyCount() const override { return 1; }
  /// The range as `tmm`, for any index.
  BoxedValue property(std::uint32_t index) const override;
  void setProperty(std::uint32_t index, BoxedValue value) override;

  /// The ends of the range, in any order.
  void setRange(tmm range) { ends = range; }

 protected:
  tmm ends;
};

/// The line from the maximum to the minimum.
class MacroSetLinearFlipped final : public MacroSetLinear {
 public:
  MacroSetType type() const override { return MacroSetType::linearFlipped; }
  const char* typeName() const override { return "Invert"; }
  float map(float x) const SIVRAY_NONBLOCKING override;
};

/// Rises slowly, then fast.
class MacroSetSquared final : public MacroSetLinear {
 public:
  MacroSetType type() const override { return MacroSetType::squared; }
  const char* typeName() const override { return "EXP"; }
  float map(float x) const SIVRAY_NONBLOCKING override;
};

class MacroSetSquaredFlipped final : public MacroSetLinear {
 public:
  MacroSetType type() const override { return MacroSetType::squaredFlipped; }
  const char* typeName() const override { return "EXP Inv"; }
  float map(float x) const SIVRAY_NONBLOCKING override;
};

/// Rises fast, then flattens.
class MacroSetLogCurved final : public MacroSetLinear {
 public:
  MacroSetType type() const override { return MacroSetType::logCurved; }
  const char* typeName() const override { return "LOG"; }
  float map(float x) const SIVRAY_NONBLOCKING override;
};

class MacroSetLogCurvedFlipped final : public MacroSetLinear {
 public:
  MacroSetType type() const override { return MacroSetType::logCurvedFlipped; }
  const char* typeName() const override { return "LOG Inv"; }
  float map(float x) const SIVRAY_NONBLOCKING override;
};

/// An S that is flat around the middle.
class MacroSetCubicCurve final : public MacroSetLinear {
 public:
  MacroSetType type() const override { return MacroSetType::cubicCurve; }
  const char* typeName() const override { return "EXP Mid"; }
  float map(float x) const SIVRAY_NONBLOCKING override;
};

class MacroSetBiquadCurve final : public MacroSetLinear {
 public:
  MacroSetType type() const override { return MacroSetType::biquadCurve; }
  const char* typeName() const override { return "Biquad"; }
  float map(float x) const SIVRAY_NONBLOCKING override;
};

}  // namespace tesh::vimo
