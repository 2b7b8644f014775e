// A CLAP host as this plug-in calls it: extensions that it lacks are skipped.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "host/clap/ClapExtensions.h"

namespace tesh::bramel::clap {

/// The host's record must outlive this object. Main thread, unless an operation says otherwise.
class ClapHost {
 public:
  /// `newHost` may be null: all calls then do nothing.
  explicit ClapHost(const Host* newHost) : host(newHost) {}

  /// Asks the host for its extensions. Hosts forbid that before the plug-in's `init`.
  void findExtensions() {
    find(params, kParams);
    find(state, kState);
    find(latency, kLatency);
    find(gui, kGui);
    find(noteName, kNoteName);
    find(presetLoad, kPresetLoad);
    if (presetLoad == nullptr) {
      find(presetLoad, kPresetLoadDraft);
    }
    find(threadCheck, kThreadCheck);
    find(timerSupport, kTimerSupport);
  }

  /// The host calls `onMainThread` soon. Any thread, the audio thread too.
  void requestCallback() const {
    if (host != nullptr && host->requestCallback != nullptr) {
      host->requestCallback(host);
    }
  }

  /// The host takes waiting values and gestures by a block or a flush. Any thread but the audio thread.
  void requestFlush() const { call(params, &HostParams::requestFlush); }

  void rescanValues() const { call(params, &HostParams::rescan, RescanFlag::values); }
  void markDirty() const { call(state, &HostState::markDirty); }
  void latencyChanged() const { call(latency, &HostLatency::changed); }
  void noteNamesChanged() const { call(noteName, &HostNoteName::changed); }

  void requestResize(std::uint32_t width, std::uint32_t height) const {
    call(gui, &HostGui::requestResize, width, height);
  }

  /// The host calls `onTimer` each `milliseconds` until `stopTimer`. Empty if it offers no timers.
  std::optional<std::uint32_t> startTimer(std::uint32_t milliseconds) const {
    std::uint32_t id = kInvalidId;
    const bool isRunning = timerSupport != nullptr && timerSupport->registerTimer != nullptr &&
                           timerSupport->registerTimer(host, milliseconds, &id);
    return isRunning ? std::optional(id) : std::nullopt;
  }
  void stopTimer(std::uint32_t id) const { call(timerSupport, &HostTimerSupport::unregisterTimer, id); }

  void presetLoaded(std::uint32_t kind, const char* location, const char* key) const {
    call(presetLoad, &HostPresetLoad::loaded, kind, location, key);
  }
  void presetFailed(std::uint32_t kind, const char* location, const char* key, const char* message) const {
    call(presetLoad, &HostPresetLoad::onError, kind, location, key, 0, message);
  }

  // Whether the host calls the present thread its main or its audio thread; true for hosts that do not tell. Any
  // thread.

  bool mayBeMainThread() const { return mayBe(&HostThreadCheck::isMainThread); }
  bool mayBeAudioThread() const { return mayBe(&HostThreadCheck::isAudioThread); }

 private:
  bool mayBe(bool (*HostThreadCheck::*isThread)(const Host*)) const {
    return threadCheck == nullptr || threadCheck->*isThread == nullptr || (threadCheck->*isThread)(host);
  }

  template <typename Extension>
  void find(const Extension*& extension, const char* id) {
    if (host != nullptr && host->getExtension != nullptr) {
      extension = static_cast<const Extension*>(host->getExtension(host, id));
    }
  }

  template <typename Extension, typename Function, typename... Arguments>
  void call(const Extension* extension, Function function, Arguments... arguments) const {
    if (extension != nullptr && extension->*function != nullptr) {
      (extension->*function)(host, arguments...);
    }
  }

  const Host* host;
  const HostParams* params = nullptr;
  const HostState* state = nullptr;
  const HostLatency* latency = nullptr;
  const HostGui* gui = nullptr;
  const HostNoteName* noteName = nullptr;
  const HostPresetLoad* presetLoad = nullptr;
  const HostThreadCheck* threadCheck = nullptr;
  const HostTimerSupport* timerSupport = nullptr;
};

}  // namespace tesh::bramel::clap
