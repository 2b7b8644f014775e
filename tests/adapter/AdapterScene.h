// The plug-in in a host that records every call. It has its own folder of files, two parameters that the host sees, and
// one between them that it does not see.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "host/adapter/BramelVstAdapter.h"
#include "host/adapter/SivrayInstrumentProvider.h"
#include "host/shell/BramelInstrument.h"
#include "support/InstrumentFolder.h"
#include "support/QuietSides.h"

namespace adapter {

using namespace tesh::bramel::vst;
using Bytes = std::vector<std::uint8_t>;
using support::InstrumentFolder;

struct HostCall {
  std::int32_t opcode = 0;
  std::int32_t index = 0;
  std::intptr_t value = 0;
  float opt = 0.0F;
  Bytes payload;  ///< The data of vendor calls, and the message of a MIDI call.
  std::chrono::steady_clock::time_point at = std::chrono::steady_clock::now();
};

/// Thread-safe.
class FakeHost {
 public:
  FakeHost() { current = this; }
  ~FakeHost() { current = nullptr; }
  FakeHost(const FakeHost&) = delete;
  FakeHost& operator=(const FakeHost&) = delete;

  static std::intptr_t SIVRAY_VST_CALL callback(AEffect*, std::int32_t opcode, std::int32_t index, std::intptr_t value,
                                                void* ptr, float opt) {
    return current->answer({.opcode = opcode, .index = index, .value = value, .opt = opt, .payload = {}}, ptr);
  }

  std::size_t count(std::int32_t opcode) {
    const std::lock_guard lock(mutex);
    return static_cast<std::size_t>(
        std::count_if(calls.begin(), calls.end(), [opcode](const HostCall& call) { return call.opcode == opcode; }));
  }
  std::vector<HostCall> take() {
    const std::lock_guard lock(mutex);
    return std::exchange(calls, {});
  }

  std::string vendor;
  std::intptr_t knowsKeyLights = 1;
  std::intptr_t time = 0;  ///< Address of a VstTimeInfo.

 private:
  std::intptr_t answer(HostCall call, void* ptr) {
    const auto* const bytes = static_cast<const std::uint8_t*>(ptr);
    if (call.opcode == audioMasterVendorSpecific) {
      call.payload.assign(bytes, bytes + call.value);
    } else if (call.opcode == audioMasterProcessEvents) {
      const auto* const event = reinterpret_cast<const VstMidiEvent*>(static_cast<VstEvents*>(ptr)->events[0]);
      call.payload.assign(event->midiData, event->midiData + 4);
      call.index = event->deltaFrames;
    } else if (call.opcode == audioMasterGetVendorString) {
      std::memcpy(ptr, vendor.data(), vendor.size());  // Hosts omit the terminating zero.
    }
    const std::lock_guard lock(mutex);
    calls.push_back(std::move(call));
    switch (calls.back().opcode) {
      case audioMasterGetTime:
        return time;
      case audioMasterCanDo:
        return std::strcmp(static_cast<const char*>(ptr), "NIMKPIVendorSpecificCallbacks") == 0 ? knowsKeyLights : 0;
      default:
        return 1;
    }
  }

  static inline FakeHost* current = nullptr;
  std::mutex mutex;
  std::vector<HostCall> calls;
};

/// Records the MIDI messages that the shell has received, and counts its blocks.
struct NotingEditor final : support::QuietEditor {
  void releaseUpdates() override { ++blocks; }
  void midiReceived(const std::uint8_t* data, std::size_t size) override {
    // Recording is allowed to allocate.
    tesh::cofu::core::mayWait([&] { messages.emplace_back(data, data + size); });
  }
  std::vector<Bytes> messages;
  int blocks = 0;  ///< Blocks without frames count, too.
};

class Adapter : public testing::Test {
 protected:
  void load() {
    shell = std::dynamic_pointer_cast<BramelInstrument>(SivrayInstrumentProvider().createInstrument());
    shell->setUICallback(editor);
    plugin = std::make_unique<BramelVstAdapter>(FakeHost::callback, shell, nullptr);
    effect = plugin->getAeffect();
  }
  std::intptr_t dispatch(std::int32_t opcode, std::int32_t index = 0, std::intptr_t value = 0, void* ptr = nullptr,
                         float opt = 0.0F) const {
    return effect->dispatcher(effect, opcode, index, value, ptr, opt);
  }
  /// Returns the text that an opcode writes into a buffer filled with '#'.
  std::string text(std::int32_t opcode, std::int32_t index = 0, std::size_t room = 24) const {
    std::string buffer(room + 8, '#');
    dispatch(opcode, index, 0, buffer.data());
    EXPECT_EQ(buffer.substr(room), "########") << "written beyond the room of opcode " << opcode;
    return buffer.c_str();
  }
  void run(std::int32_t frames = 64) const {
    std::vector<float> samples(2 * static_cast<std::size_t>(frames));
    float* outputs[2] = {samples.data(), samples.data() + frames};
    effect->processReplacing(effect, nullptr, outputs, frames);
  }
  Bytes chunk() const {
    void* data = nullptr;
    const auto size = dispatch(effGetChunk, 0, 0, &data);
    const auto* const bytes = static_cast<const std::uint8_t*>(data);
    return {bytes, bytes + size};
  }

  InstrumentFolder folder;
  FakeHost host;
  std::shared_ptr<NotingEditor> editor = std::make_shared<NotingEditor>();
  std::shared_ptr<BramelInstrument> shell;
  std::unique_ptr<BramelVstAdapter> plugin;
  AEffect* effect = nullptr;
};

}  // namespace adapter
