// Addresses without memory behind them, of which parts are made usable and closed again: what is allocated there lies
// near each other, however much of it comes and goes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

namespace tesh::bramel::platform {

/// Stretches are whole pages of `pageBytes` inside the range. Whoever opens and closes different ones may do so on
/// different threads.
class AddressRange {
 public:
  static std::size_t pageBytes();

  /// Reserves `mostBytes`; where the system has not twice as much, half of it, then half of that, so that the rest of
  /// the process keeps addresses to work with. But at least `leastBytes`, for which there need not be as much again.
  /// Throws std::bad_alloc.
  AddressRange(std::size_t mostBytes, std::size_t leastBytes);
  ~AddressRange();
  AddressRange(const AddressRange&) = delete;
  AddressRange& operator=(const AddressRange&) = delete;

  std::uint8_t* data() const { return start; }
  std::size_t size() const { return byteCount; }

  /// Makes a closed stretch usable: it holds zeros, and the system provides each page when it is first written. False
  /// if the system refuses.
  bool open(std::size_t firstByte, std::size_t bytes) const;

  /// Gives the pages of an open stretch back to the system. Whoever reads there afterwards crashes.
  void close(std::size_t firstByte, std::size_t bytes) const;

  /// Provides the pages of an open stretch in one call, see ZeroedPages. Any part of a page counts.
  void makePresent(std::size_t firstByte, std::size_t bytes) const;

 private:
  std::uint8_t* start = nullptr;
  std::size_t byteCount;
};

}  // namespace tesh::bramel::platform
