// The host's calls, each turned into one on the instrument.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/adapter/BramelVstAdapter.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

#include "host/adapter/BramelVstAdapterImpl.h"
#include "host/adapter/Capabilities.h"
#include "host/adapter/EditorDoor.h"
#include "host/vst/NumberText.h"
#include "host/vst/PluginIds.h"

namespace tesh::bramel::vst {
namespace {

constexpr std::string_view kVendor = "TESH";
constexpr std::int32_t kWantedTime =
    kVstTempoValid | kVstTransportRecording | kVstTransportPlaying | kVstTransportChanged;
constexpr std::chrono::milliseconds kReadiness{300};

/// The call by which hosts tell how large their screen's pixels are, as published for this interface.
constexpr std::int32_t kContentScaleIndex = fourCharacters('P', 'r', 'e', 'S');
constexpr std::intptr_t kContentScaleValue = fourCharacters('A', 'e', 'C', 's');

/// Writes all kParameterTextBytes of the host's buffer: the text, then zeros.
void fillText(char* destination, std::string_view text) {
  if (destination == nullptr) {
    return;
  }
  std::fill_n(destination, kParameterTextBytes, '\0');
  copyText(destination, text, kParameterTextBytes);
}

std::int32_t countForHost(std::uint64_t count) {
  constexpr std::uint64_t kMost = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::min(count, kMost));
}

}  // namespace

BramelVstAdapter::BramelVstAdapter(AudioMasterCallback master, const std::shared_ptr<BramelInstrumentBase>& instrument,
                                   std::shared_ptr<BramelInstrumentEditor> newEditor)
    : BramelVstAdapter(master, std::make_unique<Impl>(instrument, std::move(newEditor))) {}

BramelVstAdapter::BramelVstAdapter(AudioMasterCallback master, std::unique_ptr<Impl> newImpl)
    : AudioEffectX(master, 0, countForHost(newImpl->instrument->parameterCount())), impl(std::move(newImpl)) {
  impl->owner = this;
  BramelInstrument& instrument = *impl->instrument;
  cEffect.numInputs = instrument.inputCount();
  cEffect.numOutputs = instrument.outputCount();
  setFlag(effFlagsIsSynth, instrument.isSynth());
  cEffect.uniqueID = pluginIdOf(instrument.productName());
  setFlag(effFlagsCanReplacing, true);
  setFlag(effFlagsProgramChunks, true);
  if (impl->editor != nullptr) {
    setEditor(makeVstEditor(*this, impl->editor));
  }

  // Hosts may write more than the 64 bytes of the interface, and forget the final zero.
  std::array<char, 1024> vendor{};
  AudioEffectX::getHostVendorString(vendor.data());
  vendor.back() = '\0';
  instrument.setHostVendor(vendor.data());
  if (vendor.data() == KeyLights::kHostVendor) {
    impl->keyLights.start(*this);
  }
}

BramelVstAdapter::~BramelVstAdapter() {
  setEditor(nullptr);  // Waits until the view is closed, and calls the host no more.
  impl->keyLights.stop();
}

void BramelVstAdapter::suspend() { impl->instrument->suspend(); }

void BramelVstAdapter::resume() {
  impl->instrument->resume();
  std::this_thread::sleep_for(kReadiness);
  impl->keyLights.hostIsReady();
}

void BramelVstAdapter::setSampleRate(float rate) {
  AudioEffectX::setSampleRate(rate);
  impl->instrument->setSampleRate(rate);
}

void BramelVstAdapter::processReplacing(float** inputs, float** outputs, std::int32_t frames) {
  takeTimeInfo();
  std::array<float*, 2> nothing{};
  impl->instrument->process(inputs, outputs != nullptr ? outputs : nothing.data(), frames);
}

void BramelVstAdapter::takeTimeInfo() {
  // The host's code may wait.
  const VstTimeInfo* const time = cofu::core::mayWait([this] { return getTimeInfo(kWantedTime); });
  if (time == nullptr) {
    return;
  }
  if ((time->flags & kVstTempoValid) != 0) {
    impl->instrument->setHostTempo(time->tempo);
  }
  if ((time->flags & kVstTransportChanged) != 0) {
    impl->instrument->setTransport((time->flags & (kVstTransportPlaying | kVstTransportRecording)) != 0);
  }
}

std::int32_t BramelVstAdapter::processEvents(VstEvents* events) {
  if (events != nullptr) {
    impl->instrument->sendEvents(*events);
  }
  return 1;
}

void BramelVstAdapter::setParameter(std::int32_t index, float value) {
  const std::uint64_t id = impl->parameterId(index);
  if (id != BramelInstrument::kNoParameter) {
    impl->instrument->setParameter(id, value);
  }
}

float BramelVstAdapter::getParameter(std::int32_t index) {
  const std::uint64_t id = impl->parameterId(index);
  return id != BramelInstrument::kNoParameter ? impl->instrument->parameterValue(id) : 0.0F;
}

std::int32_t BramelVstAdapter::getProgram() { return countForHost(impl->instrument->currentProgram()); }

void BramelVstAdapter::setProgram(std::int32_t index) {
  if (index >= 0) {
    impl->instrument->setProgram(0, static_cast<std::uint64_t>(index), Origin::host);
  }
}

void BramelVstAdapter::getProgramName(char* text) { fillText(text, impl->instrument->productName()); }

void BramelVstAdapter::getParameterLabel(std::int32_t /*index*/, char* /*text*/) {}

void BramelVstAdapter::getParameterDisplay(std::int32_t index, char* text) {
  const std::uint64_t id = impl->parameterId(index);
  if (id == BramelInstrument::kNoParameter) {
    copyText(text, "", kParameterTextBytes);
    return;
  }
  fillText(text, impl->instrument->parameterDisplay(id));
}

void BramelVstAdapter::getParameterName(std::int32_t index, char* text) {
  const std::uint64_t id = impl->parameterId(index);
  if (id == BramelInstrument::kNoParameter) {
    copyText(text, "", kParameterTextBytes);
    return;
  }
  fillText(text, impl->instrument->parameterName(id));
}

std::int32_t BramelVstAdapter::getChunk(void** data, bool /*isPreset*/) {
  if (data == nullptr) {
    return 0;
  }
  impl->latestChunk = impl->instrument->getState();
  *data = impl->latestChunk.data();
  return countForHost(impl->latestChunk.size());
}

std::int32_t BramelVstAdapter::setChunk(void* data, std::int32_t size, bool /*isPreset*/) {
  if (size >= 0 && (data != nullptr || size == 0)) {
    impl->instrument->setState(data, static_cast<std::size_t>(size));
  }
  return size;
}

bool BramelVstAdapter::getEffectName(char* text) {
  copyText(text, impl->instrument->productName(), kEffectNameBytes);
  return true;
}

bool BramelVstAdapter::getVendorString(char* text) {
  copyText(text, kVendor, kVendorTextBytes);
  return true;
}

bool BramelVstAdapter::getProductString(char* text) {
  copyText(text, impl->instrument->productName(), kVendorTextBytes);
  return true;
}

std::intptr_t BramelVstAdapter::vendorSpecific(std::int32_t index, std::intptr_t value, void* ptr, float opt) {
  if (index == kContentScaleIndex && value == kContentScaleValue) {
    const bool isScale = std::isfinite(opt) && opt > 0.0F;
    return isScale && editor != nullptr && editor->setContentScale(opt) ? 1 : 0;
  }
  return answerVendorQuestion(index, value, ptr);
}

std::int32_t BramelVstAdapter::canDo(char* text) { return answerCanDo(text); }

}  // namespace tesh::bramel::vst
