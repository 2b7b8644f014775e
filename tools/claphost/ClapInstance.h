// A CLAP host with one instance of the plug-in: makes the host's calls, answers the plug-in by the interface's rules,
// and records the plug-in's calls.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <thread>
#include <vector>

#include "claphost/ClapLibrary.h"
#include "claphost/EventQueue.h"
#include "claphost/KitList.h"
#include "host/clap/ClapExtensions.h"
#include "hosting/HostedPlugin.h"

namespace sivray::claphost {

/// The thread that makes an instance is its main thread. Requests of the plug-in for that thread are handled during the
/// calls from it.
class ClapInstance final : public hosting::HostedPlugin {
 public:
  /// Throws HostError when the library gives no instance.
  ClapInstance(const ClapLibrary& library, const std::vector<std::string>& parameterNames);
  ~ClapInstance() override;

  const tesh::bramel::clap::Plugin& calls() const { return *plugin; }
  template <typename Extension>
  const Extension* extension(const char* id) const {
    return static_cast<const Extension*>(plugin->getExtension(plugin, id));
  }

  void start(float sampleRate, int longestBlock) override;
  void setSampleRate(float sampleRate) override;
  void restart() override;

  int parameterCount() const override { return static_cast<int>(parameters.size()); }
  void setParameter(int index, float value) override;
  float parameter(int index) override;
  float settable(int index, float value) override;
  std::string parameterName(int index) override;
  std::string parameterText(int index) override;

  std::vector<std::uint8_t> chunk() override;
  void setChunk(std::span<const std::uint8_t> bytes) override;

  int currentProgram() override { return selectedProgram; }
  int programCount() override { return static_cast<int>(programs.size()); }
  std::string programName(int index) override;
  void selectProgram(int index) override;

  int latencyFrames() override;

  void queueMidi(std::span<const std::uint8_t> bytes, int frame) override { events.addMidi(bytes, frame); }
  /// The events of the next block.
  EventQueue& queue() { return events; }
  void process(float* left, float* right, int frames) override;

  void openEditor(void* window) override;
  void closeEditor() override;
  hosting::WindowSize editorSize() override;
  bool setEditorScale(float scale) override;
  void settleEditor() override;

  /// The plug-in's calls since the last time, and how many of them came on a thread that the interface does not allow.
  /// Any thread.
  struct HostCallCount {
    int all = 0;
    int onWrongThread = 0;
  };
  HostCallCount takeHostCalls() { return {hostCalls.exchange(0), wrongCalls.exchange(0)}; }

  /// Handles the plug-in's requests for the main thread.
  void answerRequests();

 private:
  /// A value that waits for the next block. Any thread may set it.
  struct Waiting {
    std::atomic<bool> isSet = false;
    std::atomic<double> value = 0.0;
  };
  friend struct HostCalls;

  void activate();
  void deactivate();
  bool has(int index) const { return index >= 0 && index < parameterCount(); }
  double heldValue(int index);
  void takeOutput(const tesh::bramel::clap::EventHeader& event);

  tesh::bramel::clap::Host host{};
  const tesh::bramel::clap::Plugin* plugin = nullptr;
  const tesh::bramel::clap::Params* params = nullptr;
  std::vector<tesh::bramel::clap::ParamInfo> parameters;  ///< In the order of the VST 2 form.
  std::vector<ListedKit> programs;
  int selectedProgram = 0;
  std::vector<Waiting> waiting;  ///< Of each parameter.
  EventQueue events;             ///< Messages for the next block.
  EventQueue blockEvents;
  float rate = 44100.0F;
  int block = 512;
  bool isActive = false;
  bool hasWindow = false;
  std::int64_t playedFrames = 0;
  const std::thread::id mainThread = std::this_thread::get_id();
  std::atomic<std::thread::id> audioThread;  ///< While a block runs.
  std::atomic<int> hostCalls = 0;
  std::atomic<int> wrongCalls = 0;
  std::atomic<bool> wantsCallback = false;
  std::atomic<bool> wantsFlush = false;
};

}  // namespace sivray::claphost
