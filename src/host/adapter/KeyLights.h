// Shows the instrument's key states on a controller's lit keys, through the vendor calls of one host family.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string_view>
#include <thread>

#include "host/shell/BramelInstrument.h"
#include "host/vst/AudioEffectX.h"

namespace tesh::bramel::vst {

/// Does nothing until `start`. Then a thread checks every 100 ms whether a key state has changed, and if so sends all
/// of them to the host.
class KeyLights {
 public:
  /// The vendor string of the host family.
  static constexpr std::string_view kHostVendor = "Native Instruments";

  explicit KeyLights(const BramelInstrument& keys) : instrument(keys) {}
  KeyLights(const KeyLights&) = delete;
  KeyLights& operator=(const KeyLights&) = delete;
  ~KeyLights() { stop(); }

  /// `plugin` calls the host and must live until `stop`. Throws std::system_error if no thread can be started.
  void start(AudioEffectX& plugin);

  /// Waits until the thread has ended. Nothing is sent afterwards.
  void stop();

  /// The host is ready for key states, from now on. None is sent before.
  void hostIsReady() { ready = true; }

  /// All states are sent with the next check. Any thread.
  void keysChanged() { dirty = true; }

  /// Tells the host whether a MIDI message that it was sent, of at least three bytes, is a note-on. Any thread.
  void messageSent(const std::uint8_t* data);

 private:
  static constexpr std::chrono::milliseconds kRound{100};

  void run();
  void showAllKeys();
  void call(std::int32_t code, std::array<std::uint8_t, 2> payload);

  const BramelInstrument& instrument;
  AudioEffectX* host = nullptr;
  std::atomic<bool> running = false;
  std::atomic<bool> ready = false;
  std::atomic<bool> dirty = false;
  std::mutex stopMutex;
  std::condition_variable stopped;
  std::thread thread;
};

}  // namespace tesh::bramel::vst
