// A generator that records its calls, and a processor around it with queues of the real sizes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/LittleEndian.h"
#include "macro/MacroSetLinear.h"
#include "macro/PluginMacroControllable.h"
#include "support/QuietGenerator.h"

namespace tesh::vimo {

using Bytes = std::vector<std::uint8_t>;
using Processor = PluginMacroControllable<Generator<float>>;
using Parts = Processor::Controller::ChunkParts;

/// Records its calls.
class FakeGenerator final : public QuietGenerator {
 public:
  FakeGenerator() { automation.reserve(4096); }
  void process(ProcessBlock& block) override {
    ++blocks;
    while (const auto entry = block.automationRing->take()) {
      automation.push_back(*entry);
    }
  }
  void setParameter(std::uint32_t id, float value) override { plain[id] = value; }
  bool getParameterInfo(std::uint32_t id, GeneratorParameterInfo& info) const override {
    info.step = 1.0F / 127.0F;
    return id < 560;
  }
  void activate() override { log += "a"; }
  void deactivate() override { log += "d"; }
  std::span<const std::uint8_t> getState() override { return state; }
  void setState(std::span<const std::uint8_t> bytes) override {
    log += "s";
    state.assign(bytes.begin(), bytes.end());
  }

  int blocks = 0;
  std::string log;
  Bytes state{1, 2, 3};
  std::map<std::uint32_t, float> plain;
  std::vector<TimedValue> automation;
};

struct Echo final : MacroEchoListener {
  Echo() {
    moves.reserve(4096);
    notes.reserve(4096);
  }
  void macroMoved(std::uint32_t index, float value, std::uint32_t frame) override {
    moves.push_back({index, value, frame, 0});
  }
  void programSelected() override { ++programs; }
  void noteReceived(std::uint16_t note) override { notes.push_back(note); }
  std::vector<TimedValue> moves;
  std::vector<std::uint16_t> notes;
  int programs = 0;
};

struct Scene {
  explicit Scene(std::size_t automationSize = 4096) : engineRing(automationSize) {
    auto engine = std::make_unique<FakeGenerator>();
    generator = engine.get();
    processor = std::make_unique<Processor>("Sivray", std::move(engine));
    processor->editor = &echo;
  }

  Processor::Controller& controller() { return processor->controller(); }
  MacroParameterControl& macro(std::uint64_t index) { return *controller().macroAt(index); }

  /// Adds macros with one linear set each, from 0 to 1, on the parameters 100, 101 and so on.
  void addMacros(std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
      addSet(controller().addMacro(), static_cast<std::uint32_t>(100 + i), MacroSetType::linear);
    }
  }

  static void addSet(MacroParameterControl& macro, std::uint32_t id, MacroSetType type) {
    auto set = makeMacroSet(type);
    set->setTargetId(id);
    macro.addSet(std::move(set));
  }

  void command(MacroCommandKind kind, std::uint32_t index, float value, std::uint64_t timestamp = 0) {
    processor->commandQueue.put({kind, index, value, 0, timestamp});
  }

  void run(std::int32_t frames = 64, std::uint64_t hostTime = 0, double speed = 1.0, double offset = 0.0) {
    generator->automation.clear();
    echo.moves.clear();
    ProcessBlock block;
    std::vector<float> left(64, 1.0F);
    float* outputs[2] = {left.data(), left.data()};
    block.outputs = outputs;
    block.frames = frames;
    block.automationRing = &engineRing;
    block.notificationRing = &echoRing;
    block.midiIn = &midi;
    processor->process(block, hostTime, speed, offset);
  }

  /// Stores a program with these values in the factory bank.
  void store(const std::string& name, const std::vector<float>& values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      macro(i).storedValue = values[i];
    }
    controller().setProgramName(name);
    controller().programs().storeCurrent(Bank::factory);
  }

  void select(std::uint32_t program, std::uint8_t bank = 0) {
    processor->programQueue.put(MidiEvent::programChange(1, bank, program));
    run();
  }

  TimedValueRing engineRing;
  TimedValueRing echoRing{1024};
  std::vector<MidiEvent> midi;
  Echo echo;
  FakeGenerator* generator = nullptr;
  std::unique_ptr<Processor> processor;
};

inline bool operator==(const TimedValue& a, const TimedValue& b) {
  return a.id == b.id && a.value == b.value && a.frame == b.frame && a.object == b.object;
}

inline std::ostream& operator<<(std::ostream& out, const TimedValue& entry) {
  return out << "{" << entry.id << ", " << entry.value << ", " << entry.frame << ", " << entry.object << "}";
}

}  // namespace tesh::vimo
