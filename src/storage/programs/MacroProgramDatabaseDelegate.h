// The current state that a program database asks for when it stores a program.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

namespace tesh::vimo {

class MacroProgramDatabaseDelegate {
 public:
  virtual ~MacroProgramDatabaseDelegate() = default;

  /// The number of macros.
  virtual std::uint64_t macroCount() const = 0;

  /// The macro's value, 0 to 1; 0 for an index out of range.
  virtual float macroValue(std::uint64_t index) const = 0;
  /// The macro's object, an opaque number; 0 if it has none, or for an index out of range.
  virtual std::uint64_t macroObject(std::uint64_t index) const = 0;
  virtual const std::string& programName() const = 0;
  virtual const std::string& programComment() const = 0;
  /// Seconds since 1970.
  virtual std::uint32_t programTime() const = 0;
};

}  // namespace tesh::vimo
