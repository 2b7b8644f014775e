// Which note of a drum kit, a keyboard or a MIDI file plays which pad, for what stands before the instrument.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace tesh::cofu::core {

inline constexpr std::size_t kMidiNotes = 128;
inline constexpr std::uint8_t kHatPedalController = 4;  ///< "Foot controller": 0 while the pedal is up, 127 while down.

/// For each note the one that is played in its place. Pads are notes 36 to 43: kick, stick, snare, clap, cymbal, tom,
/// closed hat, open hat.
struct NoteMap {
  std::array<std::uint8_t, kMidiNotes> notes{};
  /// Whether an open pedal turns closed hats into open ones.
  bool hasHatPedal = false;

  bool operator==(const NoteMap&) const = default;
};

struct NamedNoteMap {
  std::string_view name;
  NoteMap map;
};

/// Three maps. "Sivray": each note plays itself. "All drums": a drum without a pad plays a similar pad. "General MIDI":
/// the same, with notes 40, 41 and 43 as that standard's drums.
const std::array<NamedNoteMap, 3>& namedNoteMaps();

/// Applies a map to a stream of messages. Not thread-safe; allocates nothing.
class NoteTranslator {
 public:
  /// Starts with the first of the named maps.
  NoteTranslator();

  /// Notes that are held end where they began.
  void setMap(const NoteMap& newMap) { map = newMap; }

  /// Changes the note of a note-on or note-off, and learns where the pedal is; leaves other messages alone. False if
  /// the message is to be left out: the end of a note whose pad another note has struck since and still holds.
  bool translate(std::span<std::uint8_t> message);

 private:
  static constexpr std::uint8_t kNone = 0xFF;

  std::uint8_t targetOf(std::uint8_t note) const;
  bool isHeldByAnother(std::uint8_t target, std::uint8_t note) const;

  NoteMap map;
  bool isPedalOpen = false;
  std::array<std::uint8_t, kMidiNotes> playedAs{};  ///< By note: what it plays while it is held, else kNone.
  std::array<std::uint8_t, kMidiNotes> strikers{};  ///< By what is played: the note that struck it last, or kNone.
};

}  // namespace tesh::cofu::core
