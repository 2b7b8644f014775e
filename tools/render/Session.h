// One rendering from the command line to the WAV file: a target in its starting state, and the moves from score and
// options.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

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

  /// Sets the program and values that apply from the start. Throws RenderError for unknown names, and for moves that
  /// only --direct can make.
  void prepare(const MidiScore& score);

  RenderResult render(const MidiScore& score, const std::string& outputPath, const BlockListener& listener = {});

  /// Writes the current state to a file. Throws RenderError.
  void saveState(const std::string& path);
  std::vector<std::uint8_t> state() { return target->state(); }

 private:
  void loadState(const std::string& path);
  void assign(const Assignment& assignment);
  void assignMacro(const Assignment& assignment, std::size_t macro, float value);
  void assignEngine(const Assignment& assignment);

  Options options;
  std::unique_ptr<RenderTarget> target;
  PluginModel plugin;
  std::vector<Move> moves;
};

}  // namespace sivray::render
