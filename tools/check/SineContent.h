// A copy of the plug-in's content whose library holds nothing but one steady sine, for measuring pitch.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>

namespace sivray::check {

class SineContent {
 public:
  static constexpr double kHertz = 300.0;
  static constexpr double kSeconds = 5.5;

  /// Plug-ins that are made while this lives find it in place of their own content.
  SineContent();
  ~SineContent();
  SineContent(const SineContent&) = delete;
  SineContent& operator=(const SineContent&) = delete;

 private:
  std::filesystem::path folder;
  std::string before;
};

}  // namespace sivray::check
