// Names of packed waves and kits that fit their bytes; those of waves, which have twelve, are made unique.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>

namespace sivray::content {

/// At most `size` bytes of a name, at whole UTF-8 characters and without blanks at the end.
std::string nameWithin(std::string_view text, std::size_t size);

class WaveNames {
 public:
  /// Returns `wish` in at most twelve bytes: its begin and its last words, at whole UTF-8 characters. If that name is
  /// taken, a number follows it.
  std::string take(const std::string& wish);

  /// Leaves a name to others.
  void reserve(const std::string& name) { taken.insert(name); }

 private:
  std::set<std::string> taken;
};

}  // namespace sivray::content
