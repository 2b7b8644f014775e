// Plays the pads of the factory programs through the whole processor and measures the output.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "core/ProcessBlock.h"
#include "macro/PluginMacroControllable.h"

namespace sivray::content {

/// The measurements of one hit.
struct HitMeasure {
  double peak = 0.0;        ///< Largest sample of both sides, 1.0 is full scale.
  double loudness = 0.0;    ///< Root mean square of the loudest tenth of a second.
  double seconds = 0.0;     ///< Until it has fallen 60 dB below its peak for good.
  double brightness = 0.0;  ///< Frequency that its energy balances around, in Hz.
};

/// A note of a piece.
struct Stroke {
  double seconds = 0.0;
  int note = 0;
  int velocity = 0;
};

/// A macro's move while a piece plays.
struct MacroMove {
  double seconds = 0.0;
  std::size_t macro = 0;
  float value = 0.0F;  ///< 0 to 1.
};

/// Two sides of equal length at the engine's rate; full scale is 1.0.
struct StereoSound {
  std::vector<float> left;
  std::vector<float> right;
};

/// A processor with the installed content. Throws std::runtime_error when there is none.
class KitMeter {
 public:
  using Processor = tesh::vimo::PluginMacroControllable<tesh::vimo::Generator<float>>;

  KitMeter();

  Processor& instrument() { return *processor; }

  std::size_t programCount() const;
  std::string programName(std::size_t program) const;
  std::string programStyle(std::size_t program) const;

  /// Selects a factory program and silences the previous one.
  void select(std::size_t program);

  /// Sets a macro of the selected program, 0 to 1.
  void setMacro(std::size_t macro, float value);

  /// Plays the notes together on a silent instrument and measures until it is silent again, at most for `seconds`.
  HitMeasure hit(const std::vector<int>& notes, int velocity, double seconds);

  /// Sets the tempo of the effects, in beats a minute.
  void setTempo(double tempo);

  /// Plays strokes, in the order of their times, on a silent instrument for `seconds`. Moves, in order as well, come up
  /// to 23 ms early, at the start of their block.
  StereoSound play(std::span<const Stroke> strokes, double seconds, std::span<const MacroMove> moves = {});

 private:
  void silence();

  /// Moves a macro with the next block.
  void putMacro(std::size_t macro, float value);

  /// Renders the messages in `midi` and appends one block to `left` and `right`.
  void renderBlock();

  tesh::vimo::TimedValueRing automation;
  tesh::vimo::TimedValueRing echoes;
  std::unique_ptr<Processor> processor;
  std::vector<tesh::vimo::MidiEvent> midi;
  std::vector<float> left;
  std::vector<float> right;
};

}  // namespace sivray::content
