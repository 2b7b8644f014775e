// What the renderer was asked for on its command line.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "RenderLoop.h"

namespace sivray::render {

struct Options {
  std::string inputPath;
  std::string outputPath;
  bool help = false;
  RenderSettings settings;
  std::vector<std::pair<std::string, std::string>> waves;  ///< PAD, wave name or number.
  std::vector<std::pair<std::string, std::string>> sets;   ///< Engine parameter, value.
  std::optional<std::string> effect;
  std::optional<std::string> edit1;
  std::optional<std::string> edit2;
  bool effectOff = false;
  std::optional<std::string> effectTourFolder;
};

/// The text of --help.
std::string helpText();

/// Reads the command line. Throws RenderError on an unknown option, a missing value or a number out of range.
Options parseOptions(const std::vector<std::string>& arguments);

}  // namespace sivray::render
