// The events of one block as the plug-in interface lays them out, in memory reserved once.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "host/vst/VstRecords.h"

namespace sivray::vsthost {

class EventList {
 public:
  static constexpr std::size_t kCapacity = 8192;

  EventList() : records(kCapacity), list(kHeadWords + kCapacity) {}

  /// Adds a message of at most three bytes; dropped if the list is full.
  void add(std::span<const std::uint8_t> bytes, std::int32_t frame) {
    if (count == kCapacity) {
      return;
    }
    tesh::bramel::vst::VstMidiEvent& event = records[count];
    event = {};
    event.type = tesh::bramel::vst::kVstMidiType;
    event.byteSize = sizeof event;
    event.deltaFrames = frame;
    std::copy_n(bytes.begin(), std::min<std::size_t>(bytes.size(), 3), event.midiData);
    pointers()[count++] = reinterpret_cast<tesh::bramel::vst::VstEvent*>(&event);
  }

  /// Adds an event of any kind, which must stay valid until the block has been rendered.
  void addForeign(void* event) {
    if (count < kCapacity) {
      pointers()[count++] = static_cast<tesh::bramel::vst::VstEvent*>(event);
    }
  }

  bool isEmpty() const { return count == 0; }
  void clear() { count = 0; }

  /// Returns the list for the plug-in, valid until the next `add`.
  tesh::bramel::vst::VstEvents* head() {
    auto* events = reinterpret_cast<tesh::bramel::vst::VstEvents*>(list.data());
    events->numEvents = static_cast<std::int32_t>(count);
    events->reserved = 0;
    return events;
  }

 private:
  /// Size, in words, of the fields before the first event pointer.
  static constexpr std::size_t kHeadWords = offsetof(tesh::bramel::vst::VstEvents, events) / sizeof(void*);

  tesh::bramel::vst::VstEvent** pointers() {
    return reinterpret_cast<tesh::bramel::vst::VstEvent**>(list.data() + kHeadWords);
  }

  std::vector<tesh::bramel::vst::VstMidiEvent> records;
  std::vector<void*> list;
  std::size_t count = 0;
};

}  // namespace sivray::vsthost
