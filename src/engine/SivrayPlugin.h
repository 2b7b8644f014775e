// This instrument's generator: a thin frame around one synth. Turns everything that arrives for a block into timed
// records, and renders the block in slices that end at those records.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <string_view>

#include "core/EngineRate.h"
#include "core/RealTime.h"
#include "engine/EventSequencer.h"
#include "engine/Generator.h"
#include "engine/VstXSynth.h"

namespace tesh::bramel::plugin::sivray {

/// The folder of the factory sample library inside the resource directory.
inline constexpr std::string_view kSampleFolder = "SivrayPCM";

/// Length of a pad's slot: six seconds at 44100 Hz.
inline constexpr std::size_t kSlotFrames = 264600;

/// See Generator for the operations that it overrides.
template <typename Synth>
class SivrayPlugin final : public vimo::Generator<float> {
 public:
  /// Builds the whole engine. Waves that are not loaded at once are loaded by `activate`.
  explicit SivrayPlugin(std::string_view folder = kSampleFolder, std::size_t slotFrames = kSlotFrames,
                        WaveLoading loading = WaveLoading::atOnce);

  int outputCount() const override { return Synth::outputCount(); }
  int inputCount() const override { return Synth::inputCount(); }
  void process(vimo::ProcessBlock& block) SIVRAY_NONBLOCKING override;
  int kind() const override { return 0; }
  int parameterCount() const override { return static_cast<int>(kParameterIds); }
  void setParameter(std::uint32_t id, float value) override;
  bool readsFile(std::uint32_t id) const override { return synth.engine().readsFile(id); }
  void prepare(std::uint32_t id, float value) override { synth.engine().prepare(id, value); }
  float getParameter(std::uint32_t id) const override { return synth.engine().getParameter(id); }
  bool getParameterInfo(std::uint32_t id, vimo::GeneratorParameterInfo& info) const override;
  std::string getParameterDisplay(std::uint32_t id) const override { return synth.engine().parameterDisplay(id); }
  void tempoChanged(double bpm) override;
  void setSampleRate(double rate) override { hostRate = rate; }
  void activate() override;
  void deactivate() override;
  std::span<const std::uint8_t> getState() override { return synth.engine().bank().getChunk(); }
  vimo::EngineSnapshot snapshot() override { return synth.engine().bank().snapshot(); }
  void setState(std::span<const std::uint8_t> bytes) override { synth.engine().bank().setChunk(bytes); }
  int currentProgram() const override { return synth.engine().bank().getProgram(); }
  int programCount() const override { return static_cast<int>(kPrograms); }
  void storeProgram(int index) override { synth.engine().bank().storeProgram(index); }
  void swapPrograms(int a, int b) override { synth.engine().bank().swapPrograms(a, b); }
  std::string programName() const override { return synth.engine().bank().programName(); }
  std::string programNameAt(int index) const override { return synth.engine().bank().programNameAt(index); }
  void setProgramName(std::string_view name) override { synth.engine().bank().setProgramName(name); }
  vimo::SampleLibrary* sampleLibrary() override { return library.get(); }

  /// Renders `frames` frames into two outputs and the connected ones of `outs`, without applying messages and values of
  /// a block. Returns whether all outputs are known to be zero.
  bool renderOnly(float* const* outputs, int frames, const EngineOuts* outs = nullptr) SIVRAY_NONBLOCKING;

  /// Queues messages for the next render. Returns whether there were any. Audio thread.
  bool addMidi(const std::vector<vimo::MidiEvent>& events) SIVRAY_NONBLOCKING;

  /// Queues "BPMx10" (0) or "Trigger" (1) for the start of the next `process`, active or not.
  void setGlobalParameter(std::uint32_t id, float value);

  static const char* typeName() { return Synth::typeName(); }

  /// Sets the listener for automation, not owned; null for none. Must not be called during a block.
  void setListener(vimo::PluginListener* pluginListener) { listener = pluginListener; }

 private:
  /// Applies records to the synth.
  class Responder final : public IEventResponder {
   public:
    explicit Responder(Synth& target) : synth(target) {}
    void onParameter(const SequencerEvent& record) SIVRAY_NONBLOCKING override {
      synth.engine().setParameter(record.id, record.value);
    }
    void onGlobalParameter(const SequencerEvent& record) SIVRAY_NONBLOCKING override {
      synth.setGlobalParameterValue(record.id, record.value);
    }
    void onMidi(const SequencerMessage& message) SIVRAY_NONBLOCKING override {
      if (message.size > 0) {
        synth.processEvent(message);
      }
    }

   private:
    Synth& synth;
  };

  /// Sets a record's kind and gives it the next arrival number.
  void number(SequencerEvent& record, SequencerKind kind) SIVRAY_NONBLOCKING;
  void queueParameter(SequencerKind kind, std::uint32_t id, float value);
  void takeAutomation(vimo::TimedValueRing& ring) SIVRAY_NONBLOCKING;
  bool renderSlices(float* const* outputs, int frames, EngineOuts* outs) SIVRAY_NONBLOCKING;

  vimo::PluginListener* listener = nullptr;
  Synth synth;
  Responder responder{synth};
  EventSequencer sequencer{responder};
  std::atomic<std::uint32_t> nextSequence{0};
  std::atomic<bool> running{false};
  double hostRate = cofu::core::kEngineRate;
  std::unique_ptr<vimo::SampleLibrary> library;
};

extern template class SivrayPlugin<VstXSynth>;

}  // namespace tesh::bramel::plugin::sivray
