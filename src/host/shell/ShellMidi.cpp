// Decides which messages wait without a lock, and where each one goes.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/shell/ShellMidi.h"

#include "host/vst/VstRecords.h"

namespace tesh::bramel::vst {
namespace {

/// MIDI bytes of one of the host's events.
constexpr std::size_t kEventBytes = 3;

/// Returns `take(bytes, deltaFrames)` if the event holds a MIDI message within kFarthestFrames; otherwise true.
template <typename Take>
bool forMidi(const VstEvent* event, Take take) {
  if (event == nullptr || event->type != kVstMidiType || event->deltaFrames > BramelInstrument::kFarthestFrames) {
    return true;
  }
  const auto* const midi = reinterpret_cast<const VstMidiEvent*>(event);
  return take(std::span(reinterpret_cast<const std::uint8_t*>(midi->midiData), kEventBytes), midi->deltaFrames);
}

}  // namespace

void ShellMidi::send(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) {
  if (data == nullptr || size == 0 || inbox.put({data, size}, deltaFrames)) {
    return;
  }
  const MainLock lock(core.mainMutex);
  emptyInbox(lock);
  takeWhole({data, size}, deltaFrames, lock);
}

void ShellMidi::sendEvents(const VstEvents& vstEvents) {
  VstEvent* const* const events = vstEvents.events;  // As long as `numEvents` says, although the record declares two.
  std::int32_t next = 0;
  while (next < vstEvents.numEvents &&
         forMidi(events[next],
                 [this](std::span<const std::uint8_t> bytes, std::int32_t delta) { return inbox.put(bytes, delta); })) {
    ++next;
  }
  if (next >= vstEvents.numEvents) {
    return;
  }
  const MainLock lock(core.mainMutex);
  emptyInbox(lock);
  for (; next < vstEvents.numEvents; ++next) {
    forMidi(events[next], [&](std::span<const std::uint8_t> bytes, std::int32_t delta) {
      takeWhole(bytes, delta, lock);
      return true;
    });
  }
}

void ShellMidi::emptyInbox(const MainLock& lock) {
  inbox.takeAll([&](const ShortMessage& message, std::int32_t deltaFrames) { takeShort(message, deltaFrames, lock); });
}

MidiVerdict ShellMidi::judge(const ShortMessage& message) const {
  return judgeMidi(message, [this](std::uint8_t number) -> std::optional<std::uint64_t> {
    const std::int64_t macro = core.processor ? core.processor->controller().macroForController(number) : -1;
    return macro < 0 ? std::nullopt : std::optional(static_cast<std::uint64_t>(macro));
  });
}

/// Takes a message, and returns it in the form that the engine gets.
ShortMessage ShellMidi::take(const ShortMessage& message, std::int32_t deltaFrames, const MainLock& lock) {
  const MidiVerdict verdict = judge(message);
  if (verdict.parameterId) {
    parameters.set(*verdict.parameterId, verdict.value, lock);
  } else if (verdict.toEngine) {
    converter.enter(verdict.message.packed, deltaFrames);
  }
  return verdict.message;
}

void ShellMidi::takeShort(const ShortMessage& message, std::int32_t deltaFrames, const MainLock& lock) {
  const ShortMessage taken = take(message, deltaFrames, lock);
  const auto bytes = taken.bytes();
  core.tellEditor(lock, [&](BramelInstrumentUICallback& editor) { editor.midiReceived(bytes.data(), taken.size); });
}

void ShellMidi::takeWhole(std::span<const std::uint8_t> message, std::int32_t deltaFrames, const MainLock& lock) {
  const ShortMessage beginning(message);
  if (beginning.size == message.size()) {
    takeShort(beginning, deltaFrames, lock);
    return;
  }
  take(beginning, deltaFrames, lock);
  core.tellEditor(lock,
                  [&](BramelInstrumentUICallback& editor) { editor.midiReceived(message.data(), message.size()); });
}

void ShellMidi::sendFromKeyboard(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) {
  MidiVerdict verdict;
  {
    const MainLock lock(core.mainMutex);
    emptyInbox(lock);
    verdict = judge(ShortMessage({data, size}));
    if (verdict.toEngine) {
      converter.enter(verdict.message.packed, deltaFrames);
    }
  }
  // The host is called without our lock, because it may wait for a block.
  if (verdict.parameterId) {
    parameters.setFromEditor(*verdict.parameterId, verdict.value);
  }
  if (size <= kLongestMidiOut) {
    core.tellHost([&](BramelInstrumentHostCallback& host) { host.sendMidi(data, size, deltaFrames); });
  }
}

}  // namespace tesh::bramel::vst
