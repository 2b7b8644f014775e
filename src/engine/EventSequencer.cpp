// The list of waiting records, its limit, and the order of its records.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/EventSequencer.h"

#include <algorithm>
#include <tuple>

namespace tesh::bramel::plugin::sivray {
namespace {

/// Order: frame, kind, arrival. No two records compare equal, so an unstable sort, which needs no buffer, is enough.
constexpr auto firesBefore = [](const SequencerEvent& a, const SequencerEvent& b) {
  return std::tie(a.frame, a.kind, a.sequence) < std::tie(b.frame, b.kind, b.sequence);
};

/// Orders by parameter and frame, the newest first.
constexpr auto isNewerOfSame = [](const SequencerEvent& a, const SequencerEvent& b) {
  return std::tie(a.frame, a.kind, a.id, b.sequence) < std::tie(b.frame, b.kind, b.id, a.sequence);
};

/// Whether two records set the same parameter at the same frame.
bool setsTheSame(const SequencerEvent& a, const SequencerEvent& b) {
  return a.kind != SequencerKind::midi && a.kind == b.kind && a.frame == b.frame && a.id == b.id;
}

}  // namespace

/// Drops all but the newest value of each parameter at each frame. Returns whether the list has room again.
bool WaitingRecords::makeRoom() {
  if (isCrowded) {
    return false;
  }
  std::sort(records.begin(), records.end(), isNewerOfSame);
  // Moving and destroying plain records allocates nothing.
  cofu::core::vouchFor(
      [this] { records.erase(std::unique(records.begin(), records.end(), setsTheSame), records.end()); });
  // If little was freed, the next few records would make it sort again.
  isCrowded = records.size() > kCapacity / 2;
  return records.size() < kCapacity;
}

void WaitingRecords::moveTo(RecordList& list) {
  // Plain records, and the list has room for them.
  cofu::core::vouchFor([&] { list.insert(list.end(), records.begin(), records.end()); });
  records.clear();
  isCrowded = false;
}

EventSequencer::EventSequencer(IEventResponder& eventResponder) : responder(eventResponder) {
  active.reserve(2 * kCapacity);
}

void EventSequencer::append(const SequencerEvent& record) {
  const cofu::core::RealTimeLock lock(mutex);
  pending.add() = record;
  hasPending.store(true, std::memory_order_release);
}

void EventSequencer::merge() {
  active.clear();
  if (!ofBlock.isEmpty()) {
    ofBlock.moveTo(active);
  }
  if (hasPending.load(std::memory_order_acquire)) {
    const cofu::core::RealTimeLock lock(mutex);
    pending.moveTo(active);
    hasPending.store(false, std::memory_order_relaxed);
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
