// Passes reports on, to the host by the parameters' own calls.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/client/ClientReports.h"

#include <algorithm>
#include <span>
#include <utility>

#include "core/MidiStatus.h"

namespace tesh::bramel::vst {

HostReports::HostReports(std::vector<ClientParameter*> shownParameters, std::shared_ptr<HostEchoes> hostEchoes)
    : parameters(std::move(shownParameters)), echoes(std::move(hostEchoes)) {}

ClientParameter* HostReports::at(std::uint64_t visibleIndex) const {
  return visibleIndex < parameters.size() ? parameters[static_cast<std::size_t>(visibleIndex)] : nullptr;
}

void HostReports::beginEdit(std::uint64_t visibleIndex) {
  if (ClientParameter* const parameter = at(visibleIndex)) {
    parameter->beginChangeGesture();
  }
}

void HostReports::endEdit(std::uint64_t visibleIndex) {
  if (ClientParameter* const parameter = at(visibleIndex)) {
    parameter->endChangeGesture();
  }
}

void HostReports::automate(std::uint64_t visibleIndex, float value) {
  if (ClientParameter* const parameter = at(visibleIndex)) {
    parameter->setValueNotifyingHost(value);
    parameter->noteTold();
    echoes->valuesTold();
  }
}

void HostReports::parametersChanged() {
  if (areValuesHeld) {
    echoes->programChosen();
    startTimer(kSettling);
    return;
  }
  for (ClientParameter* const parameter : parameters) {
    parameter->setValue(parameter->getValue());
  }
  tellValues();
}

void HostReports::timerCallback() {
  stopTimer();
  tellValues();
}

void HostReports::tellValues() {
  echoes->allKnown();
  echoes->valuesTold();
  for (ClientParameter* const parameter : parameters) {
    parameter->noteTold();
    parameter->sendValueChangedMessageToListeners(parameter->getValue());
  }
}

void HostReports::sendMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) {
  if (data == nullptr || size == 0 || data[0] < cofu::core::kMidiFirstStatus) {
    return;
  }
  Message message;
  message.frame = deltaFrames;
  std::copy_n(data, std::min(size, message.bytes.size()), message.bytes.begin());
  const std::lock_guard lock(sendersMutex);
  messages.put(message);
}

void HostReports::takeMidi(juce::MidiBuffer& midi, int frames) {
  // Wrappers reserve 2048 bytes, and a message takes ten. A cleared buffer keeps its memory.
  constexpr int kMostInBlock = 200;
  cofu::core::vouchFor([&] {
    for (int count = 0; count < kMostInBlock; ++count) {
      const auto message = messages.take();
      if (!message) {
        return;
      }
      const int size = juce::MidiMessage::getMessageLengthFromFirstByte(message->bytes[0]);
      midi.addEvent(message->bytes.data(), std::min(size, static_cast<int>(message->bytes.size())),
                    std::clamp(message->frame, 0, std::max(frames - 1, 0)));
    }
  });
}

EditorReports::EditorReports(std::shared_ptr<BramelInstrument> ofInstrument,
                             std::vector<ClientParameter*> parameterOfId,
                             std::shared_ptr<BramelInstrumentUICallback> newPanel)
    : instrument(std::move(ofInstrument)),
      parameters(std::move(parameterOfId)),
      panel(std::move(newPanel)),
      changed(parameters.size()),
      values(parameters.size()) {}

void EditorReports::list(std::uint64_t parameterId) {
  if (parameterId >= parameters.size() || parameters[static_cast<std::size_t>(parameterId)] == nullptr) {
    return;
  }
  if (changedCount == changed.size()) {
    takeValues();
  }
  changed[changedCount++] = parameterId;
}

void EditorReports::takeValues() {
  const std::span ids(changed.data(), changedCount);
  instrument->parameterValues(ids, values);
  for (std::size_t index = 0; index < changedCount; ++index) {
    parameters[static_cast<std::size_t>(ids[index])]->keepValue(values[index]);
  }
  changedCount = 0;
}

void EditorReports::holdUpdates() { panel->holdUpdates(); }

void EditorReports::releaseUpdates() {
  if (changedCount > 0) {
    takeValues();
  }
  panel->releaseUpdates();
}

void EditorReports::programSaved(const std::string& bankName, const std::uint64_t* programIds, std::uint64_t count) {
  panel->programSaved(bankName, programIds, count);
}

void EditorReports::programDeleted(const std::string& bankName, const std::uint64_t* programIds, std::uint64_t count) {
  panel->programDeleted(bankName, programIds, count);
}

void EditorReports::programMoved(const std::string& bankName, std::uint64_t fromIndex, std::uint64_t toIndex) {
  panel->programMoved(bankName, fromIndex, toIndex);
}

void EditorReports::programChanged() {
  for (std::uint64_t id = 0; id < parameters.size(); ++id) {
    list(id);
  }
  takeValues();
  panel->programChanged();
}

void EditorReports::parameterChanged(std::uint64_t parameterId) {
  list(parameterId);
  panel->parameterChanged(parameterId);
}

void EditorReports::midiReceived(const std::uint8_t* data, std::size_t size) { panel->midiReceived(data, size); }

}  // namespace tesh::bramel::vst
