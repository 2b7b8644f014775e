// Constructors of messages, and the status byte.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/MidiEvent.h"

#include <algorithm>

#include "core/MidiStatus.h"

namespace tesh::vimo {

MidiEvent::MidiEvent() {
  inlineData[0] = cofu::core::kMidiExclusive;
  inlineData[1] = cofu::core::kMidiEndOfExclusive;
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
  const std::array<std::uint8_t, 2> bytes{static_cast<std::uint8_t>(cofu::core::kMidiProgramChange | index),
                                          static_cast<std::uint8_t>(bank & 127)};
  MidiEvent event(bytes, 0);
  event.program = program;
  return event;
}

std::uint8_t MidiEvent::status() const {
  const std::uint8_t first = byteAt(0);
  return first >= cofu::core::kMidiFirstSystem ? first : static_cast<std::uint8_t>(first & cofu::core::kMidiKindBits);
}

}  // namespace tesh::vimo
