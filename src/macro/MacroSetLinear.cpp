// The curves from a (x = 0) to b (x = 1), and in reverse if flipped.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "macro/MacroSetLinear.h"
#include "core/LittleEndian.h"

namespace tesh::vimo {

bool MacroSetLinear::deserialize(std::span<const std::uint8_t> record) {
  if (record.size() < kRecordBytes) {
    return false;
  }
  cofu::core::ByteReader reader(record);
  setTargetId(reader.word());
  ends.minimum = reader.real();
  ends.maximum = reader.real();
  return true;
}

void MacroSetLinear::serialize(std::vector<std::uint8_t>& out) const {
  cofu::core::ByteWriter writer(out);
  writer.word(targetId());
  writer.real(ends.minimum);
  writer.real(ends.maximum);
}

BoxedValue MacroSetLinear::property(std::uint32_t) const { return cofu::core::boxed::makeBox(ends); }

void MacroSetLinear::setProperty(std::uint32_t, BoxedValue value) {
  if (const tmm* range = cofu::core::boxed::valueIn<tmm>(value)) {
    ends = *range;
  }
}

float MacroSetLinear::map(float x) const {
  const auto [a, b] = ends;
  return (b - a) * x + a;
}

float MacroSetLinearFlipped::map(float x) const {
  const auto [a, b] = ends;
  return b - (b - a) * x;
}

float MacroSetSquared::map(float x) const {
  const auto [a, b] = ends;
  return (b - a) * x * x + a;
}

float MacroSetSquaredFlipped::map(float x) const {
  const auto [a, b] = ends;
  return (a - b) * x * x + b;
}

float MacroSetLogCurved::map(float x) const {
  const auto [a, b] = ends;
  return (a - b) * (x - 1.0F) * (x - 1.0F) + b;
}

float MacroSetLogCurvedFlipped::map(float x) const {
  const auto [a, b] = ends;
  return (b - a) * (x - 1.0F) * (x - 1.0F) + a;
}

float MacroSetCubicCurve::map(float x) const {
  const auto [a, b] = ends;
  const float middle = (a + b) * 0.5F;
  const float distance = (2.0F * (b - a)) * (x - 0.5F) * (x - 0.5F);
  return x > 0.5F ? middle + distance : middle - distance;
}

float MacroSetBiquadCurve::map(float x) const {
  const auto [a, b] = ends;
  return (b - a) * (x * x) * (x * x) + a;
}

}  // namespace tesh::vimo
