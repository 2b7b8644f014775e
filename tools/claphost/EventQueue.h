// The events of one block in memory that is reserved once, as a CLAP host lists them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

#include "host/clap/ClapRecords.h"

namespace sivray::claphost {

/// Events stay in the order in which they were added.
class EventQueue {
 public:
  static constexpr std::size_t kCapacity = 8192;

  EventQueue() { slots.reserve(kCapacity); }

  /// Adds an event of a known type; dropped if the queue is full.
  template <typename Event>
  void add(const Event& event) {
    static_assert(sizeof(Event) <= sizeof(Slot));
    if (slots.size() < kCapacity) {
      std::memcpy(slots.emplace_back().bytes, &event, sizeof(event));
    }
  }

  /// Adds a message, of which it takes three bytes.
  void addMidi(std::span<const std::uint8_t> bytes, int frame) {
    tesh::bramel::clap::MidiEvent event{};
    event.header = {sizeof(event), static_cast<std::uint32_t>(std::max(frame, 0)), tesh::bramel::clap::kCoreSpace,
                    tesh::bramel::clap::EventType::midi, 0};
    std::copy_n(bytes.begin(), std::min<std::size_t>(bytes.size(), 3), event.data);
    add(event);
  }

  void addValue(std::uint32_t id, void* cookie, double value, int frame,
                std::uint16_t type = tesh::bramel::clap::EventType::paramValue) {
    tesh::bramel::clap::ParamEvent event{};
    event.header = {sizeof(event), static_cast<std::uint32_t>(frame), tesh::bramel::clap::kCoreSpace, type, 0};
    event.paramId = id;
    event.cookie = cookie;
    event.noteId = event.port = event.channel = event.key = -1;
    event.value = value;
    add(event);
  }

  void addAll(const EventQueue& other) {
    const auto room = static_cast<std::ptrdiff_t>(std::min(kCapacity - slots.size(), other.slots.size()));
    slots.insert(slots.end(), other.slots.begin(), other.slots.begin() + room);
  }

  void clear() { slots.clear(); }

  /// For the plug-in, valid until the next change.
  const tesh::bramel::clap::InputEvents* list() {
    lister.context = this;
    return &lister;
  }

 private:
  struct alignas(8) Slot {
    std::byte bytes[sizeof(tesh::bramel::clap::TransportEvent)];
  };

  static EventQueue& of(const tesh::bramel::clap::InputEvents* list) {
    return *static_cast<EventQueue*>(list->context);
  }
  static std::uint32_t size(const tesh::bramel::clap::InputEvents* list) {
    return static_cast<std::uint32_t>(of(list).slots.size());
  }
  static const tesh::bramel::clap::EventHeader* get(const tesh::bramel::clap::InputEvents* list, std::uint32_t index) {
    return reinterpret_cast<const tesh::bramel::clap::EventHeader*>(of(list).slots[index].bytes);
  }

  std::vector<Slot> slots;
  tesh::bramel::clap::InputEvents lister{nullptr, &size, &get};
};

}  // namespace sivray::claphost
