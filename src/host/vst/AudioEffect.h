// The base of every plug-in: it carries the record that the host sees, turns the host's first opcodes into virtual
// operations, and holds the way back to the host.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>

#include "core/RealTime.h"
#include "host/vst/AEffEditor.h"
#include "host/vst/VstRecords.h"

namespace tesh::bramel::vst {

/// What a plug-in does not override answers with nothing. Nothing that is thrown reaches the host.
class AudioEffect {
 public:
  /// `master` is the host's callback and may be null: then all calls to the host are inert.
  AudioEffect(AudioMasterCallback master, std::int32_t programCount, std::int32_t parameterCount);
  AudioEffect(const AudioEffect&) = delete;
  AudioEffect& operator=(const AudioEffect&) = delete;
  virtual ~AudioEffect();

  /// Opcodes up to 24; everything else gives 0.
  virtual std::intptr_t dispatcher(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr, float opt);

  virtual void open() {}
  virtual void close() {}
  virtual void suspend() {}
  virtual void resume() {}
  virtual void setSampleRate(float rate) { sampleRate = rate; }
  virtual void setBlockSize(std::int32_t frames) { blockSize = frames; }

  virtual void processReplacing(float** /*inputs*/, float** /*outputs*/, std::int32_t /*frames*/) SIVRAY_NONBLOCKING {}
  virtual void processDoubleReplacing(double** /*inputs*/, double** /*outputs*/, std::int32_t /*frames*/) {}

  virtual void setParameter(std::int32_t /*index*/, float /*value*/) SIVRAY_NONBLOCKING {}
  virtual float getParameter(std::int32_t /*index*/) { return 0.0F; }

  /// Sets a parameter of this object, then tells the host.
  virtual void setParameterAutomated(std::int32_t index, float value);

  virtual std::int32_t getProgram() { return curProgram; }
  virtual void setProgram(std::int32_t index) { curProgram = index; }
  virtual void setProgramName(char* /*name*/) {}

  /// Texts go into kParameterTextBytes; a null pointer takes nothing.
  virtual void getProgramName(char* text);
  virtual void getParameterLabel(std::int32_t index, char* text);
  virtual void getParameterDisplay(std::int32_t index, char* text);
  virtual void getParameterName(std::int32_t index, char* text);

  /// Hands out the plug-in's state, which stays the plug-in's, and gives its size.
  virtual std::int32_t getChunk(void** /*data*/, bool /*isPreset*/) { return 0; }
  virtual std::int32_t setChunk(void* /*data*/, std::int32_t /*size*/, bool /*isPreset*/) { return 0; }

  virtual void setUniqueID(std::int32_t id) { cEffect.uniqueID = id; }
  virtual void setNumInputs(std::int32_t count) { cEffect.numInputs = count; }
  virtual void setNumOutputs(std::int32_t count) { cEffect.numOutputs = count; }
  virtual void canProcessReplacing(bool state) { setFlag(effFlagsCanReplacing, state); }
  virtual void canDoubleReplacing(bool state) { setFlag(effFlagsCanDoubleReplacing, state); }
  virtual void programsAreChunks(bool state) { setFlag(effFlagsProgramChunks, state); }
  virtual void setInitialDelay(std::int32_t frames) { cEffect.initialDelay = frames; }

  /// Takes the editor over.
  void setEditor(std::unique_ptr<AEffEditor> newEditor);
  virtual AEffEditor* getEditor() { return editor.get(); }

  virtual AEffect* getAeffect() { return &cEffect; }
  virtual float getSampleRate() { return sampleRate; }
  virtual std::int32_t getBlockSize() { return blockSize; }

  /// The version of the interface that the host speaks; 1 without an answer.
  virtual std::int32_t getMasterVersion();
  virtual std::int32_t getCurrentUniqueId();
  virtual void masterIdle();

  /// Numbers as text in at most `capacity` bytes. Frames are read at this object's sample rate.
  virtual void dB2string(float level, char* text, std::int32_t capacity);
  virtual void Hz2string(float frames, char* text, std::int32_t capacity);
  virtual void ms2string(float frames, char* text, std::int32_t capacity);
  virtual void float2string(float value, char* text, std::int32_t capacity);
  virtual void int2string(std::int32_t value, char* text, std::int32_t capacity);

  /// Deprecated parts of the interface, which old hosts may still look for.
  virtual void process(float** /*inputs*/, float** /*outputs*/, std::int32_t /*frames*/) {}
  virtual void hasVu(bool state) { setFlag(effFlagsHasVu, state); }
  virtual void hasClip(bool state) { setFlag(effFlagsHasClip, state); }
  virtual void canMono(bool state) { setFlag(effFlagsCanMono, state); }
  virtual void setRealtimeQualities(std::int32_t qualities) { cEffect.realQualities = qualities; }
  virtual void setOfflineQualities(std::int32_t qualities) { cEffect.offQualities = qualities; }
  virtual bool isInputConnected(std::int32_t pin);
  virtual bool isOutputConnected(std::int32_t pin);

 protected:
  /// Calls the host; gives 0 where there is none.
  std::intptr_t callHost(std::int32_t opcode, std::int32_t index = 0, std::intptr_t value = 0, void* ptr = nullptr,
                         float opt = 0.0F);
  void setFlag(std::int32_t flag, bool state);

  AudioMasterCallback audioMaster;
  std::unique_ptr<AEffEditor> editor;
  float sampleRate = 44100.0F;
  std::int32_t blockSize = 1024;
  std::int32_t numPrograms;
  std::int32_t numParams;
  std::int32_t curProgram = 0;
  AEffect cEffect{};
};

/// A host's pointer-sized value as the 32-bit number it stands for; what does not fit reads as the nearest end.
std::int32_t narrowToInt32(std::intptr_t value);

}  // namespace tesh::bramel::vst
