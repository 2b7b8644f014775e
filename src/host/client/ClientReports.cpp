// Passes reports on, to the host by the parameters' own calls.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/client/ClientReports.h"

#include <algorithm>
#include <utility>

#include "core/MidiStatus.h"

namespace tesh::bramel::vst {

HostReports::HostReports(juce::AudioProcessor& ofProcessor, std::vector<ClientParameter*> shownParameters)
    : processor(ofProcessor), parameters(std::move(shownParameters)) {}

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
  markSong();
}

void HostReports::automate(std::uint64_t visibleIndex, float value) {
  if (ClientParameter* const parameter = at(visibleIndex)) {
    parameter->setValueNotifyingHost(value);
  }
}

void HostReports::programChanged(Origin origin) {
  programOrigin = origin;
  soundChanged();
  // An LV2 host that loads a preset asks for the values itself; values that it is told it would take for the user's
  // edits.
  if (origin == Origin::panel || !isLv2()) {
    isProgramWaiting = true;
    startTimer(origin == Origin::panel ? 1 : kSettling);
  }
  if (origin == Origin::panel) {
    markSong();
  }
}

void HostReports::markSong() {
  if (isLv2()) {
    processor.updateHostDisplay(juce::AudioProcessorListener::ChangeDetails().withNonParameterStateChanged(true));
  }
}

void HostReports::soundMoved() {
  areTextsWaiting = true;
  startTimer(kSettling);
}

void HostReports::timerCallback() {
  stopTimer();
  const bool tellsProgram = isProgramWaiting.exchange(false);
  const bool tellsTexts = areTextsWaiting.exchange(false);
  if (tellsProgram || tellsTexts) {
    processor.updateHostDisplay(juce::AudioProcessorListener::ChangeDetails()
                                    .withProgramChanged(tellsProgram)
                                    .withParameterInfoChanged(tellsTexts));
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
  // Wrappers reserve 2048 bytes; a message takes ten. A cleared buffer keeps its memory.
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

}  // namespace tesh::bramel::vst
