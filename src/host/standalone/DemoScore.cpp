// Reads the demo through JUCE.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/standalone/DemoScore.h"

#include <juce_audio_basics/juce_audio_basics.h>

#include <algorithm>
#include <cmath>

#include "core/MidiStatus.h"

namespace tesh::bramel::standalone {
namespace {

constexpr const char* kKitMark = "program=";
constexpr double kBeatsPerBar = 4.0;
constexpr double kLongestSeconds = 3600.0;

void addTempo(DemoScore& score, const juce::MidiMessage& message) {
  const DemoScore::Tempo& last = score.tempos.back();
  const double seconds = message.getTimeStamp();
  const double beat = last.beat + (seconds - last.seconds) * last.beatsPerMinute / kSecondsPerMinute;
  if (seconds <= last.seconds) {
    score.tempos.pop_back();
  }
  score.tempos.push_back({seconds, kSecondsPerMinute / message.getTempoSecondsPerQuarterNote(), beat});
}

void addText(DemoScore& score, const juce::MidiMessage& message) {
  const juce::String text = message.getTextFromTextMetaEvent();
  if (text.startsWith(kKitMark)) {
    score.kits.push_back({message.getTimeStamp(), text.fromFirstOccurrenceOf(kKitMark, false, false).toStdString()});
  }
}

void addMessage(DemoScore& score, const juce::MidiMessage& message) {
  if (message.isTempoMetaEvent() && message.getTempoSecondsPerQuarterNote() > 0.0) {
    addTempo(score, message);
  } else if (message.isTextMetaEvent()) {
    addText(score, message);
  }
  const int size = message.getRawDataSize();
  DemoScore::Event event{.seconds = message.getTimeStamp(), .size = size};
  if (message.isMetaEvent() || message.isSysEx() || size < 1 || size > static_cast<int>(event.bytes.size())) {
    return;
  }
  std::copy_n(message.getRawData(), size, event.bytes.begin());
  score.events.push_back(event);
}

}  // namespace

bool DemoScore::Event::needsBlockStart() const {
  const int status = bytes[0] & cofu::core::kMidiKindBits;
  return status == cofu::core::kMidiController || status == cofu::core::kMidiPitchBend;
}

const DemoScore::Tempo& DemoScore::tempoAt(double time) const {
  const auto next = std::upper_bound(tempos.begin() + 1, tempos.end(), time,
                                     [](double wanted, const Tempo& tempo) { return wanted < tempo.seconds; });
  return *(next - 1);
}

DemoScore readDemoScore(std::span<const std::uint8_t> file) {
  juce::MemoryInputStream stream(file.data(), file.size(), false);
  juce::MidiFile midi;
  if (file.empty() || !midi.readFrom(stream)) {
    return {};
  }
  midi.convertTimestampTicksToSeconds();
  DemoScore score;
  for (int track = 0; track < midi.getNumTracks(); ++track) {
    for (const auto* const holder : *midi.getTrack(track)) {
      addMessage(score, holder->message);
    }
  }
  std::stable_sort(score.events.begin(), score.events.end(),
                   [](const auto& a, const auto& b) { return a.seconds < b.seconds; });
  const double end = midi.getLastTimestamp();
  if (score.isEmpty() || !(end > 0.0 && end < kLongestSeconds)) {
    return {};
  }
  // Rounded tick positions must not add an empty bar after a full one.
  constexpr double kRounding = 1e-3;
  const DemoScore::Tempo& tempo = score.tempos.back();
  const double bar = kBeatsPerBar * kSecondsPerMinute / tempo.beatsPerMinute;
  score.seconds = tempo.seconds + std::max(1.0, std::ceil((end - tempo.seconds) / bar - kRounding)) * bar;
  return score;
}

}  // namespace tesh::bramel::standalone
