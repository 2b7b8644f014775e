// Entry and delivery of messages.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/resample/HostEventRing.h"

#include <algorithm>
#include <limits>

namespace tesh::bramel::vst {

namespace {

constexpr std::size_t following(std::size_t index) { return (index + 1) % HostEventRing::kCapacity; }

/// `frame` - `frames`, limited to 32 bits.
constexpr std::int32_t earlier(std::int32_t frame, std::int32_t frames) {
  const std::int64_t moved = std::int64_t{frame} - frames;
  return static_cast<std::int32_t>(std::max<std::int64_t>(moved, std::numeric_limits<std::int32_t>::min()));
}

}  // namespace

void HostEventRing::enter(std::uint32_t packed, std::int32_t frame, CFsConvListener& listener) {
  if (eventCount == kCapacity) {
    for (std::size_t delivered = 0; delivered < eventCount; ++delivered) {
      const Entry oldest = takeOldest();
      listener.onMidi(oldest.packed, oldest.frame);
    }
  }
  entries[eventWrite] = {frame, packed};
  eventWrite = following(eventWrite);
  ++eventCount;
}

void HostEventRing::dispatch(std::int32_t frames, CFsConvListener& listener) {
  while (eventCount > 0) {
    const std::int32_t frame = std::max(entries[eventRead].frame, 0);
    if (frame >= frames) {
      break;
    }
    listener.onMidi(takeOldest().packed, frame);
  }
  for (std::size_t i = 0, index = eventRead; i < eventCount; ++i, index = following(index)) {
    entries[index].frame = earlier(entries[index].frame, frames);
  }
}

HostEventRing::Entry HostEventRing::takeOldest() {
  const Entry oldest = entries[eventRead];
  eventRead = following(eventRead);
  --eventCount;
  return oldest;
}

}  // namespace tesh::bramel::vst
