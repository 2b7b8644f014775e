// A host with one instance of the plug-in. It calls the plug-in, answers its calls as the interface defines, and
// records them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "host/vst/VstOpcodes.h"
#include "host/vst/VstRecords.h"
#include "hosting/HostedPlugin.h"
#include "vsthost/EventList.h"
#include "vsthost/PluginLibrary.h"

namespace sivray::vsthost {

/// The host's behaviour; correct by default.
struct HostManners {
  std::string vendor = "Sivray Render";
  bool givesTime = true;     ///< If false, the plug-in gets no time information.
  bool answersWild = false;  ///< Every answer is -1, and every text 64 bytes long.
  bool answersNull = false;  ///< Every answer is 0 and no text is written.
};

class Host final : public hosting::HostedPlugin {
 public:
  /// Calls the library's entry and opens the instance. Throws HostError when it returns none.
  explicit Host(const PluginLibrary& library, HostManners manners = {});
  /// Suspends the plug-in if it runs, and closes it.
  ~Host() override;

  tesh::bramel::vst::AEffect& effect() { return *plugin; }
  std::intptr_t call(std::int32_t opcode, std::int32_t index = 0, std::intptr_t value = 0, void* ptr = nullptr,
                     float opt = 0.0F);

  /// The plug-in needs 300 ms to resume.
  void start(float sampleRate, int longestBlock) override;
  void stop();
  void setSampleRate(float sampleRate) override;
  void restart() override;

  int parameterCount() const override { return plugin->numParams; }
  void setParameter(int index, float value) override { plugin->setParameter(plugin, index, value); }
  float parameter(int index) override { return plugin->getParameter(plugin, index); }
  std::string parameterName(int index) override;
  std::string parameterText(int index) override;

  std::vector<std::uint8_t> chunk() override;
  void setChunk(std::span<const std::uint8_t> bytes) override;

  int currentProgram() override { return static_cast<int>(call(tesh::bramel::vst::effGetProgram)); }
  int programCount() override { return plugin->numPrograms; }
  std::string programName(int index) override;
  void selectProgram(int index) override;
  int latencyFrames() override { return plugin->initialDelay; }

  void queueMidi(std::span<const std::uint8_t> bytes, int frame) override { events.add(bytes, frame); }
  /// Queues an event of any type, which must stay valid until the block has been rendered.
  void queueForeign(void* event) { events.addForeign(event); }
  void process(float* left, float* right, int frames) override;

  void openEditor(void* window) override;
  void closeEditor() override;
  hosting::WindowSize editorSize() override;
  bool setEditorScale(float scale) override;
  void settleEditor() override;

  int callsBeforeRecord = 0;  ///< Calls before the entry returned, other than for version and vendor.

 private:
  static std::intptr_t SIVRAY_VST_CALL audioMaster(tesh::bramel::vst::AEffect* effect, std::int32_t opcode,
                                                   std::int32_t index, std::intptr_t value, void* ptr, float opt);
  std::intptr_t answer(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr, float opt);
  bool recordCall(std::int32_t opcode, std::int32_t index, std::intptr_t value, float opt);
  void recordEvents(const tesh::bramel::vst::VstEvents* list);

  HostManners ways;
  tesh::bramel::vst::AEffect* plugin = nullptr;
  tesh::bramel::vst::VstTimeInfo time{};
  EventList events;
  float rate = 44100.0F;
  int block = 512;
  bool running = false;
  bool wasPlaying = false;
};

}  // namespace sivray::vsthost
