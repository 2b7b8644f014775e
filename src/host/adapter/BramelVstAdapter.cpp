// The host's calls, each turned into one on the instrument, and the instrument's reports to the host.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/adapter/BramelVstAdapter.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "core/MidiStatus.h"
#include "core/RealTime.h"
#include "host/adapter/Capabilities.h"
#include "host/adapter/EditorDoor.h"
#include "host/adapter/KeyLights.h"
#include "host/shell/BramelInstrument.h"
#include "host/vst/NumberText.h"
#include "host/vst/PluginIds.h"

namespace tesh::bramel::vst {
namespace {

constexpr std::string_view kVendor = "TESH";
constexpr std::int32_t kWantedTime =
    kVstTempoValid | kVstTransportRecording | kVstTransportPlaying | kVstTransportChanged;
constexpr std::chrono::milliseconds kReadiness{300};

/// The kind that the shell remembers for VST 2 hosts.
constexpr int kVstHostKind = 2;

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

/// A count or an index, limited to the largest that the interface can pass.
std::int32_t numberForHost(std::uint64_t count) {
  constexpr std::uint64_t kMost = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::min(count, kMost));
}

/// Throws std::invalid_argument for another kind of instrument.
std::shared_ptr<BramelInstrument> instrumentIn(const std::shared_ptr<BramelInstrumentBase>& base) {
  auto instrument = std::dynamic_pointer_cast<BramelInstrument>(base);
  if (instrument == nullptr) {
    throw std::invalid_argument("not an instrument of the family");
  }
  return instrument;
}

}  // namespace

/// What the adapter holds. Registers itself as the instrument's host callback.
class BramelVstAdapter::Impl {
 public:
  class Callback;

  Impl(std::shared_ptr<BramelInstrument> shell, std::shared_ptr<BramelInstrumentEditor> newEditor);

  /// The id of the parameter at the host's `index`. BramelInstrument::kNoParameter for a negative index: the instrument
  /// treats it like any unknown id.
  std::uint64_t parameterId(std::int32_t index) const SIVRAY_NONBLOCKING {
    return index < 0 ? BramelInstrument::kNoParameter : instrument->parameterId(static_cast<std::uint64_t>(index));
  }

  BramelVstAdapter* owner = nullptr;
  std::shared_ptr<Callback> callback;  ///< The instrument holds it weakly.
  /// May be null. Destroyed after `instrument`, whose fonts and images need JUCE, which the editor keeps running.
  std::shared_ptr<BramelInstrumentEditor> editor;
  std::shared_ptr<BramelInstrument> instrument;
  KeyLights keyLights;
  std::vector<std::uint8_t> latestChunk;  ///< Read by the host until its next getChunk.
};

/// Called on any thread, on several at once too.
class BramelVstAdapter::Impl::Callback : public BramelInstrumentHostCallback {
 public:
  explicit Callback(Impl& newOwner) : owner(newOwner) {}

  void beginEdit(std::uint64_t visibleIndex) override { owner.owner->beginEdit(numberForHost(visibleIndex)); }
  void endEdit(std::uint64_t visibleIndex) override { owner.owner->endEdit(numberForHost(visibleIndex)); }
  void automate(std::uint64_t visibleIndex, float value) override {
    owner.owner->setParameterAutomated(numberForHost(visibleIndex), value);
  }
  void sendMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) override {
    if (data == nullptr || size == 0 || data[0] < cofu::core::kMidiFirstStatus) {
      return;
    }
    VstMidiEvent event{};
    event.type = kVstMidiType;
    event.byteSize = sizeof(event);
    event.deltaFrames = deltaFrames;
    std::array<std::uint8_t, sizeof(event.midiData)> message{};
    std::copy_n(data, std::min(size, message.size()), message.begin());
    std::copy_n(message.begin(), message.size(), event.midiData);
    VstEvents events{};
    events.numEvents = 1;
    events.events[0] = reinterpret_cast<VstEvent*>(&event);
    owner.owner->sendVstEventsToHost(&events);
    owner.keyLights.messageSent(message.data());
  }
  void programChanged(Origin /*origin*/) override {}
  void parametersChanged() override {
    const std::shared_ptr<BramelInstrument> held = owner.instrument;
    for (std::uint64_t index = 0; index < held->parameterCount(); ++index) {
      automate(index, held->latestValue(held->parameterId(index)));
    }
  }
  void keyStateChanged(int /*note*/) override { owner.keyLights.keysChanged(); }

 private:
  Impl& owner;
};

BramelVstAdapter::Impl::Impl(std::shared_ptr<BramelInstrument> shell, std::shared_ptr<BramelInstrumentEditor> newEditor)
    : callback(std::make_shared<Callback>(*this)),
      editor(std::move(newEditor)),
      instrument(std::move(shell)),
      keyLights(*instrument) {
  instrument->setHostKind(kVstHostKind);
  instrument->setHostCallback(callback);
}

BramelVstAdapter::BramelVstAdapter(AudioMasterCallback master, const std::shared_ptr<BramelInstrumentBase>& instrument,
                                   std::shared_ptr<BramelInstrumentEditor> newEditor)
    : BramelVstAdapter(master, std::make_unique<Impl>(instrumentIn(instrument), std::move(newEditor))) {}

BramelVstAdapter::BramelVstAdapter(AudioMasterCallback master, std::unique_ptr<Impl> newImpl)
    : AudioEffectX(master, 0, numberForHost(newImpl->instrument->parameterCount())), impl(std::move(newImpl)) {
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
  setEditor(nullptr);  // Waits until the view is closed. Nothing is reported to the host afterwards.
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
  impl->instrument->setParameter(impl->parameterId(index), value);
}

float BramelVstAdapter::getParameter(std::int32_t index) {
  return impl->instrument->parameterValue(impl->parameterId(index));
}

std::int32_t BramelVstAdapter::getProgram() { return numberForHost(impl->instrument->currentProgram()); }

void BramelVstAdapter::setProgram(std::int32_t index) {
  if (index >= 0) {
    impl->instrument->setProgram(0, static_cast<std::uint64_t>(index), Origin::host);
  }
}

void BramelVstAdapter::getProgramName(char* text) { fillText(text, impl->instrument->productName()); }

void BramelVstAdapter::getParameterLabel(std::int32_t /*index*/, char* /*text*/) {}

void BramelVstAdapter::getParameterDisplay(std::int32_t index, char* text) {
  fillText(text, impl->instrument->parameterDisplay(impl->parameterId(index)));
}

void BramelVstAdapter::getParameterName(std::int32_t index, char* text) {
  fillText(text, impl->instrument->parameterName(impl->parameterId(index)));
}

std::int32_t BramelVstAdapter::getChunk(void** data, bool /*isPreset*/) {
  if (data == nullptr) {
    return 0;
  }
  impl->latestChunk = impl->instrument->getState();
  *data = impl->latestChunk.data();
  return numberForHost(impl->latestChunk.size());
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
