// The events of one block in the plug-in interface's layout. Memory is reserved once; pages are used only up to the
// greatest number of events so far.
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

  EventList() {
    records.reserve(kCapacity);
    list.reserve(kHeadWords + kCapacity);
    clear();
  }

  /// Adds a message of at most three bytes, or drops it if the list is full.
  void add(std::span<const std::uint8_t> bytes, std::int32_t frame) {
    if (count() == kCapacity) {
      return;
    }
    tesh::bramel::vst::VstMidiEvent& event = records.emplace_back();
    event.type = tesh::bramel::vst::kVstMidiType;
    event.byteSize = sizeof event;
    event.deltaFrames = frame;
    std::copy_n(bytes.begin(), std::min<std::size_t>(bytes.size(), 3), event.midiData);
    list.push_back(&event);
  }

  /// Adds an event of any type, which must stay valid until the block has been rendered.
  void addForeign(void* event) {
    if (count() < kCapacity) {
      list.push_back(event);
    }
  }

  bool isEmpty() const { return count() == 0; }
  void clear() {
    records.clear();
    list.assign(kHeadWords, nullptr);
  }

  /// Returns the list for the plug-in, valid until the next `add`.
  tesh::bramel::vst::VstEvents* head() {
    auto* events = reinterpret_cast<tesh::bramel::vst::VstEvents*>(list.data());
    events->numEvents = static_cast<std::int32_t>(count());
    events->reserved = 0;
    return events;
  }

 private:
  /// Size, in pointers, of the fields before the first event pointer.
  static constexpr std::size_t kHeadWords = offsetof(tesh::bramel::vst::VstEvents, events) / sizeof(void*);

  std::size_t count() const { return list.size() - kHeadWords; }

  std::vector<tesh::bramel::vst::VstMidiEvent> records;
  std::vector<void*> list;  ///< The head, then a pointer to each event.
};

}  // namespace sivray::vsthost
