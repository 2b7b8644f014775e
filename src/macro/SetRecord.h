// Helpers of the macro sets: records written into a buffer of known size, and boxed values in and out.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

#include "core/LittleEndian.h"
#include "macro/MacroSetBase.h"

namespace tesh::vimo {

/// Writes numbers one after the other; the caller has seen to the room.
class SetRecordWriter {
 public:
  explicit SetRecordWriter(std::uint8_t* destination) : out(destination) {}

  void word(std::uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8) {
      *out++ = static_cast<std::uint8_t>(value >> shift);
    }
  }
  void real(float value) { word(std::bit_cast<std::uint32_t>(value)); }
  std::uint8_t* place() const { return out; }

 private:
  std::uint8_t* out;
};

template <typename T>
BoxedValue box(T value) {
  return std::make_unique<cofu::core::boxed::holder<T>>(std::move(value));
}

/// The value inside, or null when the box is empty or holds another type.
template <typename T>
const T* unbox(const BoxedValue& boxed) {
  const auto* holder = dynamic_cast<const cofu::core::boxed::holder<T>*>(boxed.get());
  return holder ? &holder->value : nullptr;
}

}  // namespace tesh::vimo
