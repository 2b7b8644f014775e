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

constexpr double kSecondsPerMinute = 60.0;

}  // namespace

DemoPlayer::DemoPlayer(DemoScore newScore) : score(std::move(newScore)) {}

void DemoPlayer::setSampleRate(double newRate) {
  position = std::llround(static_cast<double>(position) * newRate / rate);
  rate = newRate;
  next = 0;
  while (next < score.events.size() && frameOf(score.events[next]) < position) {
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
  std::int64_t end = std::min(position + frames, length);
  for (std::size_t i = next; i < score.events.size() && frameOf(score.events[i]) < end; ++i) {
    if (score.events[i].needsBlockStart() && frameOf(score.events[i]) > position) {
      end = frameOf(score.events[i]);
    }
  }
  return static_cast<int>(end - position);
}

double DemoPlayer::beat() const {
  return static_cast<double>(position) / rate * score.beatsPerMinute / kSecondsPerMinute;
}

void DemoPlayer::addEvents(juce::MidiBuffer& midi, int frames) {
  if (!moving) {
    endNotes(midi);
    return;
  }
  const std::int64_t end = position + frames;
  for (; next < score.events.size() && frameOf(score.events[next]) < end; ++next) {
    add(midi, score.events[next], static_cast<int>(frameOf(score.events[next]) - position));
  }
}

std::int64_t DemoPlayer::frameOf(const DemoScore::Event& event) const { return std::llround(event.seconds * rate); }

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
