// A reader that knows its offset in the file, so that the error for a broken file can name the place.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include "core/LittleEndian.h"

namespace sivray::content {

/// Thrown at the first fault of a file: its offset, and the reason.
class BrokenFile : public std::runtime_error {
 public:
  BrokenFile(std::uint64_t place, const std::string& reason) : std::runtime_error(reason), offset(place) {}

  std::uint64_t offset;
};

class CheckedReader {
 public:
  /// `start` is the offset of `bytes` in the file.
  explicit CheckedReader(std::span<const std::uint8_t> bytes, std::uint64_t start = 0) : rest(bytes), place(start) {}

  std::uint64_t offset() const { return place; }
  std::size_t remaining() const { return rest.size(); }

  [[noreturn]] void fail(const std::string& reason) const { throw BrokenFile(place, reason); }

  /// Returns the next `size` bytes. Throws BrokenFile, naming `what`, if fewer are left.
  std::span<const std::uint8_t> take(std::uint64_t size, std::string_view what) {
    if (size > rest.size()) {
      fail(std::string(what) + " takes " + std::to_string(size) + " bytes, but " + std::to_string(rest.size()) +
           " are left");
    }
    const auto taken = rest.first(static_cast<std::size_t>(size));
    rest = rest.subspan(taken.size());
    place += size;
    return taken;
  }

  /// Returns a reader for the next `size` bytes alone. Throws as `take`.
  CheckedReader part(std::uint64_t size, std::string_view what) {
    const std::uint64_t start = place;
    return CheckedReader(take(size, what), start);
  }

  std::uint32_t word(std::string_view what) { return tesh::cofu::core::ByteReader(take(4, what)).word(); }
  std::uint64_t longWord(std::string_view what) { return tesh::cofu::core::ByteReader(take(8, what)).longWord(); }
  float real(std::string_view what) { return std::bit_cast<float>(word(what)); }

  /// Reads a field of `size` bytes and returns its text up to the first zero byte. Throws as `take`.
  std::string text(std::uint64_t size, std::string_view what) {
    const auto bytes = take(size, what);
    const std::string words(bytes.begin(), bytes.end());
    return words.substr(0, words.find('\0'));
  }

  /// Returns the word at `index` words from here without moving on; 0 past the end of the file.
  std::uint32_t peek(std::size_t index) const { return tesh::cofu::core::wordIn(rest, index * 4).value_or(0); }

  void requireEnd(std::string_view what) const {
    if (!rest.empty()) {
      fail(std::to_string(rest.size()) + " bytes are left behind " + std::string(what));
    }
  }

 private:
  std::span<const std::uint8_t> rest;
  std::uint64_t place;
};

}  // namespace sivray::content
