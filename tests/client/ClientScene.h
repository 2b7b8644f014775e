// The processor and the VST 2 plug-in on the same files, played in the same blocks with the same messages and writes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <juce_audio_processors/juce_audio_processors.h>

#include "host/adapter/CreateVstPlugin.h"
#include "host/client/SivrayProcessor.h"
#include "host/vst/AudioEffectX.h"
#include "support/KitFolder.h"

namespace client {

using namespace tesh::bramel::vst;
using Bytes = std::vector<std::uint8_t>;
using Samples = std::vector<float>;

struct Message {
  int frame = 0;
  std::array<std::uint8_t, 3> bytes{};
};

struct Write {
  int parameter = 0;
  float value = 0.0F;
};

struct Block {
  int frames = 0;
  std::vector<Write> writes;
  std::vector<Message> messages;
};

/// Notes, controllers and automation in blocks of 1 to 700 frames.
inline std::vector<Block> randomBlocks(int count, int parameters) {
  std::mt19937 random(7);
  const auto below = [&random](int end) { return std::uniform_int_distribution<int>(0, end - 1)(random); };
  std::vector<Block> blocks(static_cast<std::size_t>(count));
  for (Block& block : blocks) {
    block.frames = 1 + below(700);
    for (int left = below(3); left > 0; --left) {
      block.writes.push_back({below(parameters), static_cast<float>(below(128)) / 127.0F});
    }
    for (int left = below(4); left > 0; --left) {
      const auto status = static_cast<std::uint8_t>(below(4) == 0 ? 0x80 : 0x90);
      block.messages.push_back(
          {below(block.frames),
           {status, static_cast<std::uint8_t>(36 + below(8)), static_cast<std::uint8_t>(below(128))}});
    }
    std::sort(block.messages.begin(), block.messages.end(),
              [](const Message& a, const Message& b) { return a.frame < b.frame; });
  }
  return blocks;
}

/// The VST 2 plug-in, called as a host calls it.
class Plugin {
 public:
  explicit Plugin(float rate) : effect(createVstPlugin(nullptr)->getAeffect()) {
    dispatch(effGetProgram);  // Applies the first program.
    dispatch(effSetSampleRate, 0, 0, nullptr, rate);
    dispatch(effMainsChanged, 0, 1);
  }
  ~Plugin() { dispatch(effClose); }
  Plugin(const Plugin&) = delete;
  Plugin& operator=(const Plugin&) = delete;

  std::intptr_t dispatch(std::int32_t opcode, std::int32_t index = 0, std::intptr_t value = 0, void* data = nullptr,
                         float opt = 0.0F) const {
    return effect->dispatcher(effect, opcode, index, value, data, opt);
  }
  std::string text(std::int32_t opcode, std::int32_t index) const {
    std::array<char, 64> room{};
    dispatch(opcode, index, 0, room.data());
    return room.data();
  }
  Bytes chunk() const {
    void* data = nullptr;
    const auto size = dispatch(effGetChunk, 0, 0, &data);
    const auto* const bytes = static_cast<const std::uint8_t*>(data);
    return {bytes, bytes + size};
  }
  void render(const Block& block, Samples& left, Samples& right) const {
    for (const Write& write : block.writes) {
      effect->setParameter(effect, write.parameter, write.value);
    }
    for (const Message& message : block.messages) {
      VstMidiEvent event{};
      event.type = kVstMidiType;
      event.byteSize = sizeof(event);
      event.deltaFrames = message.frame;
      std::memcpy(event.midiData, message.bytes.data(), message.bytes.size());
      VstEvents events{};
      events.numEvents = 1;
      events.events[0] = reinterpret_cast<VstEvent*>(&event);
      dispatch(effProcessEvents, 0, 0, &events);
    }
    left.resize(static_cast<std::size_t>(block.frames));
    right.resize(left.size());
    std::array<float*, 2> outputs{left.data(), right.data()};
    effect->processReplacing(effect, nullptr, outputs.data(), block.frames);
  }

  tesh::bramel::vst::AEffect* const effect;
};

/// Renders a block as a wrapper does. Afterwards `midi` holds the messages for the host.
inline void render(SivrayProcessor& processor, const Block& block, juce::AudioBuffer<float>& buffer,
                   juce::MidiBuffer& midi) {
  for (const Write& write : block.writes) {
    if (write.parameter % 2 == 0) {
      processor.getParameters()[write.parameter]->setValue(write.value);
    } else {
      processor.setParameter(write.parameter, write.value);
    }
  }
  midi.clear();
  for (const Message& message : block.messages) {
    midi.addEvent(message.bytes.data(), 3, message.frame);
  }
  buffer.setSize(2, block.frames, false, false, true);
  processor.processBlock(buffer, midi);
}

inline Bytes stateOf(SivrayProcessor& processor) {
  juce::MemoryBlock state;
  processor.getStateInformation(state);
  const auto* const bytes = static_cast<const std::uint8_t*>(state.getData());
  return {bytes, bytes + state.getSize()};
}

inline std::vector<float> valuesOf(SivrayProcessor& processor) {
  std::vector<float> values;
  for (const auto* const parameter : processor.getParameters()) {
    values.push_back(parameter->getValue());
  }
  return values;
}

inline std::vector<float> valuesOf(const Plugin& plugin) {
  std::vector<float> values;
  for (std::int32_t index = 0; index < plugin.effect->numParams; ++index) {
    values.push_back(plugin.effect->getParameter(plugin.effect, index));
  }
  return values;
}

/// Records the calls to a host.
struct NotingHost final : juce::AudioProcessorListener {
  void audioProcessorParameterChanged(juce::AudioProcessor*, int index, float value) override {
    told.push_back("set " + line(index, value));
  }
  void audioProcessorChanged(juce::AudioProcessor*, const ChangeDetails& details) override {
    if (details.programChanged) {
      told.emplace_back("program");
    }
    if (details.nonParameterStateChanged) {
      told.emplace_back("state");
    }
  }
  void audioProcessorParameterChangeGestureBegin(juce::AudioProcessor* processor, int index) override {
    told.push_back("begin " + line(index, valueOf(*processor, index)));
  }
  void audioProcessorParameterChangeGestureEnd(juce::AudioProcessor* processor, int index) override {
    told.push_back("end " + line(index, valueOf(*processor, index)));
  }
  static float valueOf(juce::AudioProcessor& processor, int index) {
    return processor.getParameters()[index]->getValue();
  }
  static std::string line(int index, float value) {
    return std::to_string(index) + " " + juce::String(value, 2).toStdString();
  }
  std::vector<std::string> told;
};

// Parameters of KitFolder's instrument, by host index.
inline constexpr int kEffectType = 40;
inline constexpr int kMaster = 43;

class Client : public testing::Test {
 protected:
  const juce::ScopedJuceInitialiser_GUI juce;
  support::KitFolder folder;
};

}  // namespace client
