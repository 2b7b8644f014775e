// A test engine whose sound depends on its frame number, and a host that plays it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "host/resample/CFsConverterWrapper.h"

namespace scene {

using namespace tesh::bramel::vst;

/// Plays noise or its input, and records every call.
class Engine : public CFsConvListener {
 public:
  void onProcess(float** inputs, std::span<float*> outputs, std::int32_t frames) override {
    note("process");
    tesh::cofu::core::mayWait([&] { blocks.push_back(frames); });
    lastOutputs = outputs.data();
    isSilent = true;
    for (std::int32_t i = 0; i < frames; ++i, ++frame) {
      for (std::size_t channel = 0; channel < 2; ++channel) {
        outputs[channel][i] = echoesInput ? inputs[channel][i] : sample() * (channel == 0 ? 1.0F : -0.5F);
        isSilent = isSilent && outputs[channel][i] == 0.0F;
      }
    }
  }

  /// Reports no silence for every second block.
  bool gaveSilence() const override { return isSilent && blocks.size() % 2 == 0; }

  void onSampleRate(float ratio, double) override { note("rate " + number(ratio)); }
  void onBlockSize(std::int32_t size) override { note("block " + std::to_string(size)); }
  void onMaxBlockSize(std::int32_t size) override { note("longest " + std::to_string(size)); }
  void onBeginBlock() override { note("begin"); }
  void onEndBlock() override { note("end"); }
  void onMidi(std::uint32_t packed, std::int32_t at) override {
    tesh::cofu::core::mayWait([&] { messages.emplace_back(packed, at); });
  }

  bool echoesInput = false;
  std::vector<std::string> calls;
  std::vector<std::int32_t> blocks;
  std::vector<std::pair<std::uint32_t, std::int32_t>> messages;
  float** lastOutputs = nullptr;

 private:
  /// Recording may allocate, because it is not part of the code under test.
  void note(const std::string& call) {
    tesh::cofu::core::mayWait([&] { calls.push_back(call); });
  }

  static std::string number(float x) { return std::to_string(x).substr(0, 3); }

  /// Returns noise that depends only on the frame number.
  float sample() const { return static_cast<float>(((frame + 1) * 2654435761U) >> 8) / 16777216.0F - 0.5F; }

  std::uint32_t frame = 0;
  bool isSilent = false;
};

/// Plays `frames` frames without input, in blocks of `nextBlock()` frames, and returns the left channel.
template <typename NextBlock>
std::vector<float> play(CFsConverterWrapper& converter, std::size_t frames, NextBlock nextBlock) {
  std::vector<float> left(frames);
  std::vector<float> right(frames);
  for (std::size_t done = 0; done < frames;) {
    const std::size_t block = std::min<std::size_t>(nextBlock(), frames - done);
    std::array<float*, 2> outputs{left.data() + done, right.data() + done};
    converter.process(nullptr, outputs.data(), static_cast<std::int32_t>(block));
    done += block;
  }
  return left;
}

/// A host's event list of any length.
class Events {
 public:
  void add(std::int32_t delta, std::array<std::uint8_t, 3> bytes, std::int32_t type = kVstMidiType) {
    VstMidiEvent event{};
    event.type = type;
    event.byteSize = sizeof event;
    event.deltaFrames = delta;
    std::copy(bytes.begin(), bytes.end(), event.midiData);
    events.push_back(event);
  }

  void addNull() { nulls += 1; }

  const VstEvents& record() {
    words.assign(sizeof(VstEvents) / sizeof(std::intptr_t) + events.size() + nulls, 0);
    auto* const head = reinterpret_cast<VstEvents*>(words.data());
    head->numEvents = static_cast<std::int32_t>(events.size() + nulls);
    VstEvent** const list = head->events;
    for (std::size_t i = 0; i < events.size(); ++i) {
      list[i] = reinterpret_cast<VstEvent*>(&events[i]);
    }
    return *head;
  }

 private:
  std::vector<VstMidiEvent> events;
  std::size_t nulls = 0;
  std::vector<std::intptr_t> words;
};

}  // namespace scene
