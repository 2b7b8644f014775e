// MIDI's status bytes. Those of channel messages have a channel of 0.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::cofu::core {

inline constexpr std::uint8_t kMidiFirstStatus = 0x80;  ///< Bytes below it are data.
inline constexpr std::uint8_t kMidiKindBits =
    0xF0;  ///< Of a channel message's status. The low four bits are the channel.

inline constexpr std::uint8_t kMidiNoteOff = 0x80;
inline constexpr std::uint8_t kMidiNoteOn = 0x90;
inline constexpr std::uint8_t kMidiController = 0xB0;
inline constexpr std::uint8_t kMidiProgramChange = 0xC0;
inline constexpr std::uint8_t kMidiPitchBend = 0xE0;

/// True for the controllers that select a bank of programs: the high and the low half of its number.
constexpr bool isMidiBankSelect(std::uint8_t controller) { return controller == 0 || controller == 32; }

inline constexpr std::uint8_t kMidiFirstSystem = 0xF0;  ///< From here on a status has no channel.
inline constexpr std::uint8_t kMidiExclusive = 0xF0;
inline constexpr std::uint8_t kMidiEndOfExclusive = 0xF7;
inline constexpr std::uint8_t kMidiStart = 0xFA;
inline constexpr std::uint8_t kMidiStop = 0xFC;

}  // namespace tesh::cofu::core
