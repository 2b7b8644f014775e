// The renderer's options and their parsing.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "RenderLoop.h"

namespace sivray::render {

/// The kind of value that an assignment sets.
enum class AssignmentTarget { macro, hostParameter, engineParameter };

/// NAME=VALUE with an optional time; without a time it applies before the first block.
struct Assignment {
  AssignmentTarget target = AssignmentTarget::engineParameter;
  std::string name;
  std::string value;
  double seconds = 0.0;
};

struct Options {
  std::string inputPath;
  std::string outputPath;
  bool help = false;
  bool version = false;
  bool listPrograms = false;
  bool listEffects = false;
  bool listWaves = false;
  bool listParameters = false;
  bool direct = false;
  std::optional<double> rate;  ///< The host's rate in Hz; 44100 unless given.
  std::optional<std::string> libraryPath;
  std::optional<std::string> program;
  std::optional<std::uint32_t> varySeed;  ///< Seed by which each pad gets a wave similar to its own.
  std::optional<std::string> statePath;
  std::optional<std::string> saveStatePath;
  std::optional<std::string> kitFolder;  ///< Folder to write the factory kits to, as preset files, instead of playing.
  std::optional<std::string> effectTourFolder;
  std::vector<Assignment> assignments;  ///< In the order of the command line.
  RenderSettings settings;
  double longestScore = 3600.0;          ///< Seconds that a MIDI file may last.
  std::optional<std::string> panelPath;  ///< Path of a picture of the panel, drawn instead of playing.
  std::string panelPage = "sound";
  std::string panelOpen;
  double panelScale = 1.0;
  std::vector<int> litPads;  ///< 1 to 8.
  bool check = false;
  bool fullCheck = false;
  std::string checkForm = "vst2";         ///< vst2, vst3, lv2 or clap.
  std::optional<std::string> bundlePath;  ///< Bundle to check, of a form other than VST 2.
  std::string checkOnly;                  ///< Run only the checks whose names contain this text.
  double soakHours = 0.0;

  bool lists() const { return listPrograms || listEffects || listWaves || listParameters; }
};

/// Returns the text of --help.
std::string helpText();

/// Parses the command line. Throws UsageError for an unknown option, a missing value or a number out of range.
Options parseOptions(const std::vector<std::string>& arguments);

}  // namespace sivray::render
