// Shared by the fuzz targets: an input whose bytes are read as numbers, and the check of a result.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace fuzz {

/// Aborts the program, which the fuzzer reports as a finding, if `holds` is false.
inline void require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

/// The remaining input; past its end every value is 0.
class Input {
 public:
  Input(const std::uint8_t* newData, std::size_t newSize) : data(newData), left(newSize) {}
  bool isEmpty() const { return left == 0; }
  std::vector<std::uint8_t> bytes(std::size_t most) {
    const std::size_t count = std::min(most, left);
    std::vector<std::uint8_t> taken(data, data + count);
    data += count;
    left -= count;
    return taken;
  }
  template <class Number>
  Number number() {
    Number value{};
    const auto taken = bytes(sizeof(value));
    std::copy(taken.begin(), taken.end(), reinterpret_cast<std::uint8_t*>(&value));
    return value;
  }

 private:
  const std::uint8_t* data;
  std::size_t left;
};

}  // namespace fuzz
