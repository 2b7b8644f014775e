// Fuzzes the calls of a host, in any order and with any numbers: answers must stay within the buffers of the host, and
// all audio must be finite. Each call is a kind, an opcode, an index, a value and a payload.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include "FuzzInput.h"
#include "host/adapter/BramelVstAdapter.h"
#include "host/adapter/SivrayInstrumentProvider.h"
#include "host/shell/BramelInstrument.h"
#include "support/InstrumentFolder.h"

namespace {

using namespace tesh::bramel::vst;
using fuzz::Input;

/// The plug-in. It exists for all inputs, but each input starts from the same state.
class Host {
 public:
  Host() {
    void* data = nullptr;
    const auto size = dispatch(effGetChunk, 0, 0, &data, 0.0F);
    start.assign(static_cast<std::uint8_t*>(data), static_cast<std::uint8_t*>(data) + size);
  }

  void restart() {
    time = {};
    dispatch(effMainsChanged, 0, 0, nullptr, 0.0F);
    dispatch(effSetSampleRate, 0, 0, nullptr, 44100.0F);
    for (std::int32_t index = 0; index < effect->numParams; ++index) {
      effect->setParameter(effect, index, 0.5F);
    }
    if (stateWasSet) {  // Loading waves takes longer than everything else.
      dispatch(effSetChunk, 0, static_cast<std::intptr_t>(start.size()), start.data(), 0.0F);
      stateWasSet = false;
    }
  }

  void call(Input& input) {
    switch (input.number<std::uint8_t>() % 6) {
      case 0:
        play(input.number<std::uint16_t>() % 2200);
        break;
      case 1: {
        const auto index = input.number<std::int32_t>();
        effect->setParameter(effect, index, input.number<float>());
        effect->getParameter(effect, index);
        break;
      }
      case 2:
        sendEvents(input);
        break;
      case 3:
        time = input.number<VstTimeInfo>();
        break;
      case 4:
        setChunk(input);
        break;
      default:
        anyOpcode(input);
    }
  }

 private:
  static std::intptr_t SIVRAY_VST_CALL answer(AEffect*, std::int32_t opcode, std::int32_t, std::intptr_t, void*,
                                              float) {
    return opcode == audioMasterGetTime ? reinterpret_cast<std::intptr_t>(&time) : 0;
  }

  std::intptr_t dispatch(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr, float opt) const {
    return effect->dispatcher(effect, opcode, index, value, ptr, opt);
  }

  void play(std::int32_t frames) const {
    const auto room = static_cast<std::size_t>(frames);
    std::vector<float> left(room);
    std::vector<float> right(room);
    std::array<float*, 2> outputs{left.data(), right.data()};
    effect->processReplacing(effect, nullptr, outputs.data(), frames);
    const auto isFinite = [](float sample) { return std::isfinite(sample); };
    if (!std::all_of(left.begin(), left.end(), isFinite) || !std::all_of(right.begin(), right.end(), isFinite)) {
      std::abort();
    }
  }

  void sendEvents(Input& input) const {
    std::array<std::array<std::uint8_t, sizeof(VstMidiSysexEvent)>, 2> rooms{};
    VstEvents events{};
    events.numEvents = std::min(input.number<std::int32_t>(), 2);
    for (std::size_t i = 0; i < rooms.size(); ++i) {
      const auto bytes = input.bytes(sizeof(VstMidiEvent));
      std::copy(bytes.begin(), bytes.end(), rooms[i].begin());
      events.events[i] = bytes.empty() ? nullptr : reinterpret_cast<VstEvent*>(rooms[i].data());
    }
    dispatch(effProcessEvents, 0, 0, &events, 0.0F);
  }

  void setChunk(Input& input) {
    stateWasSet = true;
    // A damaged copy of a valid state gets further into the code than random bytes.
    std::vector<std::uint8_t> state = start;
    state.resize(std::min<std::size_t>(state.size(), input.number<std::uint32_t>()));
    const std::size_t offset = state.empty() ? 0 : input.number<std::uint32_t>() % state.size();
    const auto damage = input.bytes(std::min<std::size_t>(64, state.size() - offset));
    std::copy(damage.begin(), damage.end(), state.begin() + static_cast<std::ptrdiff_t>(offset));
    dispatch(effSetChunk, 0, static_cast<std::intptr_t>(state.size()), state.data(), 0.0F);
  }

  void anyOpcode(Input& input) const {
    const auto opcode = input.number<std::int16_t>();
    const auto index = input.number<std::int32_t>();
    const auto value = static_cast<std::intptr_t>(input.number<std::int32_t>());
    const auto opt = input.number<float>();
    // Skipped, because they read as many bytes as a number tells, close the plug-in, or write to an address.
    if (opcode == effClose || opcode == effProcessEvents || opcode == effSetChunk ||
        opcode == effGetSpeakerArrangement) {
      return;
    }
    if (opcode == effMainsChanged) {
      value != 0 ? instrument->resume() : instrument->suspend();  // Without the 300 ms wait of a resume.
      return;
    }
    constexpr std::size_t kRoom = 64;
    auto room = std::make_unique<std::array<char, kRoom>>();
    const auto text = input.bytes(kRoom - 1);
    std::copy(text.begin(), text.end(), room->begin());
    room->back() = '\0';
    dispatch(opcode, index, value, text.empty() ? nullptr : room->data(), opt);
  }

  static inline VstTimeInfo time;
  support::InstrumentFolder folder;
  std::shared_ptr<BramelInstrument> instrument =
      std::dynamic_pointer_cast<BramelInstrument>(SivrayInstrumentProvider().createInstrument());
  BramelVstAdapter plugin{answer, instrument, nullptr};
  AEffect* effect = plugin.getAeffect();
  std::vector<std::uint8_t> start;
  bool stateWasSet = false;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Host host;
  host.restart();
  Input input(data, size);
  while (!input.isEmpty()) {
    host.call(input);
  }
  return 0;
}
