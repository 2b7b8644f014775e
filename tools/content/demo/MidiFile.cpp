// Writes grooves as a MIDI file of one track.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <juce_audio_basics/juce_audio_basics.h>

#include <cmath>
#include <stdexcept>

#include "content/Files.h"
#include "content/demo/Groove.h"

namespace sivray::content {
namespace {

constexpr int kTicksPerQuarter = 960;
constexpr int kDrumChannel = 10;
constexpr double kMicrosecondsPerMinute = 60.0e6;
constexpr int kTextEvent = 1;

double ticksOf(double beat) { return std::round(beat * kTicksPerQuarter); }

/// Adds a groove that starts at a beat of the track.
void add(juce::MidiMessageSequence& track, const Groove& groove, double start) {
  track.addEvent(
      juce::MidiMessage::tempoMetaEvent(static_cast<int>(std::lround(kMicrosecondsPerMinute / groove.tempo))),
      ticksOf(start));
  track.addEvent(juce::MidiMessage::textMetaEvent(kTextEvent, juce::String("program=" + groove.kit)), ticksOf(start));
  for (const GrooveMove& move : groove.moves) {
    track.addEvent(juce::MidiMessage::controllerEvent(kDrumChannel, move.controller, move.value),
                   ticksOf(start + move.beat));
  }
  for (const GrooveHit& hit : groove.hits) {
    const auto velocity = static_cast<juce::uint8>(hit.velocity);
    track.addEvent(juce::MidiMessage::noteOn(kDrumChannel, hit.note, velocity), ticksOf(start + hit.beat));
    track.addEvent(juce::MidiMessage::noteOff(kDrumChannel, hit.note), ticksOf(start + hit.beat + hit.beats));
  }
}

}  // namespace

void writeMidiFile(const std::string& path, const std::vector<Groove>& suite) {
  juce::MidiMessageSequence track;
  double start = 0.0;
  for (const Groove& groove : suite) {
    add(track, groove, start);
    start += groove.beats + groove.endBeats;
  }
  track.addEvent(juce::MidiMessage::endOfTrack(), ticksOf(start));

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
