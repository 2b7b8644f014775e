// A copy of the plug-in's content whose sample library holds one steady sine, for measuring pitch.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>

namespace sivray::check {

class SineContent {
 public:
  static constexpr double kHertz = 300.0;
  static constexpr double kSeconds = 5.5;

  /// Plug-ins created while this object exists load this content instead of their own.
  SineContent();
  ~SineContent();
  SineContent(const SineContent&) = delete;
  SineContent& operator=(const SineContent&) = delete;

 private:
  std::filesystem::path folder;
  std::string before;
};

}  // namespace sivray::check
