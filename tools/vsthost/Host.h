// A host with one instance of the plug-in: makes its calls, answers it as the plug-in interface defines, and records
// its calls to the host.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <vector>

#include "host/vst/VstOpcodes.h"
#include "host/vst/VstRecords.h"
#include "vsthost/EventList.h"
#include "vsthost/PluginLibrary.h"

namespace sivray::vsthost {

/// How the host behaves. By default it behaves well.
struct HostManners {
  std::string vendor = "Sivray Render";
  bool givesTime = true;     ///< Otherwise the plug-in gets no time information.
  bool answersWild = false;  ///< Every answer is -1, every text 64 bytes long.
  bool answersNull = false;  ///< Every answer is 0 and no text is written.
};

/// A recorded call from the plug-in to the host.
struct HostCall {
  std::int32_t opcode = 0;
  std::int32_t index = 0;
  float value = 0.0F;
  std::intptr_t number = 0;
};

/// All calls must come from one thread, except `process` and `queueMidi`, which may come from another. Those two do not
/// allocate.
class Host {
 public:
  /// Calls the library's entry and opens the instance. Throws HostError when it returns none.
  explicit Host(const PluginLibrary& library, HostManners manners = {});
  /// Suspends the plug-in if it runs, and closes it.
  ~Host();
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  tesh::bramel::vst::AEffect& effect() { return *plugin; }
  std::intptr_t call(std::int32_t opcode, std::int32_t index = 0, std::intptr_t value = 0, void* ptr = nullptr,
                     float opt = 0.0F);

  /// Sets rate (Hz) and block size (frames), and resumes. Resuming takes the plug-in 300 ms.
  void start(float sampleRate, int longestBlock);
  void stop();
  bool isRunning() const { return running; }

  /// Changes the rate, in Hz, while running.
  void setSampleRate(float sampleRate);

  int parameterCount() const { return plugin->numParams; }
  void setParameter(int index, float value) { plugin->setParameter(plugin, index, value); }
  float parameter(int index) { return plugin->getParameter(plugin, index); }
  std::string parameterName(int index);
  std::string parameterText(int index);

  std::vector<std::uint8_t> chunk();
  void setChunk(std::span<const std::uint8_t> bytes);

  /// Queues an event at `frame` of the next block.
  void queueMidi(std::span<const std::uint8_t> bytes, int frame) { events.add(bytes, frame); }
  void queueNote(int note, int velocity, int frame);

  /// Sends the queued events and renders a block into `left` and `right`.
  void process(float* left, float* right, int frames);

  double tempo = 120.0;
  bool playing = true;

  /// Returns the calls recorded since the last time, on any thread: automation, edits, display changes and sizes of the
  /// window. Calls past the reserved capacity are dropped.
  std::vector<HostCall> takeCalls();
  /// The MIDI messages recorded since the last time, likewise.
  std::vector<std::array<std::uint8_t, 4>> takeMidi();
  int callsBeforeRecord = 0;  ///< Calls that came before the entry returned, other than for version and vendor.

 private:
  static std::intptr_t SIVRAY_VST_CALL audioMaster(tesh::bramel::vst::AEffect* effect, std::int32_t opcode,
                                                   std::int32_t index, std::intptr_t value, void* ptr, float opt);
  std::intptr_t answer(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr, float opt);
  void keepMidi(const tesh::bramel::vst::VstEvents* list);

  void keep(const HostCall& call);

  HostManners ways;
  std::mutex keptMutex;
  std::vector<HostCall> calls;
  std::vector<std::array<std::uint8_t, 4>> midiOut;
  tesh::bramel::vst::AEffect* plugin = nullptr;
  tesh::bramel::vst::VstTimeInfo time{};
  EventList events;
  float rate = 44100.0F;
  int block = 512;
  bool running = false;
  bool wasPlaying = false;
};

}  // namespace sivray::vsthost
