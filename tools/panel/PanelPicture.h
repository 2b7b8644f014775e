// Draws the editor's panel into a picture, without a screen.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace sivray::panel {

/// The settings of the picture.
struct PanelPictureSettings {
  std::string outputPath;      ///< A PNG file.
  std::string page = "sound";  ///< "sound", "character" or "mix".
  std::string open;            ///< See `kOpenForms`; empty for none.
  double scale = 1.0;          ///< 0.5 to 4. Above 1 the images of the double set are drawn.
  std::vector<int> litPads;    ///< 1 to 8.
};

/// The pop-ups that can be open on the panel.
inline constexpr const char* kOpenForms = "samples=PAD, programs, save-as, effects, settings or tooltip=PARAMETER";

/// Creates an instrument from the installed content, loads `state` as a host does, and draws its panel. Throws
/// std::runtime_error with one line for the user, std::invalid_argument for a wrong page or pop-up.
void drawPanel(std::span<const std::uint8_t> state, const PanelPictureSettings& settings);

}  // namespace sivray::panel
