// An instrument around a generator that records its calls, with a host and an editor that do so too, and a separate
// documents folder.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/shell/BramelInstrument.h"
#include "macro/MacroSetLinear.h"
#include "support/QuietGenerator.h"
#include "support/Scratch.h"

namespace shell {

using namespace tesh;
using bramel::vst::BramelInstrument;
using Processor = BramelInstrument::Processor;
using Bytes = std::vector<std::uint8_t>;
using Log = std::vector<std::string>;
namespace fs = std::filesystem;

/// The engine parameter of the first macro; the others' follow.
constexpr std::uint32_t kFirstTarget = 100;

inline std::string hex(const std::uint8_t* data, std::size_t size) {
  std::string text;
  for (std::size_t i = 0; i < size; ++i) {
    constexpr const char* kDigits = "0123456789abcdef";
    text += {kDigits[data[i] >> 4], kDigits[data[i] & 15]};
  }
  return text;
}

/// Outputs the constant 0.5, and on further outputs the channel's number. Recording does not allocate on the audio
/// thread.
class NotingGenerator final : public vimo::QuietGenerator {
 public:
  NotingGenerator() {
    frames.reserve(kRoom);
    automation.reserve(kRoom);
    tempi.reserve(kRoom);
    log.reserve(kRoom);
  }
  void process(vimo::ProcessBlock& block) override {
    frames.push_back(block.frames);
    for (const auto& event : *block.midiIn) {
      cofu::core::mayWait([&] { midi.push_back(hex(event.data(), event.size()) + "@" + std::to_string(event.frame)); });
    }
    while (const auto entry = block.automationRing->take()) {
      automation.push_back(*entry);
    }
    for (int i = 0; i < block.frames; ++i) {
      block.outputs[0][i] = block.outputs[1][i] = 0.5F;
      for (std::int32_t channel = vimo::kMainChannels; channel < block.outputCount; ++channel) {
        if (block.outputs[channel] != nullptr) {
          block.outputs[channel][i] = static_cast<float>(channel);
        }
      }
    }
    cofu::core::mayWait([&] { *block.midiOut = toHost; });
  }
  void setParameter(std::uint32_t, float) override { log += "p"; }
  bool getParameterInfo(std::uint32_t, vimo::GeneratorParameterInfo& info) const override {
    info.step = 1.0F / 127.0F;
    return true;
  }
  void tempoChanged(double bpm) override { tempi.push_back(bpm); }
  void activate() override { log += "a"; }
  void deactivate() override { log += "d"; }
  std::span<const std::uint8_t> getState() override { return state; }
  vimo::EngineSnapshot snapshot() override {
    return {{state.begin(), state.begin() + 1},
            std::span(state).subspan(1),
            heldBySnapshot ? heldBySnapshot() : std::shared_ptr<const void>()};
  }
  void setState(std::span<const std::uint8_t> bytes) override { state.assign(bytes.begin(), bytes.end()); }

  static constexpr std::size_t kRoom = 16384;

  std::vector<std::int32_t> frames;
  std::vector<std::string> midi;
  std::vector<vimo::TimedValue> automation;
  std::vector<double> tempi;
  std::vector<vimo::MidiEvent> toHost;
  std::string log;
  Bytes state{1, 2, 3};
  std::function<std::shared_ptr<const void>()> heldBySnapshot;
};

/// Records calls in its own log and in the shared one, if any.
class Noting {
 protected:
  Noting(Log& own, Log* shared, const char* name) : ownLog(own), sharedLog(shared), side(name) {}
  /// Recording is allowed to allocate.
  void note(const std::string& call) {
    cofu::core::mayWait([&] {
      ownLog.push_back(call);
      if (sharedLog != nullptr) {
        sharedLog->push_back(side + call);
      }
    });
  }

