// The base class of a plug-in that receives MIDI: the opcodes from 25 on, and the newer calls to the host.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/RealTime.h"
#include "host/vst/AudioEffect.h"

namespace tesh::bramel::vst {

/// Records of the interface that no plug-in here uses are passed as `void*`.
class AudioEffectX : public AudioEffect {
 public:
  using AudioEffect::AudioEffect;

  /// Handles the opcodes from 25 on and passes all others to the base class.
  std::intptr_t dispatcher(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr, float opt) override;

  // The host's questions. False and 0 mean: not supported.
  virtual std::int32_t processEvents(VstEvents* /*events*/) SIVRAY_NONBLOCKING { return 0; }
  virtual bool canParameterBeAutomated(std::int32_t /*index*/) { return true; }
  virtual bool string2parameter(std::int32_t /*index*/, char* /*text*/) { return false; }
  virtual bool getProgramNameIndexed(std::int32_t /*category*/, std::int32_t /*index*/, char* /*text*/) {
    return false;
  }
  virtual bool getInputProperties(std::int32_t /*index*/, void* /*properties*/) { return false; }
  virtual bool getOutputProperties(std::int32_t /*index*/, void* /*properties*/) { return false; }
  virtual std::int32_t getPlugCategory() {
    return (cEffect.flags & effFlagsIsSynth) != 0 ? kPlugCategSynth : kPlugCategUnknown;
  }
  virtual bool offlineNotify(void* /*file*/, std::int32_t /*count*/, bool /*start*/) { return false; }
  virtual bool offlinePrepare(void* /*tasks*/, std::int32_t /*count*/) { return false; }
  virtual bool offlineRun(void* /*tasks*/, std::int32_t /*count*/) { return false; }
  virtual bool processVariableIo(void* /*io*/) { return false; }
  virtual bool setSpeakerArrangement(void* /*input*/, void* /*output*/) { return false; }

  /// Sets both to null if speaker arrangements are not supported.
  virtual bool getSpeakerArrangement(void** input, void** output);
  virtual bool setBypass(bool /*on*/) { return false; }

  /// `text` has kEffectNameBytes, kVendorTextBytes and kVendorTextBytes.
  virtual bool getEffectName(char* /*text*/) { return false; }
  virtual bool getVendorString(char* /*text*/) { return false; }
  virtual bool getProductString(char* /*text*/) { return false; }
  virtual std::int32_t getVendorVersion() { return 0; }
  virtual std::intptr_t vendorSpecific(std::int32_t /*index*/, std::intptr_t /*value*/, void* /*ptr*/, float /*opt*/) {
    return 0;
  }

  /// 1 for yes, -1 for no, 0 for unknown.
  virtual std::int32_t canDo(char* /*text*/) { return 0; }
  virtual std::int32_t getGetTailSize() { return 0; }
  virtual bool getParameterProperties(std::int32_t /*index*/, void* /*properties*/) { return false; }
  virtual std::int32_t getVstVersion() { return kVstVersion; }
  virtual std::int32_t getMidiProgramName(std::int32_t /*channel*/, void* /*name*/) { return 0; }
  virtual std::int32_t getCurrentMidiProgram(std::int32_t /*channel*/, void* /*program*/) { return -1; }
  virtual std::int32_t getMidiProgramCategory(std::int32_t /*channel*/, void* /*category*/) { return 0; }
  virtual bool hasMidiProgramsChanged(std::int32_t /*channel*/) { return false; }
  virtual bool getMidiKeyName(std::int32_t /*channel*/, void* /*name*/) { return false; }
  virtual bool beginSetProgram() { return false; }
  virtual bool endSetProgram() { return false; }
  virtual std::int32_t getNextShellPlugin(char* /*name*/) { return 0; }
  virtual std::int32_t startProcess() { return 0; }
  virtual std::int32_t stopProcess() { return 0; }
  virtual std::int32_t setTotalSampleToProcess(std::int32_t frames) { return frames; }
  virtual bool setPanLaw(std::int32_t /*type*/, float /*value*/) { return false; }
  virtual std::int32_t beginLoadBank(void* /*info*/) { return 0; }
  virtual std::int32_t beginLoadProgram(void* /*info*/) { return 0; }
  virtual bool setProcessPrecision(std::int32_t /*precision*/) { return false; }
  virtual std::int32_t getNumMidiInputChannels() { return 0; }
  virtual std::int32_t getNumMidiOutputChannels() { return 0; }

