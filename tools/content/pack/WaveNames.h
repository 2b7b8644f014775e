// Names of packed waves and kits that fit their fields. Names of waves have at most twelve bytes and are unique.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>

namespace sivray::content {

/// Returns at most `size` bytes of a name, cut at a whole UTF-8 character, without blanks at the end.
std::string nameWithin(std::string_view text, std::size_t size);

class WaveNames {
 public:
  /// Returns `wish` in at most twelve bytes: its start and its last words, cut at whole UTF-8 characters. If that name
  /// is taken, appends a number.
  std::string take(const std::string& wish);

  /// Marks a name as taken.
  void reserve(const std::string& name) { taken.insert(name); }

 private:
  std::set<std::string> taken;
};

}  // namespace sivray::content
