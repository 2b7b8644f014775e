// Names of packed waves: at most twelve characters, and none twice.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <set>
#include <string>

namespace sivray::content {

class WaveNames {
 public:
  /// The name that a wave takes after `wish`: cut to twelve bytes, at a whole UTF-8 character. Where it is taken
  /// already, a number takes the place of its end.
  std::string take(const std::string& wish);

 private:
  std::set<std::string> taken;
};

}  // namespace sivray::content
