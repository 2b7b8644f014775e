// Cuts the device's blocks into blocks of the instrument, and passes each its events.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/standalone/Playback.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

#include "host/standalone/SoundDevice.h"

namespace tesh::bramel::standalone {
namespace {

constexpr int kChannels = 2;
constexpr std::size_t kEventBytes = 65536;  ///< More than any block needs, so that no block allocates.
constexpr juce::uint8 kPadVelocity = 100;   ///< The same as the panel's own pads.

constexpr double kToneHertz = 440.0;
constexpr double kToneSeconds = 0.5;
constexpr double kToneFadeSeconds = 0.01;
constexpr double kToneLevel = 0.125;  ///< -18 dB.

}  // namespace

Playback::Playback(juce::AudioProcessor& instrument, DemoScore score)
    : processor(&instrument), demoPlayer(std::move(score)) {
  live.ensureSize(kEventBytes);
  events.ensureSize(kEventBytes);
  collector.ensureStorageAllocated(kEventBytes);
  processor->setPlayHead(this);
}

Playback::~Playback() { processor->setPlayHead(nullptr); }

void Playback::setInstrument(juce::AudioProcessor& instrument) {
  instrument.setPlayHead(this);
  if (sampleRate > 0.0) {
    prepareInstrument(instrument);
  }
  juce::AudioProcessor* before = nullptr;
  {
    const juce::SpinLock::ScopedLockType lock(instrumentLock);
    before = std::exchange(processor, &instrument);
  }
  before->setPlayHead(nullptr);
}

void Playback::playNote(int note, bool isOn) {
  if (sampleRate <= 0.0) {
    return;
  }
  auto message = isOn ? juce::MidiMessage::noteOn(1, note, kPadVelocity) : juce::MidiMessage::noteOff(1, note);
  message.setTimeStamp(juce::Time::getMillisecondCounterHiRes() * 0.001);
  collector.addMessageToQueue(message);
  if (isOn) {
    panelNote = note;
  }
}

void Playback::setNoteMap(const cofu::core::NoteMap& map) {
  const std::scoped_lock lock(translatorMutex);
  translator.setMap(map);
}

Playback::Heard Playback::takeHeard() {
  return {.panelNote = panelNote.exchange(-1),
          .inputNote = inputNote.exchange(-1),
          .inputController = inputController.exchange(-1)};
}

void Playback::playTestTone() { isToneWanted = true; }

void Playback::audioDeviceAboutToStart(juce::AudioIODevice* device) {
  prepare(device->getCurrentSampleRate(), device->getCurrentBufferSizeSamples(), SoundDevice::moreOutputsOf(*device));
}

void Playback::prepare(double rate, int frames, int moreOutputs) {
  sampleRate = rate;
  longestBlock = std::max(frames, 1);
  hasOuts = moreOutputs > 0;
  sound.setSize(kChannels + moreOutputs, longestBlock);
  collector.reset(rate);
  demoPlayer.setSampleRate(rate);
  toneFrames = static_cast<int>(kToneSeconds * rate);
  toneFrame = toneFrames;
  prepareInstrument(*processor);
}

void Playback::prepareInstrument(juce::AudioProcessor& instrument) const {
  if (hasOuts) {
    instrument.enableAllBuses();
  } else {
    instrument.disableNonMainBuses();
  }
  instrument.setRateAndBufferSizeDetails(sampleRate, longestBlock);
  instrument.prepareToPlay(sampleRate, longestBlock);
}

void Playback::audioDeviceStopped() { processor->releaseResources(); }

void Playback::handleIncomingMidiMessage(juce::MidiInput* /*source*/, const juce::MidiMessage& message) {
  constexpr int kShortMessage = 3;
  if (message.isNoteOn()) {
    inputNote = message.getNoteNumber();
  } else if (message.isController()) {
    inputController = message.getControllerNumber();
  }
  if (sampleRate <= 0.0) {
    return;
  }
  if (message.getRawDataSize() != kShortMessage) {
    collector.addMessageToQueue(message);
    return;
  }
  const auto* const raw = message.getRawData();
  std::array<std::uint8_t, kShortMessage> bytes{raw[0], raw[1], raw[2]};
  const std::scoped_lock lock(translatorMutex);
  const auto verdict = translator.translate(bytes);
  if (verdict.padToEnd) {
    collector.addMessageToQueue(
        juce::MidiMessage::noteOff(message.getChannel(), *verdict.padToEnd).withTimeStamp(message.getTimeStamp()));
  }
  if (verdict.isPlayed) {
    collector.addMessageToQueue(juce::MidiMessage(bytes.data(), kShortMessage, message.getTimeStamp()));
  }
}

void Playback::audioDeviceIOCallbackWithContext(const float* const* /*inputs*/, int /*inputCount*/,
                                                float* const* outputs, int outputCount, int frames,
                                                const juce::AudioIODeviceCallbackContext& /*context*/) {
  const juce::ScopedNoDenormals noDenormals;
  ++blocks;
  live.clear();
  collector.removeNextBlockOfMessages(live, frames);
  for (int from = 0; from < frames;) {
    const int part = demoPlayer.beginBlock(std::min(frames - from, longestBlock));
    events.clear();
    events.addEvents(live, from, part, -from);
    render(part);
    copyTo(outputs, outputCount, from, part);
    from += part;
  }
}

void Playback::render(int frames) {
  juce::AudioBuffer<float> block(sound.getArrayOfWritePointers(), sound.getNumChannels(), frames);
  block.clear();
  demoPlayer.addEvents(events, frames);
  if (const juce::SpinLock::ScopedTryLockType lock(instrumentLock); lock.isLocked()) {
    const juce::ScopedLock callback(processor->getCallbackLock());
    if (!processor->isSuspended()) {
      processor->processBlock(block, events);
    }
  }
  demoPlayer.endBlock(frames);
  hearPanel();
  addTestTone(frames);
}

/// The messages that the instrument sends to its host are the notes of its panel.
void Playback::hearPanel() {
  for (const juce::MidiMessageMetadata event : events) {
    if (event.getMessage().isNoteOn()) {
      panelNote = event.data[1];
    }
  }
}

void Playback::addTestTone(int frames) {
  if (isToneWanted.exchange(false)) {
    toneFrame = 0;
  }
  const double fade = kToneFadeSeconds * sampleRate;
  for (int frame = 0; frame < frames && toneFrame < toneFrames; ++frame, ++toneFrame) {
    const double edge = std::min({1.0, toneFrame / fade, (toneFrames - toneFrame) / fade});
    const double phase = 2.0 * std::numbers::pi * kToneHertz * toneFrame / sampleRate;
    const auto value = static_cast<float>(kToneLevel * edge * std::sin(phase));
    sound.addSample(0, frame, value);
    sound.addSample(1, frame, value);
  }
}

void Playback::copyTo(float* const* outputs, int outputCount, int from, int frames) const {
  using Vectors = juce::FloatVectorOperations;
  const int more = sound.getNumChannels() - kChannels;
  const int own = std::max(outputCount - more, 0);
  for (int channel = 0; channel < own; ++channel) {
    if (channel < kChannels) {
      Vectors::copy(outputs[channel] + from, sound.getReadPointer(channel), frames);
    } else {
      Vectors::clear(outputs[channel] + from, frames);
    }
  }
  if (own == 1) {
    Vectors::add(outputs[0] + from, sound.getReadPointer(1), frames);
    Vectors::multiply(outputs[0] + from, 0.5F, frames);
  }
  for (int channel = own; channel < outputCount; ++channel) {
    if (outputs[channel] != nullptr) {
      Vectors::copy(outputs[channel] + from, sound.getReadPointer(channel - own + kChannels), frames);
    }
  }
}

juce::Optional<juce::AudioPlayHead::PositionInfo> Playback::getPosition() const {
  PositionInfo position;
  position.setBpm(demoPlayer.beatsPerMinute());
  position.setTimeSignature(juce::AudioPlayHead::TimeSignature{4, 4});
  position.setIsPlaying(demoPlayer.isMoving());
  position.setTimeInSamples(demoPlayer.frame());
  position.setTimeInSeconds(static_cast<double>(demoPlayer.frame()) / sampleRate);
  position.setPpqPosition(demoPlayer.beat());
  return position;
}

}  // namespace tesh::bramel::standalone
