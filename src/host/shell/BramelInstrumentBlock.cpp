// One block: what arrives on its way in, the run of the engine, and what is reported afterwards.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "core/RealTimeLock.h"
#include "host/shell/BramelInstrumentImpl.h"
#include "host/vst/VstRecords.h"
#include "platform/DenormalGuard.h"

namespace tesh::bramel::vst {
namespace {

using vimo::ProcessorEvent;
using vimo::ProcessorEventTag;

constexpr std::size_t kChannels = 2;
using ChannelPair = std::array<float*, kChannels>;

bool hasNull(float* const* channels) { return channels == nullptr || channels[0] == nullptr || channels[1] == nullptr; }

void copyInputs(float* const* inputs, float* const* outputs, std::int32_t frames) {
  for (std::size_t channel = 0; channel < kChannels; ++channel) {
    if (inputs[channel] != outputs[channel]) {
      std::copy_n(inputs[channel], static_cast<std::size_t>(frames), outputs[channel]);
    }
  }
}

/// The channels from `offset` on; a null channel stays null.
ChannelPair channelsAt(float* const* channels, std::int32_t offset) {
  ChannelPair moved{};
  for (std::size_t channel = 0; channel < kChannels; ++channel) {
    moved[channel] = channels[channel] == nullptr ? nullptr : channels[channel] + offset;
  }
  return moved;
}

}  // namespace

void BramelInstrument::Impl::process(float** inputs, float** outputs, std::int32_t frames) {
  if (frames < 0 || (frames != 0 && hasNull(outputs))) {
    return;
  }
  const platform::DenormalGuard guard;
  const cofu::core::RealTimeLock lock(mainMutex);
  ChannelPair absent{};
  float** const given = inputs != nullptr && takesInput ? inputs : absent.data();
  if (frames != 0 && !hasNull(given)) {
    copyInputs(given, outputs, frames);
  }
  converter.process(given, outputs, frames);
}

void BramelInstrument::Impl::onProcess(float** inputs, float** outputs, std::int32_t frames) {
  if (frames == 0) {
    runBlock(nullptr, nullptr, 0);
  }
  for (std::int32_t offset = 0; offset < frames; offset += kLongestPiece) {
    ChannelPair pieceIn = inputs == nullptr ? ChannelPair{} : channelsAt(inputs, offset);
    ChannelPair pieceOut = channelsAt(outputs, offset);
    runBlock(inputs == nullptr ? nullptr : pieceIn.data(), pieceOut.data(), std::min(frames - offset, kLongestPiece));
  }
}

void BramelInstrument::Impl::runBlock(float** inputs, float** outputs, std::int32_t frames) {
  if (!processor) {
    for (std::size_t channel = 0; outputs != nullptr && channel < kChannels; ++channel) {
      std::fill_n(outputs[channel], static_cast<std::size_t>(frames), 0.0F);
    }
    return;
  }
  isInBlock = true;
  takeMail();
  vimo::ProcessBlock block;
  block.inputs = inputs;
  block.outputs = outputs;
  block.inputCount = inputs == nullptr ? 0 : static_cast<std::int32_t>(kChannels);
  block.frames = frames;
  block.automationRing = &automationRing;
  block.notificationRing = &notificationRing;
  block.midiIn = &midiIn;
  block.midiOut = &midiOut;
  processor->process(block, 0, 1.0, 0.0);
  sendMidiOut();
  cofu::core::vouchFor([this] {  // Short messages, which own nothing.
    midiIn.clear();
    midiOut.clear();
  });
  reportChanges();
  isInBlock = false;
}

void BramelInstrument::Impl::takeMail() {
  while (const auto event = mail.receive()) {
    latest.put(*event);
    const bool isFloat = event->tag == ProcessorEventTag::floatValue;
    vimo::MacroCommand command;
    command.index = static_cast<std::uint32_t>(event->parameterId);
    command.value = isFloat ? event->value : 0.0F;
    command.object = isFloat ? 0 : event->integer;
    processor->commandQueue.put(command);
    vimo::MacroParameterControl* const macro = isFloat ? processor->controller().macroAt(event->parameterId) : nullptr;
    if (macro != nullptr) {
      macro->echoValue = event->value;
    }
  }
}

void BramelInstrument::Impl::sendMidiOut() {
  if (midiOut.empty()) {
    return;
  }
  cofu::core::mayWait([this] {  // What a host does with a message is its own matter.
    tellHost([this](BramelInstrumentHostCallback& host) {
      for (const vimo::MidiEvent& event : midiOut) {
        if (event.size() <= kLongestMidiOut) {
          host.sendMidi(event.data(), event.size(), static_cast<std::int32_t>(event.frame));
        }
      }
    });
  });
}

void BramelInstrument::Impl::reportChanges() {
  if (hasSelected) {
    hasSelected = false;
    cache.refresh(processor->controller());
  }
  if (!latest.isEmpty()) {
    cache.store(latest);
  }
  tellEditor([this](BramelInstrumentUICallback& editor) {
    latest.forEach([&editor](const ProcessorEvent& event) { editor.parameterChanged(event.parameterId); });
    editor.releaseUpdates();
    editor.holdUpdates();
  });
  latest.clear();
}

void BramelInstrument::Impl::flush() {
  // A listener that asks for a value inside a block must not start another one.
  if (!isInBlock) {
    runBlock(nullptr, nullptr, 0);
  }
}

void BramelInstrument::Impl::flushMail() {
  if (!mail.isEmpty()) {
    flush();
  }
}

void BramelInstrument::Impl::onMidi(std::uint32_t packed, std::int32_t frame) {
  if (midiIn.size() >= kMostMidiIn) {
    return;
  }
  const std::array<std::uint8_t, 3> bytes{static_cast<std::uint8_t>(packed >> 24),
                                          static_cast<std::uint8_t>(packed >> 16),
                                          static_cast<std::uint8_t>(packed >> 8)};
  // Within the room that is reserved; three bytes are kept inline.
  cofu::core::vouchFor([&] { midiIn.emplace_back(bytes, static_cast<std::uint32_t>(std::max(frame, 0))); });
}

MidiVerdict BramelInstrument::Impl::judge(const std::uint8_t* data, std::size_t size) const {
  return judgeMidi(data, size, [this](std::uint8_t number) -> std::optional<std::uint64_t> {
    const std::int64_t macro = processor ? processor->controller().macroForController(number) : -1;
    return macro < 0 ? std::nullopt : std::optional(static_cast<std::uint64_t>(macro));
  });
}

void BramelInstrument::Impl::queueForEngine(const ShortMessage& message, std::int32_t deltaFrames) {
  VstMidiEvent event{};
  event.type = kVstMidiType;
  event.byteSize = sizeof(event);
  event.deltaFrames = deltaFrames;
  std::copy_n(message.bytes.begin(), message.bytes.size(), event.midiData);
  VstEvents events{};
  events.numEvents = 1;
  events.events[0] = reinterpret_cast<VstEvent*>(&event);
  converter.processEvents(events);
}

void BramelInstrument::Impl::sendMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) {
  if (data == nullptr || size == 0) {
    return;
  }
  const MidiVerdict verdict = judge(data, size);
  if (verdict.parameterId) {
    setParameter(*verdict.parameterId, verdict.value);
  } else if (verdict.toEngine) {
    queueForEngine(verdict.message, deltaFrames);
  }
  const bool isShort = size <= verdict.message.size;
  const std::uint8_t* const heard = isShort ? verdict.message.bytes.data() : data;
  tellEditor([heard, size](BramelInstrumentUICallback& editor) { editor.midiReceived(heard, size); });
}

void BramelInstrument::Impl::sendKeyboardMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) {
  if (!active || data == nullptr || size == 0) {
    return;
  }
  const MidiVerdict verdict = judge(data, size);
  if (verdict.parameterId) {
    setParameterFromEditor(*verdict.parameterId, verdict.value);
  } else if (verdict.toEngine) {
    queueForEngine(verdict.message, deltaFrames);
  }
  if (size <= kLongestMidiOut) {
    tellHost([&](BramelInstrumentHostCallback& host) { host.sendMidi(data, size, deltaFrames); });
  }
}

}  // namespace tesh::bramel::vst
