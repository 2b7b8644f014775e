// Shows the instrument's key states on the keys of a controller, through the calls of one host family.
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

/// Idle until `start`. Then a thread of its own looks every 100 ms whether key states have changed, and if so tells the
/// host all of them.
class KeyLights {
 public:
  /// The vendor string of the host family.
  static constexpr std::string_view kHostVendor = "Native Instruments";

  explicit KeyLights(const BramelInstrument& keys) : instrument(keys) {}
  KeyLights(const KeyLights&) = delete;
  KeyLights& operator=(const KeyLights&) = delete;
  ~KeyLights() { stop(); }

  /// `plugin` is the way to the host, and must live until `stop`. Throws std::system_error without a thread.
  void start(AudioEffectX& plugin);

  /// Waits for the thread to end; nothing is sent afterwards.
  void stop();

  /// Nothing is shown before the host has been ready once.
  void hostIsReady() { ready = true; }

  /// Any thread.
  void keysChanged() { dirty = true; }

  /// Tells the host of a message of at least three bytes that went out to it. Any thread.
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
