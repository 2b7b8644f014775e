// A small CLAP host that records the plug-in's calls.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "claphost/EventQueue.h"
#include "host/clap/ClapPlugin.h"
#include "support/KitFolder.h"

namespace clap {

using namespace tesh::bramel::clap;
using sivray::claphost::EventQueue;
using Bytes = std::vector<std::uint8_t>;
using Log = std::vector<std::string>;
using Samples = std::vector<float>;

/// A stream that reads or writes at most `piece` bytes at a time.
struct Stream {
  Bytes bytes;
  std::size_t piece = 17;
  std::size_t position = 0;

  InputStream reader() {
    return {this, [](const InputStream* stream, void* to, std::uint64_t size) {
              auto& own = *static_cast<Stream*>(stream->context);
              const std::size_t count = std::min({std::size_t{size}, own.piece, own.bytes.size() - own.position});
              std::copy_n(own.bytes.begin() + static_cast<std::ptrdiff_t>(own.position), count,
                          static_cast<std::uint8_t*>(to));
              own.position += count;
              return static_cast<std::int64_t>(count);
            }};
  }
  OutputStream writer() {
    return {this, [](const OutputStream* stream, const void* from, std::uint64_t size) {
              auto& own = *static_cast<Stream*>(stream->context);
              const std::size_t count = std::min(std::size_t{size}, own.piece);
              const auto* const first = static_cast<const std::uint8_t*>(from);
              own.bytes.insert(own.bytes.end(), first, first + count);
              return static_cast<std::int64_t>(count);
            }};
  }
};

/// A plug-in and its host, on one thread.
class Instance {
 public:
  Instance() : hostRecord{{}, this, "test", "", "", "", &extensionOf, &nothing, &nothing, &wantCallback} {
    plugin = ClapPlugin::make(&hostRecord);
  }
  ~Instance() {
    if (isActive) {
      plugin->deactivate(plugin);
    }
    plugin->destroy(plugin);
  }
  Instance(const Instance&) = delete;
  Instance& operator=(const Instance&) = delete;

  bool activate(double rate) {
    isActive = plugin->activate(plugin, rate, 1, 4096) && plugin->startProcessing(plugin);
    return isActive;
  }
  void deactivate() {
    plugin->stopProcessing(plugin);
    plugin->deactivate(plugin);
    isActive = false;
  }

  /// Initialises and activates the plug-in, and renders the block that applies the first program.
  Instance& started(double rate = 44100.0) {
    EXPECT_TRUE(plugin->init(plugin));
    EXPECT_TRUE(activate(rate));
    render(64);
    log.clear();
    return *this;
  }

  template <typename Extension>
  const Extension& extension(const char* id) const {
    return *static_cast<const Extension*>(plugin->getExtension(plugin, id));
  }

  /// Renders a block with the queued events. Returns the left channel followed by the right one.
  Samples render(std::uint32_t frames) {
    Samples left(frames);
    Samples right(frames);
    std::array<float*, 2> channels{left.data(), right.data()};
    process({channels.data(), nullptr, 2, 0, 0}, frames);
    left.insert(left.end(), right.begin(), right.end());
    return left;
  }

  void process(AudioBuffer output, std::uint32_t frames) {
    const OutputEvents out{this, &push};
    const Process block{0, frames, nullptr, nullptr, &output, 0, 1, events.list(), &out};
    status = plugin->process(plugin, &block);
    events.clear();
  }

  void flush() {
    const OutputEvents out{this, &push};
    extension<Params>(kParams).flush(plugin, events.list(), &out);
    events.clear();
  }

  void note(std::uint16_t type, std::int16_t key, std::uint32_t frame, std::int32_t id = -1) {
    NoteEvent event{};
    event.header = {sizeof(event), frame, kCoreSpace, type, 0};
    event.noteId = id;
    event.key = key;
    event.velocity = 0.8;
    events.add(event);
  }

  double value(std::uint32_t id) const {
    double found = -1.0;
    extension<Params>(kParams).getValue(plugin, id, &found);
    return found;
  }

  Bytes state() const {
    Stream stream;
    const OutputStream writer = stream.writer();
    EXPECT_TRUE(extension<State>(kState).save(plugin, &writer));
    return stream.bytes;
  }
  bool load(const Bytes& bytes) const {
    Stream stream{bytes, 23};
    const InputStream reader = stream.reader();
    return extension<State>(kState).load(plugin, &reader);
  }

