// One rendering from the command line to the WAV file: a target, brought to its starting state, with the moves that the
// score and the options ask for.
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
  /// Opens the plug-in, or the instrument itself where `options` says so, and loads the state that they name. Throws
  /// RenderError.
  explicit Session(const Options& options);

  const PluginModel& model() const { return plugin; }

  /// Brings the target to the program and values that hold from the start. Throws RenderError for what is unknown, and
  /// for what only the direct path could do.
  void prepare(const MidiScore& score);

  RenderResult render(const MidiScore& score, const std::string& outputPath, const BlockListener& listener = {});

  /// Writes the state as it is now. Throws RenderError.
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
