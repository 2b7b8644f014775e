// Little-endian numbers in byte buffers: the reader and the writer of all files and states.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace tesh::cofu::core {

/// The bytes from `offset` on, at most `size` of them; fewer or none if the buffer ends earlier.
inline std::span<const std::uint8_t> bytesAt(std::span<const std::uint8_t> bytes, std::uint64_t offset,
                                             std::uint64_t size = ~std::uint64_t{0}) {
  if (offset >= bytes.size()) {
    return {};
  }
  const auto rest = bytes.subspan(static_cast<std::size_t>(offset));
  return size < rest.size() ? rest.first(static_cast<std::size_t>(size)) : rest;
}

/// Reads a buffer from front to back. A read past the end returns zero or no bytes, and so do all later reads.
class ByteReader {
 public:
  explicit ByteReader(std::span<const std::uint8_t> bytes) : rest(bytes) {}

  bool hasFailed() const { return failed; }
  std::size_t remaining() const { return rest.size(); }

  std::uint32_t word() { return static_cast<std::uint32_t>(number<4>()); }
  std::uint64_t longWord() { return number<8>(); }
  float real() { return std::bit_cast<float>(word()); }

  /// The next `size` bytes; none if fewer are left.
  std::span<const std::uint8_t> take(std::uint64_t size) {
    if (size > rest.size()) {
      failed = true;
      rest = {};
      return {};
    }
    const auto taken = rest.first(static_cast<std::size_t>(size));
    rest = rest.subspan(taken.size());
    return taken;
  }

  /// The text of a field of `size` bytes, up to its first zero byte. The result refers to the buffer.
  std::string_view text(std::uint64_t size) {
    const auto field = take(size);
    const std::string_view characters(reinterpret_cast<const char*>(field.data()), field.size());
    return characters.substr(0, characters.find('\0'));
  }

 private:
  template <std::size_t Count>
  std::uint64_t number() {
    const auto bytes = take(Count);
    std::uint64_t result = 0;
    if (!bytes.empty()) {
      for (std::size_t i = 0; i < Count; ++i) {  // Of a fixed length, so that the compiler makes one load of it.
        result |= static_cast<std::uint64_t>(bytes[i]) << (8 * i);
      }
    }
    return result;
  }

  std::span<const std::uint8_t> rest;
  bool failed = false;
};

/// The word at `offset`, or nothing if `bytes` does not hold all four of its bytes.
inline std::optional<std::uint32_t> wordIn(std::span<const std::uint8_t> bytes, std::uint64_t offset) {
  ByteReader reader(bytesAt(bytes, offset));
  const std::uint32_t word = reader.word();
  return reader.hasFailed() ? std::nullopt : std::optional(word);
}

/// Appends to a growing buffer.
class ByteWriter {
 public:
  explicit ByteWriter(std::vector<std::uint8_t>& destination) : out(destination) {}

  void word(std::uint32_t value) { number<4>(value); }
  void longWord(std::uint64_t value) { number<8>(value); }
  void real(float value) { word(std::bit_cast<std::uint32_t>(value)); }
  void bytes(std::span<const std::uint8_t> data) { std::copy(data.begin(), data.end(), extend(data.size())); }
  void text(std::string_view characters) { std::copy(characters.begin(), characters.end(), extend(characters.size())); }
  void zeros(std::size_t count) { extend(count); }

 private:
  template <std::size_t Count>
  void number(std::uint64_t value) {
    const auto place = extend(Count);
    for (std::size_t i = 0; i < Count; ++i) {
      place[static_cast<std::ptrdiff_t>(i)] = static_cast<std::uint8_t>(value >> (8 * i));
    }
  }

  /// Appends `count` zero bytes and returns an iterator to the first of them.
  std::vector<std::uint8_t>::iterator extend(std::size_t count);

  std::vector<std::uint8_t>& out;
};

}  // namespace tesh::cofu::core
