// The values of a stepped set.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "macro/MacroSetQuantized.h"

#include <algorithm>
#include "core/LittleEndian.h"

namespace tesh::vimo {

std::uint32_t MacroSetQuantized::byteSize() const { return static_cast<std::uint32_t>(4 + 4 * values.size()); }

bool MacroSetQuantized::deserialize(std::span<const std::uint8_t> record) {
  if (record.size() < 4) {
    return false;
  }
  cofu::core::ByteReader reader(record);
  setTargetId(reader.word());
  values.reserve(values.size() + reader.remaining() / sizeof(float));
  while (reader.remaining() >= sizeof(float)) {
    values.push_back(reader.real());
  }
  return true;
}

void MacroSetQuantized::serialize(std::vector<std::uint8_t>& out) const {
  cofu::core::ByteWriter writer(out);
  writer.word(targetId());
  for (const float value : values) {
    writer.real(value);
  }
}

float MacroSetQuantized::map(float x) const {
  if (values.empty()) {
    return 0.0F;
  }
  const float last = static_cast<float>(values.size() - 1);
  const float place = last * x + 0.5F;
  if (!(place > 0.0F)) {
    return values.front();
  }
  return place < last + 1.0F ? values[std::min(static_cast<std::size_t>(place), values.size() - 1)] : values.back();
}

BoxedValue MacroSetQuantized::property(std::uint32_t) const { return cofu::core::boxed::makeBox(values); }

void MacroSetQuantized::setProperty(std::uint32_t, BoxedValue value) {
  if (const auto* steps = cofu::core::boxed::valueIn<std::vector<float>>(value)) {
    values = *steps;
  }
}

}  // namespace tesh::vimo
