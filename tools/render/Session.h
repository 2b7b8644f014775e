// One rendering, from the command line to the WAV file: a target with its initial state, and the moves from score and
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
  /// Opens the plug-in, or with --direct the instrument itself, and loads the state file that `options` names. Throws
  /// RenderError.
  explicit Session(const Options& options);

  const PluginModel& model() const { return plugin; }

  /// Sets the program and values that apply from the start, and ignores texts of the score with unknown names. Throws
  /// RenderError for a value or program that does not exist, and for moves that require --direct; UsageError if these
  /// come from the command line.
  void prepare(const MidiScore& score);

  /// Returns one line about the score's texts that set nothing; empty if there are none.
  const std::string& warning() const { return unknownTexts; }

  /// Returns one line that names the user's own sounds that the pads need at the start and that are missing; empty if
  /// none.
  std::string missingSounds() const { return plugin.missingSounds(); }

  RenderResult render(const MidiScore& score, const std::string& outputPath, const BlockListener& listener = {});

  /// Writes the current state to a file, as a preset if the path ends with ".fxp". Throws RenderError.
  void saveState(const std::string& path);
  /// Writes every program of the factory bank as a preset file into `folder`, which is created if it is missing.
  /// Returns their number. Throws RenderError.
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
  std::string programName;  ///< Name for presets: of the program selected last, else of the instrument.
};

}  // namespace sivray::render
