// The named maps, and the notes that are held.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/NoteMap.h"

#include <initializer_list>
#include <utility>

#include "core/MidiStatus.h"

namespace tesh::cofu::core {
namespace {

// Notes of the pads.
constexpr std::uint8_t kKick = 36;
constexpr std::uint8_t kSnare = 38;
constexpr std::uint8_t kCymbal = 40;
constexpr std::uint8_t kTom = 41;
constexpr std::uint8_t kClosedHat = 42;
constexpr std::uint8_t kOpenHat = 43;

/// A foot that closes the hat always plays the closed sound, independent of the pedal's position before.
constexpr std::uint8_t kPedalHat = 44;
/// Below this value of the controller the pedal counts as open.
constexpr std::uint8_t kPedalMiddle = 64;

NoteMap plainMap() {
  NoteMap map;
  for (std::size_t note = 0; note < kMidiNotes; ++note) {
    map.notes[note] = static_cast<std::uint8_t>(note);
  }
  return map;
}

void lead(NoteMap& map, std::initializer_list<std::uint8_t> notes, std::uint8_t pad) {
  for (const std::uint8_t note : notes) {
    map.notes[note] = pad;
  }
}

// Note numbers of General MIDI's percussion.

NoteMap allDrumsMap() {
  NoteMap map = plainMap();
  lead(map, {35}, kKick);
  lead(map, {kPedalHat}, kClosedHat);
  lead(map, {46}, kOpenHat);
  lead(map, {45, 47, 48, 50}, kTom);
  lead(map, {49, 51, 52, 53, 55, 57, 59}, kCymbal);
  map.hasHatPedal = true;
  return map;
}

NoteMap generalMidiMap() {
  NoteMap map = allDrumsMap();
  lead(map, {40}, kSnare);
  lead(map, {41, 43}, kTom);
  return map;
}

}  // namespace

const std::array<NamedNoteMap, 3>& namedNoteMaps() {
  static const std::array<NamedNoteMap, 3> kMaps{
      {{"Sivray", plainMap()}, {"All drums", allDrumsMap()}, {"General MIDI", generalMidiMap()}}};
  return kMaps;
}

NoteTranslator::NoteTranslator() : map(namedNoteMaps().front().map) {
  playedAs.fill(kNone);
  strikers.fill(kNone);
}

NoteTranslator::Verdict NoteTranslator::translate(std::span<std::uint8_t> message) {
  Verdict verdict;
  if (message.size() < 3) {
    return verdict;
  }
  const auto kind = static_cast<std::uint8_t>(message[0] & kMidiKindBits);
  const auto data = static_cast<std::uint8_t>(message[1] % kMidiNotes);
  if (kind == kMidiController && data == kHatPedalController) {
    isPedalOpen = message[2] < kPedalMiddle;
  }
  if (kind == kMidiNoteOn && message[2] > 0) {
    message[1] = targetOf(data);
    const std::uint8_t held = std::exchange(playedAs[data], message[1]);
    if (held != kNone && held != message[1] && !isHeldByAnother(held, data)) {
      verdict.padToEnd = held;
    }
    strikers[message[1]] = data;
  } else if (kind == kMidiNoteOn || kind == kMidiNoteOff) {
    const std::uint8_t held = std::exchange(playedAs[data], kNone);
    message[1] = held != kNone ? held : targetOf(data);
    verdict.isPlayed = !isHeldByAnother(message[1], data);
  }
  return verdict;
}

std::uint8_t NoteTranslator::targetOf(std::uint8_t note) const {
  const std::uint8_t target = map.notes[note];
  const bool opens = map.hasHatPedal && isPedalOpen && target == kClosedHat && note != kPedalHat;
  return opens ? kOpenHat : target;
}

bool NoteTranslator::isHeldByAnother(std::uint8_t target, std::uint8_t note) const {
  const std::uint8_t striker = strikers[target];
  return striker != kNone && striker != note && playedAs[striker] == target;
}

}  // namespace tesh::cofu::core
