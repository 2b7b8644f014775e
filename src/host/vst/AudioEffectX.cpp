// The opcodes from 25 on, and calls to the host whose answers need checking.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/vst/AudioEffectX.h"

namespace tesh::bramel::vst {
namespace {

/// An address that a host passes as a number. Null for numbers too small to be an address, as passed by a host that
/// tries every opcode or that answers every call with the same number.
template <class Record>
Record* addressInNumber(std::intptr_t value) {
  constexpr std::intptr_t kLowestAddress = 65536;  // Linux and Windows map nothing below.
  constexpr auto kAlignment = static_cast<std::intptr_t>(alignof(Record));
  if (value < kLowestAddress || value % kAlignment != 0) {
    return nullptr;
  }
  return reinterpret_cast<Record*>(value);  // NOLINT(performance-no-int-to-ptr): the interface passes it so.
}

/// The modifier keys as a byte, which the interface passes as a float.
std::uint8_t byteInFloat(float value) {
  return value >= 0.0F && value < 256.0F ? static_cast<std::uint8_t>(value) : std::uint8_t{0};
}

}  // namespace

std::intptr_t AudioEffectX::dispatcher(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr,
                                       float opt) {
  char* const text = static_cast<char*>(ptr);
  const std::int32_t number = narrowToInt32(value);
  switch (opcode) {
    case effProcessEvents:
      return processEvents(static_cast<VstEvents*>(ptr));
    case effCanBeAutomated:
      return canParameterBeAutomated(index) ? 1 : 0;
    case effString2Parameter:
      return string2parameter(index, text) ? 1 : 0;
    case effGetProgramNameIndexed:
      return getProgramNameIndexed(number, index, text) ? 1 : 0;
    case effGetInputProperties:
      return getInputProperties(index, ptr) ? 1 : 0;
    case effGetOutputProperties:
      return getOutputProperties(index, ptr) ? 1 : 0;
    case effGetPlugCategory:
      return getPlugCategory();
    case effOfflineNotify:
      return offlineNotify(ptr, number, index != 0) ? 1 : 0;
    case effOfflinePrepare:
      return offlinePrepare(ptr, number) ? 1 : 0;
    case effOfflineRun:
      return offlineRun(ptr, number) ? 1 : 0;
    case effProcessVarIo:
      return processVariableIo(ptr) ? 1 : 0;
    case effSetSpeakerArrangement:
      return setSpeakerArrangement(addressInNumber<void*>(value), ptr) ? 1 : 0;
    case effSetBypass:
      return setBypass(value != 0) ? 1 : 0;
    case effGetEffectName:
      return getEffectName(text) ? 1 : 0;
    case effGetVendorString:
      return getVendorString(text) ? 1 : 0;
    case effGetProductString:
      return getProductString(text) ? 1 : 0;
    case effGetVendorVersion:
      return getVendorVersion();
    case effVendorSpecific:
      return vendorSpecific(index, value, ptr, opt);
    case effCanDo:
      return canDo(text);
    case effGetTailSize:
      return getGetTailSize();
    case effGetParameterProperties:
      return getParameterProperties(index, ptr) ? 1 : 0;
    case effGetVstVersion:
      return getVstVersion();
    case effEditKeyDown:
      return keyEvent(true, index, value, opt);
    case effEditKeyUp:
      return keyEvent(false, index, value, opt);
    case effSetEditKnobMode:
      return editor != nullptr && editor->setKnobMode(number) ? 1 : 0;
    case effGetMidiProgramName:
      return getMidiProgramName(index, ptr);
    case effGetCurrentMidiProgram:
      return getCurrentMidiProgram(index, ptr);
    case effGetMidiProgramCategory:
      return getMidiProgramCategory(index, ptr);
    case effHasMidiProgramsChanged:
      return hasMidiProgramsChanged(index) ? 1 : 0;
    case effGetMidiKeyName:
      return getMidiKeyName(index, ptr) ? 1 : 0;
    case effBeginSetProgram:
      return beginSetProgram() ? 1 : 0;
    case effEndSetProgram:
      return endSetProgram() ? 1 : 0;
    case effGetSpeakerArrangement:
      return getSpeakerArrangement(addressInNumber<void*>(value), static_cast<void**>(ptr)) ? 1 : 0;
    case effShellGetNextPlugin:
      return getNextShellPlugin(text);
    case effStartProcess:
      return startProcess();
    case effStopProcess:
      return stopProcess();
    case effSetTotalSampleToProcess:
      return setTotalSampleToProcess(number);
    case effSetPanLaw:
      return setPanLaw(number, opt) ? 1 : 0;
    case effBeginLoadBank:
      return beginLoadBank(ptr);
    case effBeginLoadProgram:
      return beginLoadProgram(ptr);
    case effSetProcessPrecision:
      return setProcessPrecision(number) ? 1 : 0;
    case effGetNumMidiInputChannels:
      return getNumMidiInputChannels();
    case effGetNumMidiOutputChannels:
      return getNumMidiOutputChannels();
    default:
      return AudioEffect::dispatcher(opcode, index, value, ptr, opt);
  }
}

bool AudioEffectX::getSpeakerArrangement(void** input, void** output) {
  for (void** const arrangement : {input, output}) {
    if (arrangement != nullptr) {
      *arrangement = nullptr;
    }
  }
  return false;
}

std::intptr_t AudioEffectX::keyEvent(bool down, std::int32_t character, std::intptr_t virtualKey, float modifier) {
  if (editor == nullptr) {
    return 0;
  }
  VstKeyCode key{character, static_cast<std::uint8_t>(virtualKey & 0xFF), byteInFloat(modifier)};
  const bool used = down ? editor->onKeyDown(key) : editor->onKeyUp(key);
  return used ? 1 : 0;
}

VstTimeInfo* AudioEffectX::getTimeInfo(std::int32_t filter) {
  return addressInNumber<VstTimeInfo>(callHost(audioMasterGetTime, 0, filter));
}

double AudioEffectX::updateSampleRate() {
  const std::intptr_t rate = callHost(audioMasterGetSampleRate);
  if (rate > 0) {
    sampleRate = static_cast<float>(rate);
  }
  return static_cast<double>(sampleRate);
}

std::int32_t AudioEffectX::updateBlockSize() {
  const std::int32_t frames = narrowToInt32(callHost(audioMasterGetBlockSize));
  if (frames > 0) {
    blockSize = frames;
  }
  return blockSize;
}

std::int32_t AudioEffectX::canHostDo(const char* text) {
  // The interface takes a non-const text, which a host only reads.
  return narrowToInt32(callHost(audioMasterCanDo, 0, 0, const_cast<char*>(text)));
}

void* AudioEffectX::getDirectory() {
  return reinterpret_cast<void*>(callHost(audioMasterGetDirectory));  // NOLINT(performance-no-int-to-ptr): as above.
}

}  // namespace tesh::bramel::vst
