// The values that a program database reads when it stores the current state.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

namespace tesh::vimo {

class MacroProgramDatabaseDelegate {
 public:
  virtual ~MacroProgramDatabaseDelegate() = default;

  /// The number of macros that a program holds values for today.
  virtual std::uint64_t macroCount() const = 0;

  /// The macro's stored value, 0 to 1; 0 for an index past the list.
  virtual float macroValue(std::uint64_t index) const = 0;
  /// The macro's object; 0 if it has none, or for an index past the list.
  virtual std::uint64_t macroObject(std::uint64_t index) const = 0;
  virtual const std::string& programName() const = 0;
  virtual const std::string& programComment() const = 0;
  /// Seconds since 1970.
  virtual std::uint32_t programTime() const = 0;
};

}  // namespace tesh::vimo
