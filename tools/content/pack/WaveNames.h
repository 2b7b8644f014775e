// Makes the names of packed waves unique, in at most twelve bytes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <set>
#include <string>

namespace sivray::content {

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