  // Properties of the plug-in that the host reads.
  virtual void isSynth(bool state) { setFlag(effFlagsIsSynth, state); }
  virtual void noTail(bool state) { setFlag(effFlagsNoSoundInStop, state); }
  virtual void wantAsyncOperation(bool state) { setFlag(effFlagsExtIsAsync, state); }   ///< Deprecated.
  virtual void hasExternalBuffer(bool state) { setFlag(effFlagsExtHasBuffer, state); }  ///< Deprecated.

  // Questions to the host. Null, false or 0 if there is no host or no answer.

  /// The host's transport. Valid until the end of the block. `filter` holds the VstTimeInfoFlags that are wanted. Audio
  /// thread.
  virtual VstTimeInfo* getTimeInfo(std::int32_t filter);
  virtual bool sendVstEventsToHost(VstEvents* events) { return callHost(audioMasterProcessEvents, 0, 0, events) == 1; }
  virtual bool ioChanged() { return callHost(audioMasterIOChanged) != 0; }
  virtual bool sizeWindow(std::int32_t width, std::int32_t height) {
    return callHost(audioMasterSizeWindow, width, height) != 0;
  }
  virtual double updateSampleRate();
  virtual std::int32_t updateBlockSize();
  virtual std::int32_t getInputLatency() { return narrowToInt32(callHost(audioMasterGetInputLatency)); }
  virtual std::int32_t getOutputLatency() { return narrowToInt32(callHost(audioMasterGetOutputLatency)); }
  virtual std::int32_t getCurrentProcessLevel() { return narrowToInt32(callHost(audioMasterGetCurrentProcessLevel)); }
  virtual std::int32_t getAutomationState() { return narrowToInt32(callHost(audioMasterGetAutomationState)); }
  virtual bool offlineStart(void* files, std::int32_t count, std::int32_t newCount) {
    return callHost(audioMasterOfflineStart, newCount, count, files) != 0;
  }
  virtual bool offlineRead(void* task, std::int32_t option, bool readSource) {
    return callHost(audioMasterOfflineRead, readSource ? 1 : 0, option, task) != 0;
  }
  virtual bool offlineWrite(void* task, std::int32_t option) {
    return callHost(audioMasterOfflineWrite, 0, option, task) != 0;
  }
  virtual std::int32_t offlineGetCurrentPass() { return narrowToInt32(callHost(audioMasterOfflineGetCurrentPass)); }
  virtual std::int32_t offlineGetCurrentMetaPass() {
    return narrowToInt32(callHost(audioMasterOfflineGetCurrentMetaPass));
  }

  /// `text` should have room for more than kVendorTextBytes, because some hosts write more.
  virtual bool getHostVendorString(char* text) { return callHost(audioMasterGetVendorString, 0, 0, text) != 0; }
  virtual bool getHostProductString(char* text) { return callHost(audioMasterGetProductString, 0, 0, text) != 0; }
  virtual std::int32_t getHostVendorVersion() { return narrowToInt32(callHost(audioMasterGetVendorVersion)); }
  virtual std::intptr_t hostVendorSpecific(std::int32_t index, std::intptr_t value, void* ptr, float opt) {
    return callHost(audioMasterVendorSpecific, index, value, ptr, opt);
  }

  /// Nonzero for yes.
  virtual std::int32_t canHostDo(const char* text);
  virtual std::int32_t getHostLanguage() { return narrowToInt32(callHost(audioMasterGetLanguage)); }
  virtual void* getDirectory();
  virtual bool updateDisplay() { return callHost(audioMasterUpdateDisplay) != 0; }

  /// Tell the host that the user begins and ends a gesture on a parameter, so that it records one movement.
  virtual bool beginEdit(std::int32_t index) { return callHost(audioMasterBeginEdit, index) != 0; }
  virtual bool endEdit(std::int32_t index) { return callHost(audioMasterEndEdit, index) != 0; }
  virtual bool openFileSelector(void* selection) { return callHost(audioMasterOpenFileSelector, 0, 0, selection) != 0; }
  virtual bool closeFileSelector(void* selection) {
    return callHost(audioMasterCloseFileSelector, 0, 0, selection) != 0;
  }

 private:
  std::intptr_t keyEvent(bool down, std::int32_t character, std::intptr_t virtualKey, float modifier);
};

}  // namespace tesh::bramel::vst
