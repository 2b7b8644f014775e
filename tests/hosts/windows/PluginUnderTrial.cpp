// Loads the library, answers its calls to the host, and renders.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginUnderTrial.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include "TrialNotes.h"
#include "host/vst/VstOpcodes.h"
#ifdef _WIN32
#include "platform/WideText.h"
#include "platform/WindowsApi.h"
#else
#include <dlfcn.h>
#endif

namespace sivray::trial {

namespace {

using namespace tesh::bramel::vst;

constexpr std::int32_t kInterfaceVersion = 2400;

using Entry = AEffect*(SIVRAY_VST_CALL*)(AudioMasterCallback);

float rate = 44100.0F;
VstTimeInfo timeInfo{};
std::atomic<int> moves = 0;

#ifdef _WIN32
void* loadLibrary(const std::string& path) { return LoadLibraryW(tesh::bramel::platform::toWide(path).c_str()); }
void unloadLibrary(void* library) { FreeLibrary(static_cast<HMODULE>(library)); }
Entry entryOf(void* library) {
  return reinterpret_cast<Entry>(
      reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), "VSTPluginMain")));
}
#else
void* loadLibrary(const std::string& path) { return dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL); }
void unloadLibrary(void* library) { dlclose(library); }
Entry entryOf(void* library) { return reinterpret_cast<Entry>(dlsym(library, "VSTPluginMain")); }
#endif

}  // namespace

PluginUnderTrial::PluginUnderTrial(const std::string& path) : library(loadLibrary(path)) {
  if (Entry entry = library == nullptr ? nullptr : entryOf(library)) {
    effect = entry(&answer);
  }
  if (effect != nullptr) {
    call(effOpen);
  }
}

PluginUnderTrial::~PluginUnderTrial() {
  closeInstance();
  if (library != nullptr) {
    unloadLibrary(library);
  }
}

void PluginUnderTrial::closeInstance() {
  if (effect != nullptr) {
    call(effClose);
    effect = nullptr;
  }
}

std::intptr_t PluginUnderTrial::call(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr,
                                     float opt) {
  return effect->dispatcher(effect, opcode, index, value, ptr, opt);
}

void PluginUnderTrial::openEditor(void* window) { call(effEditOpen, 0, 0, window); }

void PluginUnderTrial::closeEditor() { call(effEditClose); }

bool PluginUnderTrial::setScale(float scale) {
  return call(effVendorSpecific, fourCharacters('P', 'r', 'e', 'S'), fourCharacters('A', 'e', 'C', 's'), nullptr,
              scale) == 1;
}

void PluginUnderTrial::setState(std::vector<char> bytes) {
  call(effSetChunk, 0, static_cast<std::intptr_t>(bytes.size()), bytes.data());
}

std::vector<float> PluginUnderTrial::render(float sampleRate, bool isMoving) {
  rate = sampleRate;
  call(effSetSampleRate, 0, 0, nullptr, rate);
  call(effSetBlockSize, 0, kBlock);
  call(effMainsChanged, 0, 1);
  std::vector<float> samples;
  std::array<std::array<float, kBlock>, 2> sides{};
  for (int block = 0; block < blocksAt(rate); ++block) {
    VstMidiEvent event{kVstMidiType, sizeof(VstMidiEvent), 0, 0, 0, 0, {}, 0, 0, 0, 0};
    VstEvents events{1, 0, {reinterpret_cast<VstEvent*>(&event), nullptr}};
    if (const auto note = noteOfBlock(block)) {
      event.deltaFrames = note->frame;
      std::copy(note->bytes.begin(), note->bytes.end(), event.midiData);
      call(effProcessEvents, 0, 0, &events);
    }
    if (isMoving) {
      effect->setParameter(effect, block % effect->numParams, static_cast<float>(block % 11) / 10.0F);
    }
    std::array<float*, 2> outputs{sides[0].data(), sides[1].data()};
    effect->processReplacing(effect, nullptr, outputs.data(), kBlock);
    timeInfo.samplePos += kBlock;
    appendInterleaved(sides, samples);
  }
  call(effMainsChanged, 0, 0);
  return samples;
}

int PluginUnderTrial::takeMoves() { return moves.exchange(0); }

bool PluginUnderTrial::isLoaded(const std::string& path) {
#ifdef _WIN32
  return GetModuleHandleW(tesh::bramel::platform::toWide(path).c_str()) != nullptr;
#else
  void* const found = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
  if (found != nullptr) {
    dlclose(found);
  }
  return found != nullptr;
#endif
}

std::intptr_t SIVRAY_VST_CALL PluginUnderTrial::answer(AEffect* /*effect*/, std::int32_t opcode, std::int32_t /*index*/,
                                                       std::intptr_t /*value*/, void* /*ptr*/, float /*opt*/) {
  switch (opcode) {
    case audioMasterVersion:
      return kInterfaceVersion;
    case audioMasterGetSampleRate:
      return static_cast<std::intptr_t>(rate);
    case audioMasterGetTime:
      timeInfo.sampleRate = static_cast<double>(rate);
      timeInfo.tempo = kTempo;
      timeInfo.flags = kVstTempoValid | kVstTransportPlaying;
      return reinterpret_cast<std::intptr_t>(&timeInfo);
    case audioMasterAutomate:
      ++moves;
      return 1;
    default:
      return 0;
  }
}

}  // namespace sivray::trial
