// The queue of MIDI messages between a host's event call and the block that they fall into.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "core/RealTime.h"
#include "host/resample/CFsConvListener.h"

namespace tesh::bramel::vst {

/// Holds up to 1024 messages in order of arrival. Nothing is allocated. Audio thread.
class HostEventRing {
 public:
  static constexpr std::size_t kCapacity = 1024;

  /// Appends a message for `frame`. A full ring first delivers its older half at once, with frames unchanged.
  void enter(std::uint32_t packed, std::int32_t frame, CFsConvListener& listener) SIVRAY_NONBLOCKING;

  /// Delivers the messages of the next `frames` frames up to the first that lies past them, frames below 0 as 0, and
  /// moves those that stay that much nearer.
  void dispatch(std::int32_t frames, CFsConvListener& listener) SIVRAY_NONBLOCKING;

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
