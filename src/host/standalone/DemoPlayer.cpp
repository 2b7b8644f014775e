// Finds the events of each block.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/standalone/DemoPlayer.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/MidiStatus.h"

namespace tesh::bramel::standalone {
namespace {

using cofu::core::kMidiKindBits;
using cofu::core::kMidiNoteOff;
using cofu::core::kMidiNoteOn;

}  // namespace

DemoPlayer::DemoPlayer(DemoScore newScore) : score(std::move(newScore)) {}

void DemoPlayer::setSampleRate(double newRate) {
  position = std::llround(static_cast<double>(position) * newRate / rate);
  rate = newRate;
  next = 0;
  while (next < score.events.size() && frameOf(score.events[next].seconds) < position) {
    ++next;
  }
}

int DemoPlayer::beginBlock(int frames) {
  if (isWanted && !moving) {
    moving = true;
    position = 0;
    next = 0;
  } else if (!isWanted) {
    moving = false;
  }
  if (!moving) {
    return frames;
  }
  const std::int64_t length = std::max<std::int64_t>(std::llround(score.seconds * rate), 1);
  if (position >= length) {
    position = 0;
    next = 0;
  }
  chooseKit(length);
  if (isWaiting) {
    return frames;
  }
  return static_cast<int>(endOfBlock(std::min(position + frames, length)) - position);
}

std::int64_t DemoPlayer::endOfBlock(std::int64_t latest) const {
  std::int64_t end = latest;
  const auto stopAt = [&](double time) {
    if (const std::int64_t frame = frameOf(time); frame > position) {
      end = std::min(end, frame);
    }
  };
  for (std::size_t i = next; i < score.events.size() && frameOf(score.events[i].seconds) < end; ++i) {
    if (score.events[i].needsBlockStart()) {
      stopAt(score.events[i].seconds);
    }
  }
  for (const DemoScore::Tempo& tempo : score.tempos) {
    stopAt(tempo.seconds);
  }
  for (const DemoScore::Kit& kit : score.kits) {
    stopAt(kit.seconds);
  }
  return end;
}

void DemoPlayer::chooseKit(std::int64_t length) {
  constexpr double kAhead = 0.1;  ///< Seconds that the message thread has for selecting the kit.
  const std::int64_t place = position + frameOf(kAhead);
  const std::size_t coming = kitAt(place < length ? place : 0);
  kitIndex = coming;
  const std::size_t selected = selectedKit;
  isWaiting = !score.kits.empty() && selected != coming && selected != kitAt(position);
}

std::size_t DemoPlayer::kitAt(std::int64_t place) const {
  std::size_t index = 0;
  while (index + 1 < score.kits.size() && frameOf(score.kits[index + 1].seconds) <= place) {
    ++index;
  }
  return index;
}

const std::string& DemoPlayer::kitName(std::size_t kit) const {
  static const std::string kNone;
  return kit < score.kits.size() ? score.kits[kit].name : kNone;
}

double DemoPlayer::beat() const {
  const DemoScore::Tempo& tempo = score.tempoAt(seconds());
  return tempo.beat + (seconds() - tempo.seconds) * tempo.beatsPerMinute / kSecondsPerMinute;
}

void DemoPlayer::addEvents(juce::MidiBuffer& midi, int frames) {
  if (!moving) {
    endNotes(midi);
    return;
  }
  if (isWaiting) {
    return;
  }
  const std::int64_t end = position + frames;
  for (; next < score.events.size() && frameOf(score.events[next].seconds) < end; ++next) {
    add(midi, score.events[next], static_cast<int>(frameOf(score.events[next].seconds) - position));
  }
}

std::int64_t DemoPlayer::frameOf(double time) const { return std::llround(time * rate); }

void DemoPlayer::add(juce::MidiBuffer& midi, const DemoScore::Event& event, int offset) {
  const int status = event.bytes[0] & kMidiKindBits;
  if (status == kMidiNoteOn || status == kMidiNoteOff) {
    isSounding[event.bytes[1] % kNotes] = status == kMidiNoteOn && event.bytes[2] != 0;
  }
  midi.addEvent(event.bytes.data(), event.size, offset);
}

void DemoPlayer::endNotes(juce::MidiBuffer& midi) {
  for (std::size_t note = 0; note < kNotes; ++note) {
    if (std::exchange(isSounding[note], false)) {
      const std::array<std::uint8_t, 3> off{kMidiNoteOff, static_cast<std::uint8_t>(note), 0};
      midi.addEvent(off.data(), static_cast<int>(off.size()), 0);
    }
  }
}

}  // namespace tesh::bramel::standalone
