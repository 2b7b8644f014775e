// Reads a MIDI file through JUCE and sorts its events into the score's lists.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "MidiScore.h"

#include <juce_audio_basics/juce_audio_basics.h>

#include <algorithm>

#include "RenderError.h"
#include "terminal/NamedFile.h"

namespace sivray::render {
namespace {

constexpr int kPatternsOfTheirOwn = 2;  ///< Format 2, whose tracks are independent patterns without a common time.

/// Returns the true duration of what JUCE counts as a second. A positive division is ticks per quarter note; a negative
/// one holds minus the frames per second in its high byte and the ticks per frame in its low byte, with 29 for 30000 /
/// 1001. Throws RenderError if the division defines no time.
double secondsPerJuceSecond(int division, const std::string& path) {
  constexpr double kDropFrameRate = 30000.0 / 1001.0;
  const int frames = -(division >> 8);
  const bool isSmpte = frames == 24 || frames == 25 || frames == 29 || frames == 30;
  if (division == 0 || (division < 0 && (!isSmpte || (division & 0xFF) == 0))) {
    throw RenderError("the MIDI file '" + path + "' does not say how long a tick is: its division is " +
                      std::to_string(static_cast<std::uint16_t>(division)));
  }
  return division < 0 && frames == 29 ? 29.0 / kDropFrameRate : 1.0;
}

juce::MidiFile openMidiFile(const std::string& path) {
  const juce::File file = namedFile(path);
  if (!file.existsAsFile()) {
    throw RenderError("cannot open the MIDI file '" + path + "': no such file");
  }
  juce::FileInputStream stream(file);
  if (!stream.openedOk()) {
    throw RenderError("cannot open the MIDI file '" + path + "': it is not readable");
  }
  if (stream.getTotalLength() == 0) {
    throw RenderError("the MIDI file '" + path + "' is empty");
  }
  juce::MidiFile midi;
  int type = 0;
  if (!midi.readFrom(stream, true, &type) || midi.getNumTracks() == 0) {
    throw RenderError("'" + path + "' is not a standard MIDI file, or it is broken");
  }
  if (type == kPatternsOfTheirOwn) {
    throw RenderError("the MIDI file '" + path +
                      "' is of type 2, patterns without a common time: save it as type 0 or 1");
  }
  const double longer = secondsPerJuceSecond(midi.getTimeFormat(), path);
  midi.convertTimestampTicksToSeconds();
  if (longer == 1.0) {
    return midi;
  }
  juce::MidiFile stretched;
  for (int track = 0; track < midi.getNumTracks(); ++track) {
    juce::MidiMessageSequence events(*midi.getTrack(track));
    for (auto* const event : events) {
      event->message.setTimeStamp(event->message.getTimeStamp() * longer);
    }
    stretched.addTrack(events);
  }
  return stretched;
}

void addText(MidiScore& score, const juce::MidiMessage& message) {
  const std::string text = message.getTextFromTextMetaEvent().trim().toStdString();
  const std::size_t equals = text.find('=');
  if (message.getMetaEventType() == 1 && equals != std::string::npos && equals > 0) {
    score.moves.push_back({message.getTimeStamp(), text.substr(0, equals), text.substr(equals + 1)});
  }
}

void addMessage(MidiScore& score, const juce::MidiMessage& message) {
  if (message.isTempoMetaEvent()) {
    const double secondsPerBeat = message.getTempoSecondsPerQuarterNote();
    if (secondsPerBeat > 0.0) {
      score.tempos.push_back({message.getTimeStamp(), 60.0 / secondsPerBeat});
    }
    return;
  }
  if (message.isTextMetaEvent()) {
    addText(score, message);
    return;
  }
  const int size = message.getRawDataSize();
  if (message.isMetaEvent() || message.isSysEx() || size < 1 || size > 3) {
    return;
  }
  ScoreMessage entry;
  entry.seconds = message.getTimeStamp();
  entry.size = size;
  std::copy_n(message.getRawData(), size, entry.bytes.begin());
  score.messages.push_back(entry);
}

template <typename Entries>
void sortByTime(Entries& entries) {
  std::stable_sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) { return a.seconds < b.seconds; });
}

}  // namespace

MidiScore readMidiScore(const std::string& path) {
  const juce::MidiFile midi = openMidiFile(path);
  MidiScore score;
  for (int track = 0; track < midi.getNumTracks(); ++track) {
    for (const auto* holder : *midi.getTrack(track)) {
      addMessage(score, holder->message);
      score.lengthSeconds = std::max(score.lengthSeconds, holder->message.getTimeStamp());
    }
  }
  if (score.messages.empty()) {
    throw RenderError("the MIDI file '" + path + "' holds no notes");
  }
  sortByTime(score.messages);
  sortByTime(score.tempos);
  sortByTime(score.moves);
  return score;
}

}  // namespace sivray::render
