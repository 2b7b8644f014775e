// One rendering from the command line to the WAV file: a target in its starting state, and the moves from score and
// options.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "MidiScore.h"
#include "Options.h"
#include "PluginModel.h"
#include "RenderTarget.h"

namespace sivray::render {

class Session {
 public:
  /// Opens the plug-in, or with --direct the instrument itself, and loads the state that `options` names. Throws
  /// RenderError.
  explicit Session(const Options& options);

  const PluginModel& model() const { return plugin; }

  /// Sets the program and values that apply from the start, and leaves out texts of the score whose names nothing here
  /// has. Throws RenderError for a value or program that does not exist, and for moves that only --direct can make;
  /// UsageError where the command line asks for them.
  void prepare(const MidiScore& score);

  /// What in the score sets nothing here, in one line; empty if all does.
  const std::string& warning() const { return unknownTexts; }

  /// Which sounds of the user's own the pads miss at the start, in one line; empty if none.
  std::string missingSounds() const { return plugin.missingSounds(); }

  RenderResult render(const MidiScore& score, const std::string& outputPath, const BlockListener& listener = {});

  /// Writes the current state to a file, as a preset if the path ends with ".fxp". Throws RenderError.
  void saveState(const std::string& path);
  /// Writes every program of the factory bank as a preset file into `folder`, which is made if it is missing. Returns
  /// how many. Throws RenderError.
  std::size_t saveKits(const std::string& folder);
  std::vector<std::uint8_t> state() { return target->state(); }

 private:
  void loadState(const std::string& path);
  void takeScoreMoves(const std::vector<ScoreMove>& scoreMoves);
  void selectAt(const ScoreMove& move);
  void vary(std::uint32_t seed);
  void assign(const Assignment& assignment);
  void assignMacro(const Assignment& assignment, std::size_t macro, float value);
  void assignEngine(const Assignment& assignment);

  Options options;
  std::unique_ptr<RenderTarget> target;
  PluginModel plugin;
  std::vector<Move> moves;
  std::string unknownTexts;
  std::string programName;  ///< For presets: of the program that was selected last, else the instrument's.
};

}  // namespace sivray::render
