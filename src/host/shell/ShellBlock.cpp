// Runs a block from the host's buffers to the engine and back, with its MIDI and its reports.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/shell/ShellBlock.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "core/EngineRate.h"
#include "registers/DenormalGuard.h"
#include "viewmodels/texts/PanelMacros.h"

namespace tesh::bramel::vst {
namespace {

using vimo::ProcessorEvent;
using vimo::ProcessorEventTag;

constexpr auto kEngineRate = static_cast<float>(cofu::core::kEngineRate);
/// The most engine frames of one run of the block routine.
constexpr std::int32_t kLongestPiece = 2048;
/// The most MIDI messages of one block: those that the converter holds back, and twice as many as a host sends at most.
constexpr std::size_t kMostMidiIn = 4096;
/// The queue of program changes holds eight, whose events may be added to a block's MIDI.
constexpr std::size_t kQueuedPrograms = 8;
constexpr std::size_t kMidiOutRoom = 256;

constexpr std::size_t kChannels = vimo::kMainChannels;

static_assert(CFsConverterWrapper::kMostChannels == vimo::kAllChannels);

bool hasNull(float* const* channels) { return channels == nullptr || channels[0] == nullptr || channels[1] == nullptr; }
bool hasNull(std::span<float* const> channels) { return channels.size() < kChannels || hasNull(channels.data()); }

void copyInputs(float* const* inputs, float* const* outputs, std::int32_t frames) {
  for (std::size_t channel = 0; channel < kChannels; ++channel) {
    if (inputs[channel] != outputs[channel]) {
      std::copy_n(inputs[channel], static_cast<std::size_t>(frames), outputs[channel]);
    }
  }
}

/// The channels from `offset` on; a null channel stays null.
template <std::size_t Count>
std::array<float*, Count> channelsAt(std::span<float* const> channels, std::int32_t offset) {
  std::array<float*, Count> moved{};
  for (std::size_t channel = 0; channel < channels.size(); ++channel) {
    moved[channel] = channels[channel] == nullptr ? nullptr : channels[channel] + offset;
  }
  return moved;
}

}  // namespace

ShellBlock::ShellBlock(ShellCore& shellCore, ShellParameters& shellParameters)
    : core(shellCore), parameters(shellParameters), converter(*this), midi(shellCore, shellParameters, converter) {
  midiIn.reserve(kMostMidiIn + kQueuedPrograms);
  midiOut.reserve(kMidiOutRoom);
  converter.reset();
  converter.setSampleRate(kEngineRate);
  if (!core.processor) {
    return;
  }
  BramelInstrument::Processor& processor = *core.processor;
  processor.editor = this;
  processor.sampleRate = kEngineRate;
  processor.generator().setSampleRate(kEngineRate);
  processor.generator().tempoChanged(tempo.load());
  takesInput = processor.generator().inputCount() != 0;
  latest.resize(static_cast<std::size_t>(processor.controller().macroCount()));
}

void ShellBlock::setSampleRate(float rate) {
  if (!std::isfinite(rate) || rate <= 0.0F) {
    return;
  }
  const MainLock lock(core.mainMutex);
  midi.emptyInbox(lock);  // Messages are converted by the rate at which they came.
  hostSampleRate = rate;
  converter.setSampleRate(rate);
}

void ShellBlock::setTempo(float bpm) {
  if (bpm == tempo.load(std::memory_order_relaxed)) {
    return;  // The usual case: saves a lock per block.
  }
  const MainLock lock(core.mainMutex);
  if (!std::isfinite(bpm) || bpm == tempo) {
    return;  // Another thread may have set the same tempo meanwhile.
  }
  tempo = bpm;
  if (core.processor) {
    core.processor->generator().tempoChanged(bpm);
  }
}

void ShellBlock::resume() {
  const MainLock lock(core.mainMutex);
  if (!core.processor) {
    return;
  }
  active = true;
  // Old sound must not be heard: drops messages that no block has fetched, and the resamplers' tails.
  converter.reset();
  midi.emptyInbox(lock);  // May overflow the converter's queue into `midiIn`.
  converter.dropEvents();
  midiIn.clear();
  converter.setSampleRate(converter.sampleRate());
  core.processor->generator().activate();
}

void ShellBlock::suspend() {
  const MainLock lock(core.mainMutex);
  if (core.processor) {
    core.processor->generator().deactivate();
    active = false;
  }
}

bool ShellBlock::isActive() const {
  const MainLock lock(core.mainMutex);
  return active;
}

void ShellBlock::makeOuts() {
  const MainLock lock(core.mainMutex);
  converter.makeOuts();
}

void ShellBlock::process(float** inputs, std::span<float*> outputs, std::int32_t frames) {
  if (frames < 0 || (frames != 0 && hasNull(outputs))) {
    return;
  }
  const cofu::registers::DenormalGuard guard;
  const MainLock lock(core.mainMutex);
  core.audioThreads.note(lock);
  midi.emptyInbox(lock);
  ChannelPair absent{};
  float** const given = inputs != nullptr && takesInput ? inputs : absent.data();
  if (frames != 0 && !hasNull(given)) {
    copyInputs(given, outputs.data(), frames);
  }
  const MainLock* const outer = std::exchange(blockLock, &lock);  // Not null if the host calls from inside a block.
  converter.processOuts(given, outputs, frames);
  blockLock = outer;
}

void ShellBlock::onProcess(float** inputs, std::span<float*> outputs, std::int32_t frames) {
  isSilent = true;
  if (frames <= kLongestPiece) {
    runBlock(inputs, outputs, frames);
    return;
  }
  for (std::int32_t offset = 0; offset < frames; offset += kLongestPiece) {
    ChannelPair pieceIn{};
    if (inputs != nullptr) {
      pieceIn = channelsAt<kChannels>(std::span(inputs, kChannels), offset);
    }
    auto pieceOut = channelsAt<vimo::kAllChannels>(outputs, offset);
    runBlock(inputs == nullptr ? nullptr : pieceIn.data(), std::span(pieceOut).first(outputs.size()),
             std::min(frames - offset, kLongestPiece));
  }
}

void ShellBlock::runBlock(float** inputs, std::span<float*> outputs, std::int32_t frames) {
  if (!core.processor) {
    isSilent = false;
    for (float* const channel : outputs) {
      if (channel != nullptr) {
        std::fill_n(channel, static_cast<std::size_t>(frames), 0.0F);
      }
    }
    return;
  }
  takeWrites();
  vimo::ProcessBlock block;
  block.inputs = inputs;
  block.outputs = outputs.data();
  block.outputCount = static_cast<std::int32_t>(outputs.size());
  block.inputCount = inputs == nullptr ? 0 : static_cast<std::int32_t>(kChannels);
  block.frames = frames;
  block.automationRing = &automationRing;
  block.notificationRing = &notificationRing;
  block.midiIn = &midiIn;
  block.midiOut = &midiOut;
  core.processor->process(block, 0, 1.0, 0.0);
  isSilent &= block.isSilent;
  sendMidiOut();
  cofu::core::vouchFor([this] {  // Short messages, which allocate nothing.
    midiIn.clear();
    midiOut.clear();
  });
  reportChanges();
}

void ShellBlock::takeWrites() {
  if (parameters.waiting.isEmpty()) {
    return;
  }
  parameters.waiting.takeAll([this](const ProcessorEvent& event) {
    latest.put(event);
    const bool isFloat = event.tag == ProcessorEventTag::floatValue;
    vimo::MacroCommand command;
    command.index = static_cast<std::uint32_t>(event.parameterId);
    command.value = isFloat ? event.value : 0.0F;
    command.object = isFloat ? 0 : event.integer;
    core.processor->commandQueue.put(command);
    auto* const macro = isFloat ? core.processor->controller().macroAt(event.parameterId) : nullptr;
    if (macro != nullptr) {
      macro->echoValue = event.value;
    }
  });
}

void ShellBlock::macroMoved(std::uint32_t index, float /*value*/, std::uint32_t /*frame*/) { latest.touch(index); }

void ShellBlock::sendMidiOut() {
  if (midiOut.empty()) {
    return;
  }
  cofu::core::mayWait([this] {  // The host's code.
    core.tellHost([this](BramelInstrumentHostCallback& host) {
      for (const vimo::MidiEvent& event : midiOut) {
        if (event.size() <= kLongestMidiOut) {
          host.sendMidi(event.data(), event.size(), static_cast<std::int32_t>(event.frame));
        }
      }
    });
  });
}

void ShellBlock::reportChanges() {
  if (!latest.isEmpty()) {
    latest.sort();
    parameters.cache.store(latest);
    tellSounds();
  }
  if (hasSelected) {  // After the writes, because the program was selected after them.
    hasSelected = false;
    parameters.cache.refresh(core.processor->controller());
  }
  core.tellEditor(*blockLock, [this](BramelInstrumentUICallback& editor) {
    latest.forEach([&editor](std::size_t id) { editor.parameterChanged(id); });
    editor.releaseUpdates();
    editor.holdUpdates();
  });
  latest.clear();
}

void ShellBlock::tellSounds() {
  for (std::size_t pad = 0; pad < panel::kPads; ++pad) {
    if (latest.contains(panel::padMacro(pad, panel::kSample))) {
      core.tellHost([](BramelInstrumentHostCallback& host) { host.soundChanged(); });
      return;
    }
  }
}

void ShellBlock::flush(const MainLock& lock) {
  // A listener that asks for a value inside a block must not start another block.
  if (blockLock == nullptr) {
    blockLock = &lock;
    runBlock(nullptr, {}, 0);
    blockLock = nullptr;
  }
}

void ShellBlock::flushWrites(const MainLock& lock) {
  if (!parameters.waiting.isEmpty()) {
    flush(lock);
  }
}

void ShellBlock::onMidi(std::uint32_t packed, std::int32_t frame) {
  if (midiIn.size() >= kMostMidiIn) {
    return;
  }
  const std::array<std::uint8_t, 3> bytes{static_cast<std::uint8_t>(packed >> 24),
                                          static_cast<std::uint8_t>(packed >> 16),
                                          static_cast<std::uint8_t>(packed >> 8)};
  // Within the reserved room; a message of three bytes is stored inline.
  cofu::core::vouchFor([&] { midiIn.emplace_back(bytes, static_cast<std::uint32_t>(std::max(frame, 0))); });
}

void ShellBlock::sendKeyboardMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) {
  if (data != nullptr && size != 0 && isActive()) {
    midi.sendFromKeyboard(data, size, deltaFrames);
  }
}

}  // namespace tesh::bramel::vst
