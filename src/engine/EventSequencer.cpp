// Merging, asking and firing of the timed records.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/EventSequencer.h"

#include <algorithm>
#include <tuple>

namespace tesh::bramel::plugin::sivray {
namespace {

/// Frame, then kind, then arrival: a total order, so that no stable sort with its buffer is needed.
constexpr auto firesBefore = [](const SequencerEvent& a, const SequencerEvent& b) {
  return std::tie(a.frame, a.kind, a.sequence) < std::tie(b.frame, b.kind, b.sequence);
};

}  // namespace

EventSequencer::EventSequencer(IEventResponder& eventResponder) : responder(eventResponder) {
  pending.reserve(kReservedRecords);
  active.reserve(kReservedRecords);
}

void EventSequencer::merge() {
  active.clear();
  {
    const cofu::core::RealTimeLock lock(mutex);
    pending.swap(active);
  }
  std::sort(active.begin(), active.end(), firesBefore);
  position = 0;
  cursor = 0;
  merged = true;
}

std::int64_t EventSequencer::nextEventFrame() {
  if (!merged) {
    merge();
  }
  return cursor == active.size() ? -1 : active[cursor].frame - position;
}

void EventSequencer::advance(std::int64_t frames) {
  position += frames;
  while (cursor < active.size() && active[cursor].frame <= position) {
    fire(active[cursor]);
    ++cursor;
  }
  if (cursor == active.size()) {
    merged = false;
  }
}

void EventSequencer::fire(const SequencerEvent& record) {
  switch (record.kind) {
    case SequencerKind::parameter:
      responder.onParameter(record);
      break;
    case SequencerKind::midi:
      responder.onMidi(record.message);
      break;
    case SequencerKind::globalParameter:
      responder.onGlobalParameter(record);
      break;
  }
}

}  // namespace tesh::bramel::plugin::sivray
