// Makes the names of packed waves unique, in at most twelve bytes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <set>
#include <string>

namespace sivray::content {

class WaveNames {
 public:
  /// Returns `wish` cut to twelve bytes at a whole UTF-8 character. If that name is taken, a number replaces its end.
  std::string take(const std::string& wish);

 private:
  std::set<std::string> taken;
};

}  // namespace sivray::content
