// The address range of a library or program.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string_view>

namespace sivray::check {

/// The addresses from `from` to just below `to`; none where both are 0.
struct ModuleRange {
  std::uintptr_t from = 0;
  std::uintptr_t to = 0;

  /// The range of the first loaded library with `text` in its path, or of this program for an empty text. Empty if
  /// there is no such library, and on Windows.
  static ModuleRange of(std::string_view text);

  bool holds(std::uintptr_t address) const { return address >= from && address < to; }
  bool holds(const void* address) const { return holds(reinterpret_cast<std::uintptr_t>(address)); }
};

}  // namespace sivray::check
