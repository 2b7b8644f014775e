// A MIDI port of the JACK server. Its library is opened at run time, as JUCE does for sound.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/standalone/JackMidi.h"

#ifdef __linux__

#include <dlfcn.h>
#include <jack/jack.h>
#include <jack/midiport.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <type_traits>

namespace tesh::bramel::standalone {
namespace {

constexpr const char* kSequencer = "/dev/snd/seq";

/// The functions of libjack, which is never unloaded.
struct Jack {
  static const Jack* library() {
    static const Jack loaded;
    return loaded.isWhole ? &loaded : nullptr;
  }

  Jack() {
    void* const file = ::dlopen("libjack.so.0", RTLD_LAZY);
    const auto find = [&](auto*& function, const char* name) {
      function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(::dlsym(file, name));
      isWhole = isWhole && function != nullptr;
    };
    isWhole = file != nullptr;
    if (isWhole) {
      find(open, "jack_client_open");
      find(close, "jack_client_close");
      find(activate, "jack_activate");
      find(setProcess, "jack_set_process_callback");
      find(onShutdown, "jack_on_shutdown");
      find(rate, "jack_get_sample_rate");
      find(registerPort, "jack_port_register");
      find(bufferOf, "jack_port_get_buffer");
      find(eventCount, "jack_midi_get_event_count");
      find(eventAt, "jack_midi_event_get");
    }
  }

  decltype(&::jack_client_open) open = nullptr;
  decltype(&::jack_client_close) close = nullptr;
  decltype(&::jack_activate) activate = nullptr;
  decltype(&::jack_set_process_callback) setProcess = nullptr;
  decltype(&::jack_on_shutdown) onShutdown = nullptr;
  decltype(&::jack_get_sample_rate) rate = nullptr;
  decltype(&::jack_port_register) registerPort = nullptr;
  decltype(&::jack_port_get_buffer) bufferOf = nullptr;
  decltype(&::jack_midi_get_event_count) eventCount = nullptr;
  decltype(&::jack_midi_event_get) eventAt = nullptr;
  bool isWhole = false;
};

/// A client of the server with one port. Plays on nothing until `playOn`.
class JackMidiPort {
 public:
  /// Null if no server runs.
  static std::shared_ptr<JackMidiPort> open(const Jack& jack) {
    auto* const client = jack.open(kJackMidiClient, JackNoStartServer, nullptr);
    if (client == nullptr) {
      return nullptr;
    }
    auto made = std::make_shared<JackMidiPort>(jack, *client);
    return made->start() ? made : nullptr;
  }

  JackMidiPort(const Jack& library, jack_client_t& newClient)
      : jack(library), client(newClient), rate(library.rate(&newClient)) {}
  ~JackMidiPort() {
    // libjack crashes if a client outlives its server and is closed after another server was looked for.
    if (running) {
      jack.close(&client);
    }
  }
  JackMidiPort(const JackMidiPort&) = delete;
  JackMidiPort& operator=(const JackMidiPort&) = delete;

  /// False once the server has ended.
  bool isRunning() const { return running; }

  /// Null for nobody. Once this returns, the previous player is no longer called.
  void playOn(juce::MidiInputCallback* newPlayer) {
    const std::lock_guard lock(playing);
    player = newPlayer;
  }

 private:
  bool start() {
    port = jack.registerPort(&client, "in", JACK_DEFAULT_MIDI_TYPE, JackPortIsInput | JackPortIsTerminal, 0);
    jack.onShutdown(
        &client, [](void* self) { static_cast<JackMidiPort*>(self)->running = false; }, this);
    jack.setProcess(
        &client,
        [](jack_nframes_t frames, void* self) {
          static_cast<JackMidiPort*>(self)->take(frames);
          return 0;
        },
        this);
    return port != nullptr && jack.activate(&client) == 0;
  }

  void take(jack_nframes_t frames) {
    void* const buffer = jack.bufferOf(port, frames);
    const double now = juce::Time::getMillisecondCounterHiRes() * 0.001;
    const std::uint32_t count = jack.eventCount(buffer);
    const std::lock_guard lock(playing);
    for (std::uint32_t index = 0; player != nullptr && index < count; ++index) {
      jack_midi_event_t event{};
      if (jack.eventAt(&event, buffer, index) == 0 && event.size > 0) {
        const double seconds = now + static_cast<double>(event.time) / rate;
        player->handleIncomingMidiMessage(nullptr,
                                          juce::MidiMessage(event.buffer, static_cast<int>(event.size), seconds));
      }
    }
  }

  const Jack& jack;
  jack_client_t& client;
  const double rate;
  jack_port_t* port = nullptr;
  std::atomic<bool> running = true;
  std::mutex playing;
  juce::MidiInputCallback* player = nullptr;
};

/// The server's input. Its port stays open while the server runs, even while the input is switched off, so that the
/// server is not contacted again and again.
class JackInput {
 public:
  explicit JackInput(const Jack& library) : jack(library) {}

  /// Empty if no server runs; a different text for each new server.
  juce::String identifier() {
    if (port == nullptr || !port->isRunning()) {
      port = JackMidiPort::open(jack);
      number += port != nullptr ? 1 : 0;
    }
    return port != nullptr ? "jack" + juce::String(number) : juce::String();
  }

  std::shared_ptr<void> open(juce::MidiInputCallback& player) {
    if (port == nullptr) {
      return nullptr;
    }
    port->playOn(&player);
    return {port.get(), [kept = port](void*) { kept->playOn(nullptr); }};
  }

 private:
  const Jack& jack;
  std::shared_ptr<JackMidiPort> port;
  int number = 0;
};

}  // namespace

MidiSystem systemMidi() {
  MidiSystem system;
  const Jack* const jack = ::access(kSequencer, R_OK | W_OK) == 0 ? nullptr : Jack::library();
  if (jack == nullptr) {
    return system;
  }
  const auto input = std::make_shared<JackInput>(*jack);
  system.list = [input, others = system.list] {
    auto list = others();
    if (const juce::String identifier = input->identifier(); identifier.isNotEmpty()) {
      list.add({"JACK", identifier});
    }
    return list;
  };
  system.open = [input, others = system.open](const juce::String& identifier, juce::MidiInputCallback& player) {
    return identifier == input->identifier() ? input->open(player) : others(identifier, player);
  };
  return system;
}

}  // namespace tesh::bramel::standalone

#else

namespace tesh::bramel::standalone {

MidiSystem systemMidi() { return {}; }

}  // namespace tesh::bramel::standalone

#endif
