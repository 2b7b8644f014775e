// The opcodes of the plug-in interface, in both directions. Missing numbers are withdrawn from the interface or of no
// use to an instrument; a plug-in answers them with 0.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel::vst {

/// From the host to the plug-in.
enum AEffectOpcodes : std::int32_t {
  effOpen = 0,
  effClose = 1,
  effSetProgram = 2,
  effGetProgram = 3,
  effSetProgramName = 4,
  effGetProgramName = 5,
  effGetParamLabel = 6,
  effGetParamDisplay = 7,
  effGetParamName = 8,
  effSetSampleRate = 10,
  effSetBlockSize = 11,
  effMainsChanged = 12,
  effEditGetRect = 13,
  effEditOpen = 14,
  effEditClose = 15,
  effEditIdle = 19,
  effIdentify = 22,
  effGetChunk = 23,
  effSetChunk = 24,
  effProcessEvents = 25,
  effCanBeAutomated = 26,
  effString2Parameter = 27,
  effGetProgramNameIndexed = 29,
  effGetInputProperties = 33,
  effGetOutputProperties = 34,
  effGetPlugCategory = 35,
  effOfflineNotify = 38,
  effOfflinePrepare = 39,
  effOfflineRun = 40,
  effProcessVarIo = 41,
  effSetSpeakerArrangement = 42,
  effSetBypass = 44,
  effGetEffectName = 45,
  effGetVendorString = 47,
  effGetProductString = 48,
  effGetVendorVersion = 49,
  effVendorSpecific = 50,
  effCanDo = 51,
  effGetTailSize = 52,
  effGetParameterProperties = 56,
  effGetVstVersion = 58,
  effEditKeyDown = 59,
  effEditKeyUp = 60,
  effSetEditKnobMode = 61,
  effGetMidiProgramName = 62,
  effGetCurrentMidiProgram = 63,
  effGetMidiProgramCategory = 64,
  effHasMidiProgramsChanged = 65,
  effGetMidiKeyName = 66,
  effBeginSetProgram = 67,
  effEndSetProgram = 68,
  effGetSpeakerArrangement = 69,
  effShellGetNextPlugin = 70,
  effStartProcess = 71,
  effStopProcess = 72,
  effSetTotalSampleToProcess = 73,
  effSetPanLaw = 74,
  effBeginLoadBank = 75,
  effBeginLoadProgram = 76,
  effSetProcessPrecision = 77,
  effGetNumMidiInputChannels = 78,
  effGetNumMidiOutputChannels = 79,
};

/// From the plug-in to the host.
enum AudioMasterOpcodes : std::int32_t {
  audioMasterAutomate = 0,
  audioMasterVersion = 1,
  audioMasterCurrentId = 2,
  audioMasterIdle = 3,
  audioMasterPinConnected = 4,  ///< Deprecated.
  audioMasterGetTime = 7,
  audioMasterProcessEvents = 8,
  audioMasterIOChanged = 13,
  audioMasterSizeWindow = 15,
  audioMasterGetSampleRate = 16,
  audioMasterGetBlockSize = 17,
  audioMasterGetInputLatency = 18,
  audioMasterGetOutputLatency = 19,
  audioMasterGetCurrentProcessLevel = 23,
  audioMasterGetAutomationState = 24,
  audioMasterOfflineStart = 25,
  audioMasterOfflineRead = 26,
  audioMasterOfflineWrite = 27,
  audioMasterOfflineGetCurrentPass = 28,
  audioMasterOfflineGetCurrentMetaPass = 29,
  audioMasterGetVendorString = 32,
  audioMasterGetProductString = 33,
  audioMasterGetVendorVersion = 34,
  audioMasterVendorSpecific = 35,
  audioMasterCanDo = 37,
  audioMasterGetLanguage = 38,
  audioMasterGetDirectory = 41,
  audioMasterUpdateDisplay = 42,
  audioMasterBeginEdit = 43,
  audioMasterEndEdit = 44,
  audioMasterOpenFileSelector = 45,
  audioMasterCloseFileSelector = 46,
};

/// Answers to effGetPlugCategory: an unknown kind of plug-in, an instrument.
enum VstPlugCategory : std::int32_t { kPlugCategUnknown = 0, kPlugCategSynth = 2 };

/// The answer to effGetVstVersion: version 2.4 of the interface.
inline constexpr std::int32_t kVstVersion = 2400;

}  // namespace tesh::bramel::vst
