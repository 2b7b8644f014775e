// A range of addresses without memory, in which stretches can be opened (made usable) and closed again. Everything that
// is allocated there lies within one range, however much comes and goes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

namespace tesh::bramel::platform {

/// Stretches are whole pages of `pageBytes` inside the range. Different threads may open and close different stretches
/// at the same time.
class AddressRange {
 public:
  static std::size_t pageBytes();

  /// Reserves `mostBytes`; if the system does not have twice as many addresses, half of that, and so on, so that the
  /// rest of the process keeps enough. At least `leastBytes`, for which that condition does not apply. Throws
  /// std::bad_alloc.
  AddressRange(std::size_t mostBytes, std::size_t leastBytes);
  ~AddressRange();
  AddressRange(const AddressRange&) = delete;
  AddressRange& operator=(const AddressRange&) = delete;

  std::uint8_t* data() const { return start; }
  std::size_t size() const { return byteCount; }

  /// Opens a closed stretch: it holds zeros, and the system provides each page when it is first written. False if the
  /// system refuses.
  bool open(std::size_t firstByte, std::size_t bytes) const;

  /// Returns the pages of an open stretch to the system. Later accesses crash.
  void close(std::size_t firstByte, std::size_t bytes) const;

  /// Provides the pages of an open stretch in one call, see ZeroedPages. Partly covered pages are included.
  void makePresent(std::size_t firstByte, std::size_t bytes) const;

 private:
  std::uint8_t* start = nullptr;
  std::size_t byteCount;
};

}  // namespace tesh::bramel::platform
