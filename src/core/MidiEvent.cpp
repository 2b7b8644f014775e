// Constructors of messages, and the status byte.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/MidiEvent.h"

#include <algorithm>

namespace tesh::vimo {

MidiEvent::MidiEvent() {
  inlineData[0] = 0xF0;
  inlineData[1] = 0xF7;
  byteCount = 2;
}

MidiEvent::MidiEvent(std::span<const std::uint8_t> bytes, std::uint32_t atFrame)
    : frame(atFrame), byteCount(static_cast<std::uint32_t>(bytes.size())) {
  if (bytes.size() > inlineData.size()) {
    longData.assign(bytes.begin(), bytes.end());
  } else {
    std::copy(bytes.begin(), bytes.end(), inlineData.begin());
  }
}

MidiEvent MidiEvent::programChange(int channel, std::uint8_t bank, std::uint32_t program) {
  const int index = std::clamp(channel - 1, 0, 15);
  const std::array<std::uint8_t, 2> bytes{static_cast<std::uint8_t>(0xC0 | index),
                                          static_cast<std::uint8_t>(bank & 127)};
  MidiEvent event(bytes, 0);
  event.program = program;
  return event;
}

std::uint8_t MidiEvent::status() const {
  const std::uint8_t first = byteAt(0);
  return first >= 0xF0 ? first : static_cast<std::uint8_t>(first & 0xF0);
}

}  // namespace tesh::vimo
