// Writes a score as a MIDI file of one track.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <juce_audio_basics/juce_audio_basics.h>

#include <cmath>
#include <stdexcept>

#include "content/Files.h"
#include "content/demo/Score.h"

namespace sivray::content {
namespace {

constexpr int kTicksPerQuarter = 960;
constexpr double kTicksPerStep = kTicksPerQuarter / 4.0;
constexpr double kHeldSteps = 0.9;
constexpr int kDrumChannel = 10;
constexpr double kMicrosecondsPerMinute = 60.0e6;

double ticksOf(double step) { return std::round(step * kTicksPerStep); }

}  // namespace

void writeMidiFile(const std::string& path, const DemoScore& score) {
  juce::MidiMessageSequence track;
  track.addEvent(
      juce::MidiMessage::tempoMetaEvent(static_cast<int>(std::lround(kMicrosecondsPerMinute / score.tempo))));
  for (const ScoreControl& control : score.controls) {
    track.addEvent(juce::MidiMessage::controllerEvent(kDrumChannel, control.controller, control.value),
                   ticksOf(control.step));
  }
  for (const ScoreHit& hit : score.hits) {
    const auto velocity = static_cast<juce::uint8>(hit.velocity);
    track.addEvent(juce::MidiMessage::noteOn(kDrumChannel, hit.note, velocity), ticksOf(hit.step));
    track.addEvent(juce::MidiMessage::noteOff(kDrumChannel, hit.note), ticksOf(hit.step + kHeldSteps));
  }
  track.addEvent(juce::MidiMessage::endOfTrack(), ticksOf(score.steps));

  juce::MidiFile file;
  file.setTicksPerQuarterNote(kTicksPerQuarter);
  file.addTrack(track);
  juce::MemoryOutputStream bytes;
  if (!file.writeTo(bytes)) {
    throw std::runtime_error(path + ": cannot be written");
  }
  const auto* const data = static_cast<const std::uint8_t*>(bytes.getData());
  writeFile(path, {data, bytes.getDataSize()});
}

}  // namespace sivray::content
