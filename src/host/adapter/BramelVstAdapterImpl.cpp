// The instrument's reports to the host.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/adapter/BramelVstAdapterImpl.h"

#include <algorithm>
#include <array>
#include <limits>
#include <stdexcept>
#include <utility>

#include "core/MidiStatus.h"

namespace tesh::bramel::vst {
namespace {

/// The rules of a host of this plug-in interface.
constexpr int kVstHostKind = 2;

std::shared_ptr<BramelInstrument> instrumentIn(const std::shared_ptr<BramelInstrumentBase>& base) {
  auto instrument = std::dynamic_pointer_cast<BramelInstrument>(base);
  if (instrument == nullptr) {
    throw std::invalid_argument("not an instrument of the family");
  }
  return instrument;
}

std::int32_t hostIndex(std::uint64_t visibleIndex) {
  constexpr std::uint64_t kLast = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::min(visibleIndex, kLast));
}

}  // namespace

BramelVstAdapter::Impl::Impl(const std::shared_ptr<BramelInstrumentBase>& base,
                             std::shared_ptr<BramelInstrumentEditor> newEditor)
    : callback(std::make_shared<Callback>(*this)),
      editor(std::move(newEditor)),
      instrument(instrumentIn(base)),
      keyLights(*instrument) {
  instrument->setHostKind(kVstHostKind);
  instrument->setHostCallback(callback);
}

std::uint64_t BramelVstAdapter::Impl::parameterId(std::int32_t index) const {
  return index < 0 ? BramelInstrument::kNoParameter : instrument->parameterId(static_cast<std::uint64_t>(index));
}

void BramelVstAdapter::Impl::Callback::beginEdit(std::uint64_t visibleIndex) {
  owner.owner->beginEdit(hostIndex(visibleIndex));
}

void BramelVstAdapter::Impl::Callback::endEdit(std::uint64_t visibleIndex) {
  owner.owner->endEdit(hostIndex(visibleIndex));
}

void BramelVstAdapter::Impl::Callback::automate(std::uint64_t visibleIndex, float value) {
  owner.owner->setParameterAutomated(hostIndex(visibleIndex), value);
}

void BramelVstAdapter::Impl::Callback::sendMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) {
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

void BramelVstAdapter::Impl::Callback::parametersChanged() {
  const std::shared_ptr<BramelInstrument> held = owner.instrument;
  for (std::uint64_t index = 0; index < held->parameterCount(); ++index) {
    automate(index, held->latestValue(held->parameterId(index)));
  }
}

void BramelVstAdapter::Impl::Callback::keyStateChanged(int /*note*/) { owner.keyLights.keysChanged(); }

}  // namespace tesh::bramel::vst
