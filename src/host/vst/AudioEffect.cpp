// The functions in the host's record, and the opcodes up to 24.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/vst/AudioEffect.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "host/vst/NumberText.h"

namespace tesh::bramel::vst {
namespace {

AudioEffect* objectOf(AEffect* effect) {
  return effect == nullptr ? nullptr : static_cast<AudioEffect*>(effect->object);
}

/// Runs `call` on the object behind the host's record. Returns `otherwise` if `call` throws, because no host would
/// catch that, and for a record without an object.
template <class Result, class Call>
Result enter(AEffect* effect, Result otherwise, Call call) noexcept {
  AudioEffect* const object = objectOf(effect);
  if (object == nullptr) {
    return otherwise;
  }
  try {
    return call(*object);
  } catch (...) {
    return otherwise;
  }
}

std::intptr_t SIVRAY_VST_CALL dispatcherEntry(AEffect* effect, std::int32_t opcode, std::int32_t index,
                                              std::intptr_t value, void* ptr, float opt) {
  const std::intptr_t result = enter(
      effect, std::intptr_t{0}, [&](AudioEffect& object) { return object.dispatcher(opcode, index, value, ptr, opt); });
  if (opcode != effClose || objectOf(effect) == nullptr) {
    return result;
  }
  delete objectOf(effect);
  return 1;
}

void SIVRAY_VST_CALL processEntry(AEffect* effect, float** inputs, float** outputs, std::int32_t frames) {
  enter(effect, 0, [&](AudioEffect& object) { return object.process(inputs, outputs, frames), 0; });
}

void SIVRAY_VST_CALL processReplacingEntry(AEffect* effect, float** inputs, float** outputs, std::int32_t frames) {
  enter(effect, 0, [&](AudioEffect& object) { return object.processReplacing(inputs, outputs, frames), 0; });
}

void SIVRAY_VST_CALL processDoubleReplacingEntry(AEffect* effect, double** inputs, double** outputs,
                                                 std::int32_t frames) {
  enter(effect, 0, [&](AudioEffect& object) { return object.processDoubleReplacing(inputs, outputs, frames), 0; });
}

void SIVRAY_VST_CALL setParameterEntry(AEffect* effect, std::int32_t index, float value) {
  enter(effect, 0, [&](AudioEffect& object) { return object.setParameter(index, value), 0; });
}

float SIVRAY_VST_CALL getParameterEntry(AEffect* effect, std::int32_t index) {
  return enter(effect, 0.0F, [&](AudioEffect& object) { return object.getParameter(index); });
}

std::size_t capacityOf(std::int32_t bytes) { return static_cast<std::size_t>(std::max(bytes, 0)); }

}  // namespace

std::int32_t narrowToInt32(std::intptr_t value) {
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(std::clamp<std::intptr_t>(value, Limits::min(), Limits::max()));
}

AudioEffect::AudioEffect(AudioMasterCallback master, std::int32_t programCount, std::int32_t parameterCount)
    : audioMaster(master), numPrograms(programCount), numParams(parameterCount) {
  cEffect.magic = kEffectMagic;
  cEffect.dispatcher = dispatcherEntry;
  cEffect.process = processEntry;
  cEffect.setParameter = setParameterEntry;
  cEffect.getParameter = getParameterEntry;
  cEffect.numPrograms = programCount;
  cEffect.numParams = parameterCount;
  cEffect.numInputs = 1;
  cEffect.numOutputs = 2;
  cEffect.flags = effFlagsCanReplacing;
  cEffect.ioRatio = 1.0F;
  cEffect.object = this;
  cEffect.uniqueID = kNoUniqueId;
  cEffect.version = 1;
  cEffect.processReplacing = processReplacingEntry;
  cEffect.processDoubleReplacing = processDoubleReplacingEntry;
}

AudioEffect::~AudioEffect() = default;

std::intptr_t AudioEffect::dispatcher(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr,
                                      float opt) {
  char* const text = static_cast<char*>(ptr);
  switch (opcode) {
    case effOpen:
      open();
      return 0;
    case effClose:
      close();
      return 0;
    case effSetProgram:
      if (value < numPrograms) {
        setProgram(narrowToInt32(value));
      }
      return 0;
    case effGetProgram:
      return getProgram();
    case effSetProgramName:
      setProgramName(text);
      return 0;
    case effGetProgramName:
      getProgramName(text);
      return 0;
    case effGetParamLabel:
      getParameterLabel(index, text);
      return 0;
    case effGetParamDisplay:
      getParameterDisplay(index, text);
      return 0;
    case effGetParamName:
      getParameterName(index, text);
      return 0;
    case effSetSampleRate:
      setSampleRate(opt);
      return 0;
    case effSetBlockSize:
      setBlockSize(narrowToInt32(value));
      return 0;
    case effMainsChanged:
      value != 0 ? resume() : suspend();
      return 0;
    case effEditGetRect:
      return editor != nullptr && ptr != nullptr && editor->getRect(static_cast<ERect**>(ptr)) ? 1 : 0;
    case effEditOpen:
      return editor != nullptr && editor->open(ptr) ? 1 : 0;
    case effEditClose:
      if (editor != nullptr) {
        editor->close();
      }
      return 0;
    case effEditIdle:
      if (editor != nullptr) {
        editor->idle();
      }
      return 0;
    case effIdentify:
      return kEffectIdentity;
    case effGetChunk:
      return getChunk(static_cast<void**>(ptr), index != 0);
    case effSetChunk:
      return setChunk(ptr, narrowToInt32(value), index != 0);
    default:
      return 0;
  }
}

void AudioEffect::setParameterAutomated(std::int32_t index, float value) {
  setParameter(index, value);
  callHost(audioMasterAutomate, index, 0, nullptr, value);
}

void AudioEffect::getProgramName(char* text) { copyText(text, "", kParameterTextBytes); }

void AudioEffect::getParameterLabel(std::int32_t /*index*/, char* text) { copyText(text, "", kParameterTextBytes); }

void AudioEffect::getParameterDisplay(std::int32_t /*index*/, char* text) { copyText(text, "", kParameterTextBytes); }

void AudioEffect::getParameterName(std::int32_t /*index*/, char* text) { copyText(text, "", kParameterTextBytes); }

void AudioEffect::setEditor(std::unique_ptr<AEffEditor> newEditor) {
  editor = std::move(newEditor);
  setFlag(effFlagsHasEditor, editor != nullptr);
}

std::int32_t AudioEffect::getMasterVersion() {
  const std::int32_t version = narrowToInt32(callHost(audioMasterVersion));
  return version != 0 ? version : 1;
}

void AudioEffect::dB2string(float level, char* text, std::int32_t capacity) {
  copyText(text, levelText(level), capacityOf(capacity));
}

void AudioEffect::Hz2string(float frames, char* text, std::int32_t capacity) {
  const double hertz = frames == 0.0F ? 0.0 : static_cast<double>(getSampleRate()) / static_cast<double>(frames);
  copyText(text, floatText(hertz), capacityOf(capacity));
}

void AudioEffect::ms2string(float frames, char* text, std::int32_t capacity) {
  const double milliseconds = static_cast<double>(frames) * 1000.0 / static_cast<double>(getSampleRate());
  copyText(text, floatText(milliseconds), capacityOf(capacity));
}

void AudioEffect::float2string(float value, char* text, std::int32_t capacity) {
  copyText(text, floatText(static_cast<double>(value)), capacityOf(capacity));
}

void AudioEffect::int2string(std::int32_t value, char* text, std::int32_t capacity) {
  copyText(text, integerText(value), capacityOf(capacity));
}

}  // namespace tesh::bramel::vst
