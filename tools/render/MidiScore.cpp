// Reads a MIDI file through JUCE and sorts its events into the score's lists.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "MidiScore.h"

#include <juce_audio_basics/juce_audio_basics.h>

#include <algorithm>

#include "RenderError.h"

namespace sivray::render {
namespace {

juce::MidiFile openMidiFile(const std::string& path) {
  const juce::File file = juce::File::getCurrentWorkingDirectory().getChildFile(juce::String::fromUTF8(path.c_str()));
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
  if (!midi.readFrom(stream) || midi.getNumTracks() == 0) {
    throw RenderError("'" + path + "' is not a standard MIDI file, or it is broken");
  }
  midi.convertTimestampTicksToSeconds();
  return midi;
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
