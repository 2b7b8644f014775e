// Maps notes of a drum kit, a keyboard or a MIDI file to pads, before they reach the instrument.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace tesh::cofu::core {

inline constexpr std::size_t kMidiNotes = 128;
inline constexpr std::uint8_t kHatPedalController = 4;  ///< "Foot controller": 0 while the pedal is up, 127 while down.

/// The note to play for each note. Pads are notes 36 to 43: kick, stick, snare, clap, cymbal, tom, closed hat, open
/// hat.
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

  /// Notes that are held keep the mapping with which they began, so that their note-offs match.
  void setMap(const NoteMap& newMap) { map = newMap; }

  struct Verdict {
    /// False for the note-off of a note whose pad was struck by another note since, which still holds it.
    bool isPlayed = true;
    /// A pad that needs a note-off before the message is played: its note was struck without one and now plays another
    /// pad.
    std::optional<std::uint8_t> padToEnd;
  };
  /// Changes the note of a note-on or note-off, and follows the pedal's position; leaves other messages alone.
  Verdict translate(std::span<std::uint8_t> message);

 private:
  static constexpr std::uint8_t kNone = 0xFF;

  std::uint8_t targetOf(std::uint8_t note) const;
  bool isHeldByAnother(std::uint8_t target, std::uint8_t note) const;

  NoteMap map;
  bool isPedalOpen = false;
  std::array<std::uint8_t, kMidiNotes> playedAs{};  ///< By note: the note that it plays while it is held, else kNone.
  std::array<std::uint8_t, kMidiNotes> strikers{};  ///< By played note: the note that struck it last, or kNone.
};

}  // namespace tesh::cofu::core
