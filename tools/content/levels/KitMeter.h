// Plays the pads of the factory programs through the whole processor and measures what comes out.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/ProcessBlock.h"
#include "macro/PluginMacroControllable.h"

namespace sivray::content {

/// What a hit sounds like.
struct HitMeasure {
  double peak = 0.0;        ///< Largest sample of both sides, 1.0 is full scale.
  double loudness = 0.0;    ///< Root mean square of the loudest tenth of a second.
  double seconds = 0.0;     ///< Until it has fallen 60 dB below its peak for good.
  double brightness = 0.0;  ///< Frequency that its energy balances around, in Hz.
};

/// A processor with the content that the paths lead to. Throws std::runtime_error when there is none.
class KitMeter {
 public:
  using Processor = tesh::vimo::PluginMacroControllable<tesh::vimo::Generator<float>>;

  KitMeter();

  Processor& instrument() { return *processor; }

  std::size_t programCount() const;
  std::string programName(std::size_t program) const;

  /// Selects a factory program; the sound of the one before ends at once.
  void select(std::size_t program);

  /// Moves a macro of the selected program.
  void setMacro(std::size_t macro, float value);

  /// Hits notes at once on a silent instrument and listens until it is silent again, or for `seconds`.
  HitMeasure hit(const std::vector<int>& notes, int velocity, double seconds);

 private:
  void silence();

  /// Renders a block at the end of `left` and `right`, with the messages that wait in `midi`.
  void renderBlock();

  tesh::vimo::TimedValueRing automation;
  tesh::vimo::TimedValueRing echoes;
  std::unique_ptr<Processor> processor;
  std::vector<tesh::vimo::MidiEvent> midi;
  std::vector<float> left;
  std::vector<float> right;
};

}  // namespace sivray::content
