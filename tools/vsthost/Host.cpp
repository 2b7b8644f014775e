// The host's side of the plug-in interface: calls into the plug-in, and the callback for the plug-in's calls.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "vsthost/Host.h"

#include <algorithm>
#include <cstring>

namespace sivray::vsthost {
namespace {

using namespace tesh::bramel::vst;

constexpr std::int32_t kInterfaceVersion = 2400;

/// The host that is opening an instance: until the entry returns, the plug-in's calls carry no record by which to find
/// it.
thread_local Host* opening = nullptr;

template <std::size_t Size>
std::string textOf(const std::array<char, Size>& buffer) {
  return {buffer.data(), strnlen(buffer.data(), Size)};
}

}  // namespace

Host::Host(const PluginLibrary& library, HostManners manners) : ways(std::move(manners)) {
  opening = this;
  plugin = library.entry()(&Host::audioMaster);
  opening = nullptr;
  if (plugin == nullptr) {
    throw HostError("the plug-in '" + library.path() + "' gives no instance: is its content beside it?");
  }
  plugin->user = this;
  call(effOpen);
}

Host::~Host() {
  stop();
  call(effClose);
}

std::intptr_t Host::call(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr, float opt) {
  return plugin->dispatcher(plugin, opcode, index, value, ptr, opt);
}

void Host::start(float sampleRate, int longestBlock) {
  block = longestBlock;
  setSampleRate(sampleRate);
  call(effSetBlockSize, 0, longestBlock);
  call(effMainsChanged, 0, 1);
  call(effStartProcess);
  running = true;
}

void Host::stop() {
  if (running) {
    call(effStopProcess);
    call(effMainsChanged, 0, 0);
    running = false;
  }
}

void Host::setSampleRate(float sampleRate) {
  rate = sampleRate;
  call(effSetSampleRate, 0, 0, nullptr, sampleRate);
}

void Host::restart() {
  call(effMainsChanged, 0, 0);
  call(effMainsChanged, 0, 1);
}

std::string Host::parameterName(int index) {
  std::array<char, 256> text{};
  call(effGetParamName, index, 0, text.data());
  return textOf(text);
}

std::string Host::parameterText(int index) {
  std::array<char, 256> text{};
  call(effGetParamDisplay, index, 0, text.data());
  return textOf(text);
}

std::vector<std::uint8_t> Host::chunk() {
  void* data = nullptr;
  const std::intptr_t size = call(effGetChunk, 0, 0, &data);
  const auto* bytes = static_cast<const std::uint8_t*>(data);
  return bytes == nullptr || size <= 0 ? std::vector<std::uint8_t>() : std::vector<std::uint8_t>(bytes, bytes + size);
}

void Host::setChunk(std::span<const std::uint8_t> bytes) {
  // The interface takes a non-const pointer, hence the copy.
  std::vector<std::uint8_t> copy(bytes.begin(), bytes.end());
  call(effSetChunk, 0, static_cast<std::intptr_t>(copy.size()), copy.data());
}

std::string Host::programName(int index) {
  std::array<char, 256> text{};
  call(effGetProgramNameIndexed, index, 0, text.data());
  return textOf(text);
}

void Host::selectProgram(int index) { call(effSetProgram, 0, index); }

void Host::openEditor(void* window) { call(effEditOpen, 0, 0, window); }

void Host::closeEditor() { call(effEditClose); }

hosting::WindowSize Host::editorSize() {
  ERect* rectangle = nullptr;
  call(effEditGetRect, 0, 0, &rectangle);
  return rectangle == nullptr ? hosting::WindowSize{} : hosting::WindowSize{rectangle->right, rectangle->bottom};
}

bool Host::setEditorScale(float scale) {
  constexpr std::int32_t kVendor = 0x50726553;         // 'PreS'
  constexpr std::intptr_t kContentScale = 0x41654373;  // 'AeCs'
  return call(effVendorSpecific, kVendor, kContentScale, nullptr, scale) == 1;
}

void Host::settleEditor() {
  // The plug-in waits for its message thread to find out whether a text field takes a key.
  call(effEditKeyUp);
}

void Host::process(float* left, float* right, int frames) {
  if (!events.isEmpty()) {
    call(effProcessEvents, 0, 0, events.head());
  }
  std::array<float*, 2> outputs{left, right};
  plugin->processReplacing(plugin, nullptr, outputs.data(), frames);
  events.clear();
  wasPlaying = playing;
  time.samplePos += frames;
  time.ppqPos += frames / static_cast<double>(rate) * tempo / 60.0;
}

std::intptr_t Host::audioMaster(AEffect* effect, std::int32_t opcode, std::int32_t index, std::intptr_t value,
                                void* ptr, float opt) {
  if (effect != nullptr && effect->user != nullptr) {
    return static_cast<Host*>(effect->user)->answer(opcode, index, value, ptr, opt);
  }
  if (opening == nullptr) {
    return opcode == audioMasterVersion ? kInterfaceVersion : 0;
  }
  if (opcode != audioMasterVersion && opcode != audioMasterGetVendorString) {
    ++opening->callsBeforeRecord;
  }
  return opening->answer(opcode, index, value, ptr, opt);
}

std::intptr_t Host::answer(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr, float opt) {
  if (ways.answersNull) {
    return 0;
  }
  if (ways.answersWild) {
    if (ptr != nullptr && (opcode == audioMasterGetVendorString || opcode == audioMasterGetProductString)) {
      std::memset(ptr, 0xFF, kVendorTextBytes);
    }
    return opcode == audioMasterGetTime ? 0 : -1;
  }
  switch (opcode) {
    case audioMasterVersion:
      return kInterfaceVersion;
    case audioMasterGetTime:
      time.sampleRate = static_cast<double>(rate);
      time.tempo = tempo;
      time.flags = kVstTempoValid | kVstPpqPosValid | (playing ? kVstTransportPlaying : 0) |
                   (playing != wasPlaying ? kVstTransportChanged : 0);
      return ways.givesTime ? reinterpret_cast<std::intptr_t>(&time) : 0;
    case audioMasterProcessEvents:
      recordEvents(static_cast<const VstEvents*>(ptr));
      return 1;
    case audioMasterGetSampleRate:
      return static_cast<std::intptr_t>(rate);
    case audioMasterGetBlockSize:
      return block;
    case audioMasterGetVendorString:
    case audioMasterGetProductString:
      if (ptr != nullptr) {
        const std::size_t length = std::min(ways.vendor.size(), kVendorTextBytes - 1);
        std::memcpy(ptr, ways.vendor.c_str(), length);
        static_cast<char*>(ptr)[length] = '\0';
      }
      return 1;
    default:
      return recordCall(opcode, index, value, opt) ? 1 : 0;
  }
}

bool Host::recordCall(std::int32_t opcode, std::int32_t index, std::intptr_t value, float opt) {
  using Kind = hosting::HostCallKind;
  switch (opcode) {
    case audioMasterAutomate:
      record({Kind::automate, index, opt, {}});
      return true;
    case audioMasterBeginEdit:
      record({Kind::beginEdit, index, 0.0F, {}});
      return true;
    case audioMasterEndEdit:
      record({Kind::endEdit, index, 0.0F, {}});
      return true;
    case audioMasterUpdateDisplay:
      record({Kind::updateDisplay, 0, 0.0F, {}});
      return true;
    case audioMasterSizeWindow:
      record({Kind::sizeWindow, 0, 0.0F, {index, static_cast<int>(value)}});
      return true;
    default:
      return false;
  }
}

void Host::recordEvents(const VstEvents* list) {
  for (std::int32_t i = 0; list != nullptr && i < list->numEvents; ++i) {
    if (list->events[i]->type == kVstMidiType) {
      const auto& bytes = reinterpret_cast<const VstMidiEvent*>(list->events[i])->midiData;
      recordMidi({reinterpret_cast<const std::uint8_t*>(bytes), std::size(bytes)});
    }
  }
}

}  // namespace sivray::vsthost
