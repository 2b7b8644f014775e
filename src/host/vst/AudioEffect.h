// The base class of a plug-in. It owns the record through which the host calls it, turns the opcodes up to 24 into
// virtual functions, and calls the host.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>

#include "core/RealTime.h"
#include "host/vst/AEffEditor.h"
#include "host/vst/VstOpcodes.h"
#include "host/vst/VstRecords.h"

namespace tesh::bramel::vst {

/// The 32-bit number in a pointer-sized value of the host; limited to the range of 32 bits.
std::int32_t narrowToInt32(std::intptr_t value);

/// A function that is not overridden does nothing and returns 0 or an empty text. No exception reaches the host.
class AudioEffect {
 public:
  /// `master` is the host's callback. If it is null, calls to the host do nothing and return 0.
  AudioEffect(AudioMasterCallback master, std::int32_t programCount, std::int32_t parameterCount);
  AudioEffect(const AudioEffect&) = delete;
  AudioEffect& operator=(const AudioEffect&) = delete;
  virtual ~AudioEffect();

  /// Handles the opcodes up to 24; all others return 0. The meaning of the arguments depends on the opcode.
  virtual std::intptr_t dispatcher(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr, float opt);

  virtual void open() {}
  virtual void close() {}
  virtual void suspend() {}
  virtual void resume() {}

  /// Hertz, and the longest block in frames. Hosts call them while processing is suspended.
  virtual void setSampleRate(float rate) { sampleRate = rate; }
  virtual void setBlockSize(std::int32_t frames) { blockSize = frames; }

  /// Renders `frames` frames, one pointer per channel. Audio thread.
  virtual void processReplacing(float** /*inputs*/, float** /*outputs*/, std::int32_t /*frames*/) SIVRAY_NONBLOCKING {}
  virtual void processDoubleReplacing(double** /*inputs*/, double** /*outputs*/, std::int32_t /*frames*/) {}

  /// Values are from 0 to 1. Hosts call both on any thread, the audio thread included.
  virtual void setParameter(std::int32_t /*index*/, float /*value*/) SIVRAY_NONBLOCKING {}
  virtual float getParameter(std::int32_t /*index*/) { return 0.0F; }

  /// Sets a parameter, then tells the host, which may record it.
  virtual void setParameterAutomated(std::int32_t index, float value);

  virtual std::int32_t getProgram() { return curProgram; }
  virtual void setProgram(std::int32_t index) { curProgram = index; }
  virtual void setProgramName(char* /*name*/) {}

  /// `text` has kParameterTextBytes; null is ignored.
  virtual void getProgramName(char* text);
  virtual void getParameterLabel(std::int32_t index, char* text);
  virtual void getParameterDisplay(std::int32_t index, char* text);
  virtual void getParameterName(std::int32_t index, char* text);

  /// Points `*data` at the state, which the plug-in keeps, and returns its size in bytes.
  virtual std::int32_t getChunk(void** /*data*/, bool /*isPreset*/) { return 0; }

  /// Restores a state of `size` bytes. The interface gives the result no meaning.
  virtual std::int32_t setChunk(void* /*data*/, std::int32_t /*size*/, bool /*isPreset*/) { return 0; }

  virtual void setUniqueID(std::int32_t id) { cEffect.uniqueID = id; }
  virtual void setNumInputs(std::int32_t count) { cEffect.numInputs = count; }
  virtual void setNumOutputs(std::int32_t count) { cEffect.numOutputs = count; }
  virtual void canProcessReplacing(bool state) { setFlag(effFlagsCanReplacing, state); }
  virtual void canDoubleReplacing(bool state) { setFlag(effFlagsCanDoubleReplacing, state); }
  virtual void programsAreChunks(bool state) { setFlag(effFlagsProgramChunks, state); }
  virtual void setInitialDelay(std::int32_t frames) { cEffect.initialDelay = frames; }

  /// Takes ownership of the editor, and sets the flag that tells the host whether there is one.
  void setEditor(std::unique_ptr<AEffEditor> newEditor);
  virtual AEffEditor* getEditor() { return editor.get(); }

  virtual AEffect* getAeffect() { return &cEffect; }
  virtual float getSampleRate() { return sampleRate; }
  virtual std::int32_t getBlockSize() { return blockSize; }

  /// The version of the interface that the host uses; 1 if it does not answer.
  virtual std::int32_t getMasterVersion();
  virtual std::int32_t getCurrentUniqueId() { return narrowToInt32(callHost(audioMasterCurrentId)); }
  virtual void masterIdle() { callHost(audioMasterIdle); }

  /// Write a number as text of at most `capacity` bytes, terminating zero included: a linear level in decibels, a
  /// period in frames as a frequency, a number of frames in milliseconds, a plain number.
  virtual void dB2string(float level, char* text, std::int32_t capacity);
  virtual void Hz2string(float frames, char* text, std::int32_t capacity);
  virtual void ms2string(float frames, char* text, std::int32_t capacity);
  virtual void float2string(float value, char* text, std::int32_t capacity);
  virtual void int2string(std::int32_t value, char* text, std::int32_t capacity);

  /// Deprecated parts of the interface that old hosts may still use.
  virtual void process(float** /*inputs*/, float** /*outputs*/, std::int32_t /*frames*/) {}
  virtual void hasVu(bool state) { setFlag(effFlagsHasVu, state); }
  virtual void hasClip(bool state) { setFlag(effFlagsHasClip, state); }
  virtual void canMono(bool state) { setFlag(effFlagsCanMono, state); }
  virtual void setRealtimeQualities(std::int32_t qualities) { cEffect.realQualities = qualities; }
  virtual void setOfflineQualities(std::int32_t qualities) { cEffect.offQualities = qualities; }
  virtual bool isInputConnected(std::int32_t pin) { return callHost(audioMasterPinConnected, pin) == 0; }
  virtual bool isOutputConnected(std::int32_t pin) { return callHost(audioMasterPinConnected, pin, 1) == 0; }

 protected:
  /// Calls the host; returns 0 if there is none.
  std::intptr_t callHost(std::int32_t opcode, std::int32_t index = 0, std::intptr_t value = 0, void* ptr = nullptr,
                         float opt = 0.0F) {
    return audioMaster == nullptr ? 0 : audioMaster(&cEffect, opcode, index, value, ptr, opt);
  }
  void setFlag(std::int32_t flag, bool state) { cEffect.flags = state ? cEffect.flags | flag : cEffect.flags & ~flag; }

  AudioMasterCallback audioMaster;
  std::unique_ptr<AEffEditor> editor;
  float sampleRate = 44100.0F;
  std::int32_t blockSize = 1024;
  std::int32_t numPrograms;
  std::int32_t numParams;
  std::int32_t curProgram = 0;
  AEffect cEffect{};
};

}  // namespace tesh::bramel::vst
