// The queue that holds MIDI messages from the host's event call until the block that they belong to.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "core/RealTime.h"
#include "host/resample/CFsConvListener.h"

namespace tesh::bramel::vst {

/// Holds up to 1024 messages in order of arrival, which should also be the order of their frames: a message waits for
/// those that arrived before it, even if their frames are later. Never allocates. Audio thread.
class HostEventRing {
 public:
  static constexpr std::size_t kCapacity = 1024;

  /// Appends a message for `frame`, in engine frames from the next block's start. A full ring first delivers its older
  /// half to `listener` at once, with their frames unchanged.
  void enter(std::uint32_t packed, std::int32_t frame, CFsConvListener& listener) SIVRAY_NONBLOCKING;

  /// Delivers messages, oldest first, until one lies at or past `frames`; a negative frame counts as 0. Subtracts
  /// `frames` from the frames of the messages that stay.
  void dispatch(std::int32_t frames, CFsConvListener& listener) SIVRAY_NONBLOCKING;

  /// Forgets all messages.
  void clear() { eventRead = eventWrite = eventCount = 0; }

  std::size_t size() const { return eventCount; }

 private:
  struct Entry {
    std::int32_t frame = 0;
    std::uint32_t packed = 0;
  };

  Entry takeOldest();

  std::array<Entry, kCapacity> entries{};
  std::size_t eventRead = 0;
  std::size_t eventWrite = 0;
  std::size_t eventCount = 0;
};

}  // namespace tesh::bramel::vst