 private:
  Log& ownLog;
  Log* sharedLog;
  std::string side;
};

/// Writes values back, as an adapter does.
struct NotingHost final : bramel::vst::BramelInstrumentHostCallback, Noting {
  explicit NotingHost(BramelInstrument& shell, Log* shared = nullptr)
      : Noting(log, shared, "host: "), instrument(shell) {}
  void beginEdit(std::uint64_t index) override { note("begin " + std::to_string(index)); }
  void endEdit(std::uint64_t index) override { note("end " + std::to_string(index)); }
  void automate(std::uint64_t index, float value) override {
    instrument.setParameter(instrument.parameterId(index), value);
    note("automate " + std::to_string(index));
  }
  void sendMidi(const std::uint8_t* data, std::size_t size, std::int32_t delta) override {
    note("midi " + hex(data, size) + "@" + std::to_string(delta));
  }
  void programChanged(bramel::vst::Origin origin) override {
    note(origin == bramel::vst::Origin::panel ? "program" : "own program");
  }
  void parametersChanged() override { note("parameters"); }
  void keyStateChanged(int key) override { note("key " + std::to_string(key)); }
  BramelInstrument& instrument;
  Log log;
};

struct NotingEditor final : bramel::vst::BramelInstrumentUICallback, Noting {
  explicit NotingEditor(Log* shared = nullptr) : Noting(log, shared, "editor: ") {}
  static std::string list(const std::uint64_t* ids, std::uint64_t count) {
    std::string text;
    for (std::uint64_t i = 0; i < count; ++i) {
      text.append(" ").append(std::to_string(ids[i]));
    }
    return text;
  }
  void holdUpdates() override {
    note("hold");
    if (whenHeld) {
      cofu::core::mayWait([&] { std::exchange(whenHeld, nullptr)(); });
    }
  }
  void releaseUpdates() override { note("release"); }
  void programSaved(const std::string& bank, const std::uint64_t* ids, std::uint64_t count) override {
    note("saved " + bank + list(ids, count));
  }
  void programDeleted(const std::string& bank, const std::uint64_t* ids, std::uint64_t count) override {
    note("deleted " + bank + list(ids, count));
  }
  void programMoved(const std::string& bank, std::uint64_t from, std::uint64_t to) override {
    note("moved " + bank + " " + std::to_string(from) + " " + std::to_string(to));
  }
  void programChanged() override { note("program"); }
  void parameterChanged(std::uint64_t id) override { note("changed " + std::to_string(id)); }
  void midiReceived(const std::uint8_t* data, std::size_t size) override {
    cofu::core::mayWait([&] { messages.push_back(hex(data, size)); });
  }
  Log log;
  Log messages;
  std::function<void()> whenHeld;  ///< Called once, inside a block.
};

/// Returns the last value as its text.
struct PlainTexts final : bramel::tooltip::BramelTooltipProvider {
  std::string getParameterText(std::uint64_t index) override { return std::to_string(getValue(index)); }
};

class Shell : public testing::Test {
 protected:
  /// Four macros; the host does not see the third. Controller 7 and the pitch bend move the second.
  Shell() {
    ::setenv("BRAMEL_DOCUMENTS", documents.c_str(), 1);
    auto engine = std::make_unique<NotingGenerator>();
    generator = engine.get();
    auto processor = std::make_unique<Processor>("Sivray", std::move(engine));
    for (std::uint32_t i = 0; i < 4; ++i) {
      auto set = vimo::makeMacroSet(vimo::MacroSetType::linear);
      set->setTargetId(kFirstTarget + i);
      auto& macro = processor->controller().addMacro();
      macro.addSet(std::move(set));
      macro.setName("macro" + std::to_string(i));
      macro.defaultValue = 0.75F;
      macro.storedValue = 0.25F;
    }
    processor->controller().automationBlacklist = {2};
    processor->controller().ccMap = {{0, 1}, {7, 1}, {vimo::MacroControllerBase::kPitchBendKey, 1}};
    shell = std::make_unique<BramelInstrument>(std::move(processor));
    shell->setTooltipProvider(std::make_unique<PlainTexts>());
    host = std::make_shared<NotingHost>(*shell, &together);
    editor = std::make_shared<NotingEditor>(&together);
    shell->setHostCallback(host);
    shell->setUICallback(editor);
  }

  void run(std::int32_t frames = 64) {
    std::vector<float> samples(2 * static_cast<std::size_t>(frames));
    std::array<float*, 2> outputs{samples.data(), samples.data() + frames};
    shell->process(nullptr, outputs.data(), frames);
  }
  void send(std::vector<std::uint8_t> message, std::int32_t delta = 0) {
    shell->sendMidi(message.data(), message.size(), delta);
  }
  vimo::MacroController<vimo::Generator<float>>& controller() { return shell->processorHandle()->controller(); }
  bool load(const Bytes& state) { return shell->setState(state.data(), state.size()); }

  const support::Scratch scratch;
  const fs::path documents = scratch.path();
  Log together;  ///< Calls to host and editor, in order.
  NotingGenerator* generator = nullptr;
  std::unique_ptr<BramelInstrument> shell;
  std::shared_ptr<NotingHost> host;
  std::shared_ptr<NotingEditor> editor;
};

}  // namespace shell
