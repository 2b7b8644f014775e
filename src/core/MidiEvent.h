// A message in a block of audio, in one format for both kinds: a MIDI message with its frame, or a program change with
// a bank and a program.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "core/RealTime.h"

namespace tesh::vimo {

/// One message. Copying a message of at most eight bytes without text allocates nothing.
class MidiEvent {
 public:
  /// The two bytes 0xF0 0xF7.
  MidiEvent();

  /// A message of `bytes` at `frame` of the block. Up to eight bytes are kept inline.
  MidiEvent(std::span<const std::uint8_t> bytes, std::uint32_t frame);

  /// A program change: `channel` from 1 (clamped to 1 .. 16), `bank` in the low seven bits of the data byte.
  static MidiEvent programChange(int channel, std::uint8_t bank, std::uint32_t program);

  /// The message's bytes; never null, but may be empty.
  const std::uint8_t* data() const { return longData.empty() ? inlineData.data() : longData.data(); }

  /// The number of bytes: 3 for channel messages.
  std::uint32_t size() const { return byteCount; }

  /// The first byte with the channel masked off, or 0 for an empty message.
  std::uint8_t status() const SIVRAY_NONBLOCKING;

  /// The byte at `index`, or 0 past the end.
  std::uint8_t byteAt(std::uint32_t index) const SIVRAY_NONBLOCKING {
    return index < byteCount ? data()[index] : std::uint8_t{0};
  }

  std::uint32_t frame = 0;      ///< Offset in the block, in frames.
  std::uint64_t timestamp = 0;  ///< Nanoseconds of the host's clock; 0 if `frame` gives the time.
  std::uint32_t program = 0;    ///< Program index of a program change.
  std::string text;             ///< Text of the messages that carry some.

 private:
  std::array<std::uint8_t, 8> inlineData{};
  std::vector<std::uint8_t> longData;
  std::uint32_t byteCount = 0;
};

}  // namespace tesh::vimo
