// The thread that sends key states, and the codes of the vendor calls.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/adapter/KeyLights.h"

#include "core/MidiStatus.h"

namespace tesh::bramel::vst {
namespace {

constexpr const char* kAbility = "NIMKPIVendorSpecificCallbacks";

/// Vendor calls: the family's mark in the upper 16 bits, a number in the lower. The payload is two bytes.
constexpr std::int32_t kNoteCall = 0x4B490013;      // Note; 1 for a note-on, else 0.
constexpr std::int32_t kKeyStateCall = 0x4B490014;  // Note; low byte of its state.
constexpr std::int32_t kKeyResetCall = 0x4B49001B;  // Note; 0.

constexpr int kNotes = 128;

}  // namespace

void KeyLights::start(AudioEffectX& plugin) {
  if (thread.joinable()) {
    return;
  }
  host = &plugin;
  dirty = true;
  running = true;
  try {
    thread = std::thread([this] { run(); });
  } catch (...) {
    running = false;
    throw;
  }
}

void KeyLights::stop() {
  if (!thread.joinable()) {
    return;
  }
  {
    const std::lock_guard lock(stopMutex);
    running = false;
  }
  stopped.notify_all();
  thread.join();
}

void KeyLights::messageSent(const std::uint8_t* data) {
  const bool on = (data[0] & cofu::core::kMidiKindBits) == cofu::core::kMidiNoteOn && data[2] != 0;
  call(kNoteCall, {data[1], static_cast<std::uint8_t>(on ? 1 : 0)});
}

void KeyLights::run() {
  std::unique_lock lock(stopMutex);
  while (!stopped.wait_for(lock, kRound, [this] { return !running; })) {
    if (!ready || !dirty) {
      continue;
    }
    lock.unlock();
    showAllKeys();
    dirty = false;
    lock.lock();
  }
}

void KeyLights::showAllKeys() {
  for (int note = 0; note < kNotes; ++note) {
    const auto key = static_cast<std::uint8_t>(note);
    call(kKeyResetCall, {key, 0});
    call(kKeyStateCall, {key, static_cast<std::uint8_t>(instrument.keyState(note) & 0xFF)});
  }
}

void KeyLights::call(std::int32_t code, std::array<std::uint8_t, 2> payload) {
  if (!running || host->canHostDo(kAbility) == 0) {
    return;
  }
  host->hostVendorSpecific(code, static_cast<std::intptr_t>(payload.size()), payload.data(), 0.0F);
}

}  // namespace tesh::bramel::vst
