// The records that a host and a plug-in share. Their layout is that of the published plug-in interface.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

namespace tesh::bramel::vst {

#ifdef _WIN32
#define SIVRAY_VST_CALL __cdecl
#else
#define SIVRAY_VST_CALL
#endif

struct AEffect;

using AudioMasterCallback = std::intptr_t(SIVRAY_VST_CALL*)(AEffect* effect, std::int32_t opcode, std::int32_t index,
                                                            std::intptr_t value, void* ptr, float opt);
using AEffectDispatcherProc = std::intptr_t(SIVRAY_VST_CALL*)(AEffect* effect, std::int32_t opcode, std::int32_t index,
                                                              std::intptr_t value, void* ptr, float opt);
using AEffectProcessProc = void(SIVRAY_VST_CALL*)(AEffect* effect, float** inputs, float** outputs,
                                                  std::int32_t frames);
using AEffectProcessDoubleProc = void(SIVRAY_VST_CALL*)(AEffect* effect, double** inputs, double** outputs,
                                                        std::int32_t frames);
using AEffectSetParameterProc = void(SIVRAY_VST_CALL*)(AEffect* effect, std::int32_t index, float value);
using AEffectGetParameterProc = float(SIVRAY_VST_CALL*)(AEffect* effect, std::int32_t index);

/// Four characters as a number, the first in the most significant byte.
constexpr std::int32_t fourCharacters(char a, char b, char c, char d) {
  const auto byte = [](char character) { return std::uint32_t{static_cast<std::uint8_t>(character)}; };
  return static_cast<std::int32_t>(byte(a) << 24 | byte(b) << 16 | byte(c) << 8 | byte(d));
}

inline constexpr std::int32_t kEffectMagic = fourCharacters('V', 's', 't', 'P');
inline constexpr std::int32_t kEffectIdentity = fourCharacters('N', 'v', 'E', 'f');
inline constexpr std::int32_t kNoUniqueId = fourCharacters('N', 'o', 'E', 'f');

/// Bits of AEffect::flags.
enum AEffectFlags : std::int32_t {
  effFlagsHasEditor = 1 << 0,
  effFlagsHasClip = 1 << 1,  ///< Deprecated.
  effFlagsHasVu = 1 << 2,    ///< Deprecated.
  effFlagsCanMono = 1 << 3,  ///< Deprecated.
  effFlagsCanReplacing = 1 << 4,
  effFlagsProgramChunks = 1 << 5,
  effFlagsIsSynth = 1 << 8,
  effFlagsNoSoundInStop = 1 << 9,
  effFlagsExtIsAsync = 1 << 10,    ///< Deprecated.
  effFlagsExtHasBuffer = 1 << 11,  ///< Deprecated.
  effFlagsCanDoubleReplacing = 1 << 12,
};

/// The record through which a host calls a plug-in.
struct AEffect {
  std::int32_t magic;  ///< kEffectMagic.
  AEffectDispatcherProc dispatcher;
  AEffectProcessProc process;  ///< Deprecated: adds to the outputs.
  AEffectSetParameterProc setParameter;
  AEffectGetParameterProc getParameter;
  std::int32_t numPrograms;
  std::int32_t numParams;
  std::int32_t numInputs;
  std::int32_t numOutputs;
  std::int32_t flags;
  std::intptr_t resvd1;        ///< For the host.
  std::intptr_t resvd2;        ///< For the host.
  std::int32_t initialDelay;   ///< Latency in frames.
  std::int32_t realQualities;  ///< Deprecated.
  std::int32_t offQualities;   ///< Deprecated.
  float ioRatio;               ///< Deprecated.
  void* object;                ///< The AudioEffect.
  void* user;                  ///< For the host.
  std::int32_t uniqueID;
  std::int32_t version;
  AEffectProcessProc processReplacing;
  AEffectProcessDoubleProc processDoubleReplacing;
  char future[56];
};

/// Types of events that are not deprecated.
enum VstEventTypes : std::int32_t { kVstMidiType = 1, kVstSysExType = 6 };

/// The first members of an event of any type.
struct VstEvent {
  std::int32_t type;
  std::int32_t byteSize;
  std::int32_t deltaFrames;
  std::int32_t flags;
  char data[16];
};

/// The events of one block. `events` has `numEvents` entries, whatever its declaration says.
struct VstEvents {
  std::int32_t numEvents;
  std::intptr_t reserved;
  VstEvent* events[2];
};

struct VstMidiEvent {
  std::int32_t type;  ///< kVstMidiType.
  std::int32_t byteSize;
  std::int32_t deltaFrames;
  std::int32_t flags;
  std::int32_t noteLength;
  std::int32_t noteOffset;
  char midiData[4];
  char detune;
  char noteOffVelocity;
  char reserved1;
  char reserved2;
};

struct VstMidiSysexEvent {
  std::int32_t type;  ///< kVstSysExType.
  std::int32_t byteSize;
  std::int32_t deltaFrames;
  std::int32_t flags;
  std::int32_t dumpBytes;
  std::intptr_t resvd1;
  char* sysexDump;
  std::intptr_t resvd2;
};

/// Bits of VstTimeInfo::flags, and of the filter of audioMasterGetTime.
enum VstTimeInfoFlags : std::int32_t {
  kVstTransportChanged = 1 << 0,
  kVstTransportPlaying = 1 << 1,
  kVstTransportCycleActive = 1 << 2,
  kVstTransportRecording = 1 << 3,
  kVstAutomationWriting = 1 << 6,
  kVstAutomationReading = 1 << 7,
  kVstNanosValid = 1 << 8,
  kVstPpqPosValid = 1 << 9,
  kVstTempoValid = 1 << 10,
  kVstBarsValid = 1 << 11,
  kVstCyclePosValid = 1 << 12,
  kVstTimeSigValid = 1 << 13,
  kVstSmpteValid = 1 << 14,
  kVstClockValid = 1 << 15,
};

/// The host's transport. Positions are in frames (samplePos), nanoseconds, or quarter notes (the others).
struct VstTimeInfo {
  double samplePos;
  double sampleRate;
  double nanoSeconds;
  double ppqPos;
  double tempo;  ///< Beats per minute.
  double barStartPos;
  double cycleStartPos;
  double cycleEndPos;
  std::int32_t timeSigNumerator;
  std::int32_t timeSigDenominator;
  std::int32_t smpteOffset;
  std::int32_t smpteFrameRate;
  std::int32_t samplesToNextClock;
  std::int32_t flags;
};

struct VstKeyCode {
  std::int32_t character;
  std::uint8_t virt;
  std::uint8_t modifier;
};

/// An editor's rectangle in pixels.
struct ERect {
  std::int16_t top;
  std::int16_t left;
  std::int16_t bottom;
  std::int16_t right;
};

/// Bytes that a host provides for a text, terminating zero included. For names and values of parameters the interface
/// promises less than 24, but every host provides that many.
inline constexpr std::size_t kParameterTextBytes = 24;
inline constexpr std::size_t kEffectNameBytes = 32;
inline constexpr std::size_t kVendorTextBytes = 64;

static_assert(sizeof(VstEvent) == 32 && sizeof(VstMidiEvent) == 32);
static_assert(offsetof(VstMidiEvent, midiData) == 24 && offsetof(VstMidiEvent, noteOffVelocity) == 29);
static_assert(sizeof(VstTimeInfo) == 88 && offsetof(VstTimeInfo, tempo) == 32 && offsetof(VstTimeInfo, flags) == 84);
static_assert(sizeof(VstKeyCode) == 8 && sizeof(ERect) == 8);
#if UINTPTR_MAX == UINT64_MAX
static_assert(sizeof(AEffect) == 192);
static_assert(offsetof(AEffect, dispatcher) == 8 && offsetof(AEffect, numPrograms) == 40);
static_assert(offsetof(AEffect, flags) == 56 && offsetof(AEffect, resvd1) == 64);
static_assert(offsetof(AEffect, initialDelay) == 80 && offsetof(AEffect, object) == 96);
static_assert(offsetof(AEffect, uniqueID) == 112 && offsetof(AEffect, processReplacing) == 120);
static_assert(offsetof(AEffect, future) == 136);
static_assert(sizeof(VstEvents) == 32 && offsetof(VstEvents, events) == 16);
static_assert(sizeof(VstMidiSysexEvent) == 48 && offsetof(VstMidiSysexEvent, sysexDump) == 32);
#endif

}  // namespace tesh::bramel::vst