  void answerCallback() {
    if (wantsCallback.exchange(false)) {
      plugin->onMainThread(plugin);
    }
  }

  const Plugin* plugin = nullptr;
  EventQueue events;
  Log log;  ///< The plug-in's calls.
  std::int32_t status = -1;
  std::atomic<bool> wantsCallback = false;
  bool isOnMainThread = true;          ///< The host's answer to the plug-in.
  std::function<void()> duringRescan;  ///< Called during a rescan.

  Host hostRecord;

 private:
  static constexpr std::uint32_t kTimer = 7;

  static Instance& of(const Host* host) { return *static_cast<Instance*>(host->hostData); }
  static void nothing(const Host*) {}
  static void wantCallback(const Host* host) { of(host).wantsCallback = true; }

  static const void* extensionOf(const Host*, const char* id) {
    static constexpr HostParams kHostParams{
        [](const Host* host, std::uint32_t) {
          of(host).log.emplace_back("rescan");
          if (const auto meanwhile = std::exchange(of(host).duringRescan, nullptr)) {
            meanwhile();
          }
        },
        [](const Host*, std::uint32_t, std::uint32_t) {}, [](const Host* host) { of(host).log.emplace_back("flush"); }};
    static constexpr HostState kHostState{[](const Host* host) { of(host).log.emplace_back("dirty"); }};
    static constexpr HostNoteName kHostNames{[](const Host* host) { of(host).log.emplace_back("names"); }};
    static constexpr HostLatency kHostLatency{[](const Host* host) { of(host).log.emplace_back("latency"); }};
    static constexpr HostThreadCheck kHostThreads{[](const Host* host) { return of(host).isOnMainThread; },
                                                  [](const Host*) { return true; }};
    static constexpr HostPresetLoad kHostPresets{[](const Host* host, std::uint32_t, const char*, const char*,
                                                    std::int32_t, const char*) { of(host).log.emplace_back("failed"); },
                                                 [](const Host* host, std::uint32_t, const char*, const char* key) {
                                                   of(host).log.push_back(std::string("loaded ") + key);
                                                 }};
    static constexpr HostTimerSupport kHostTimers{[](const Host* host, std::uint32_t, std::uint32_t* timer) {
                                                    of(host).log.emplace_back("timer");
                                                    *timer = kTimer;
                                                    return true;
                                                  },
                                                  [](const Host* host, std::uint32_t timer) {
                                                    of(host).log.emplace_back(timer == kTimer ? "no timer" : "");
                                                    return true;
                                                  }};
    const std::string_view wanted(id);
    return wanted == kParams         ? static_cast<const void*>(&kHostParams)
           : wanted == kState        ? &kHostState
           : wanted == kNoteName     ? &kHostNames
           : wanted == kLatency      ? &kHostLatency
           : wanted == kThreadCheck  ? &kHostThreads
           : wanted == kTimerSupport ? &kHostTimers
           : wanted == kPresetLoad   ? static_cast<const void*>(&kHostPresets)
                                     : nullptr;
  }

  static bool push(const OutputEvents* out, const EventHeader* event) {
    Log& log = static_cast<Instance*>(out->context)->log;
    const std::string at = "@" + std::to_string(event->time);
    if (event->type == EventType::noteEnd) {
      const auto& note = reinterpret_cast<const NoteEvent&>(*event);
      log.push_back("end " + std::to_string(note.key) + " id " + std::to_string(note.noteId) + at);
    } else if (event->type == EventType::paramValue) {
      log.push_back("value " + std::to_string(reinterpret_cast<const ParamEvent&>(*event).paramId) + at);
    } else if (event->type == EventType::gestureBegin || event->type == EventType::gestureEnd) {
      log.push_back((event->type == EventType::gestureBegin ? "begin " : "finish ") +
                    std::to_string(reinterpret_cast<const GestureEvent&>(*event).paramId) + at);
    } else if (event->type == EventType::midi) {
      log.push_back("midi " + std::to_string(reinterpret_cast<const MidiEvent&>(*event).data[1]) + at);
    }
    return true;
  }

  bool isActive = false;
};

// Parameters of KitFolder's instrument: six for each pad, the last of which is hidden, then the effect's and the master
// level.
inline constexpr std::uint32_t kWaveOfPad1 = 0;
inline constexpr std::uint32_t kLevelOfPad1 = 1;
inline constexpr std::uint32_t kMaster = 51;

class Clap : public testing::Test {
 protected:
  support::KitFolder folder;
};

}  // namespace clap
