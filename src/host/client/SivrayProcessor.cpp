// The calls of JUCE's wrappers, each turned into one on the instrument.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/client/SivrayProcessor.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <exception>
#include <limits>
#include <utility>
#include <vector>

#include "host/client/ClientParameter.h"
#include "host/client/ClientReports.h"
#include "host/client/SivrayProcessorEditor.h"
#include "host/editor/BramelInstrumentEditor.h"
#include "host/message/MessageThread.h"
#include "host/resample/CFsConverterWrapper.h"
#include "host/shell/Construction.h"
#include "host/shell/HostWrites.h"
#include "host/shell/OutNames.h"
#include "host/shell/ProgramBanks.h"
#include "host/shell/SoundNames.h"
#include "platform/Files.h"
#include "platform/SpecialFolders.h"
#include "storage/paths/Paths.h"
#include "viewmodels/texts/PanelMacros.h"
#include "views/SivrayEditorProvider.h"

namespace tesh::bramel::vst {
namespace {

constexpr std::size_t kMessageBytes = 3;

/// Why no instrument can be made of the installed content.
std::string faultOfContent() {
  if (const std::string base = sharedBase(); !base.empty() && platform::exists(base)) {
    return "Sivray's files are missing or damaged: " +
           platform::NativePath(pathFor(kBramelPath_Macro, "Sivray")).shown();
  }
  std::string text = "Sivray's sounds are not installed. None of these folders holds " +
                     platform::NativePath("Tesh\\Bramel").shown() + ":";
  for (const std::string& place : platform::commonFilesPlaces()) {
    text += "\n" + platform::NativePath(place).shown();
  }
  return text;
}

/// Where the instrument's files are missing, makes one that is silent and writes into `fault` why.
std::shared_ptr<BramelInstrument> makeInstrumentOrSilence(std::string& fault) {
  try {
    return makeInstrument();
  } catch (const std::exception&) {
    fault = faultOfContent();
    return std::make_shared<BramelInstrument>(nullptr);
  }
}

}  // namespace

class SivrayProcessor::Impl {
 public:
  std::string fault;
  const std::shared_ptr<BramelInstrument> instrument = makeInstrumentOrSilence(fault);
  std::shared_ptr<BramelInstrumentEditor> panel;  ///< Null where files are missing.
  std::shared_ptr<HostReports> hostReports;       ///< The instrument holds this one and the panel weakly.
  HostWrites hostWrites{*instrument};
  std::atomic<int> latestProgram = 0;  ///< Of the first factory bank.
  bool isMoving = false;               ///< The host's transport, as the last block found it.
  juce::MemoryBlock unreadState;       ///< What the host gave while the instrument's files were missing.
};

/// The main out, and those of pads and effect, which are off at first.
juce::AudioProcessor::BusesProperties SivrayProcessor::stereoOuts() {
  BusesProperties buses;
  for (std::size_t out = 0; out < kOutCount; ++out) {
    buses.addBus(false, outName(out), juce::AudioChannelSet::stereo(), out == 0);
  }
  return buses;
}

SivrayProcessor::SivrayProcessor() : AudioProcessor(stereoOuts()), impl(std::make_unique<Impl>()) {
  if (impl->fault.empty()) {
    impl->panel = std::make_shared<BramelInstrumentEditor>(
        impl->instrument, std::make_shared<plugin::sivray::SivrayEditorProvider>(), MessageThread::Kind::running);
  }
  getCurrentProgram();  // Takes in the first program, so that the parameters begin with its values.
  BramelInstrument& shell = *impl->instrument;
  std::vector<ClientParameter*> shown;
  for (std::uint64_t index = 0; index < shell.parameterCount(); ++index) {
    auto parameter = std::make_unique<ClientParameter>(impl->instrument, shell.parameterId(index));
    shown.push_back(parameter.get());
    addParameter(parameter.release());
  }
  impl->hostReports = std::make_shared<HostReports>(*this, std::move(shown));
  shell.setHostCallback(impl->hostReports);
  shell.setUICallback(impl->panel);
}

SivrayProcessor::~SivrayProcessor() = default;

const std::shared_ptr<BramelInstrument>& SivrayProcessor::instrument() const { return impl->instrument; }
const std::shared_ptr<BramelInstrumentEditor>& SivrayProcessor::panel() const { return impl->panel; }
const std::string& SivrayProcessor::fault() const { return impl->fault; }

const juce::String SivrayProcessor::getName() const { return "Sivray"; }

// Audio.

void SivrayProcessor::prepareToPlay(double sampleRate, int /*maximumExpectedSamplesPerBlock*/) {
  if (impl->instrument->isActive()) {
    impl->instrument->suspend();
  }
  impl->instrument->setSampleRate(static_cast<float>(sampleRate));
  if (getTotalNumOutputChannels() > vimo::kMainChannels) {
    impl->instrument->makeOuts();
  }
  impl->instrument->resume();
  setLatencySamples(CFsConverterWrapper::latency(sampleRate));
}

void SivrayProcessor::releaseResources() { impl->instrument->suspend(); }

bool SivrayProcessor::isBusesLayoutSupported(const BusesLayout& layouts) const {
  const auto stereo = juce::AudioChannelSet::stereo();
  return layouts.inputBuses.isEmpty() && layouts.outputBuses.size() == static_cast<int>(kOutCount) &&
         layouts.getMainOutputChannelSet() == stereo &&
         std::all_of(layouts.outputBuses.begin(), layouts.outputBuses.end(),
                     [&](const auto& channels) { return channels.isDisabled() || channels == stereo; });
}

void SivrayProcessor::processBlock(juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midi) {
  BramelInstrument& shell = *impl->instrument;
  impl->hostWrites.handOver();
  for (const juce::MidiMessageMetadata event : midi) {
    if (event.numBytes > 0 && event.numBytes <= static_cast<int>(kMessageBytes) &&
        event.samplePosition <= BramelInstrument::kFarthestFrames) {
      const auto byteAt = [&event](int at) { return at < event.numBytes ? event.data[at] : std::uint8_t{0}; };
      const std::array<std::uint8_t, kMessageBytes> message{byteAt(0), byteAt(1), byteAt(2)};
      shell.sendMidi(message.data(), message.size(), event.samplePosition);
    }
  }
  midi.data.clearQuick();  // Like clear(), which JUCE's own build compiles to a loop over the bytes.
  takePosition();
  if (buffer.getNumChannels() > vimo::kMainChannels) {
    processOuts(buffer);
  } else if (buffer.getNumChannels() == vimo::kMainChannels) {
    std::array<float*, vimo::kMainChannels> outputs{buffer.getWritePointer(0), buffer.getWritePointer(1)};
    shell.process(nullptr, outputs.data(), buffer.getNumSamples());
  } else {
    buffer.clear();
  }
  if (buffer.getNumChannels() > 0) {
    impl->hostReports->takeMidi(midi, buffer.getNumSamples());
  }
}

/// The buffer holds only the channels of the outs that are on.
void SivrayProcessor::processOuts(juce::AudioBuffer<float>& buffer) {
  std::array<float*, vimo::kAllChannels> outputs{};
  int next = 0;
  for (std::size_t out = 0; out < kOutCount && next + 1 < buffer.getNumChannels(); ++out) {
    if (getBus(false, static_cast<int>(out))->isEnabled()) {
      outputs[2 * out] = buffer.getWritePointer(next);
      outputs[2 * out + 1] = buffer.getWritePointer(next + 1);
      next += 2;
    }
  }
  for (; next < buffer.getNumChannels(); ++next) {
    buffer.clear(next, 0, buffer.getNumSamples());
  }
  impl->instrument->processOuts(outputs, buffer.getNumSamples());
}

void SivrayProcessor::setParameter(int parameterIndex, float newValue) {
  const auto& parameters = getParameters();
  if (parameterIndex < 0 || parameterIndex >= parameters.size()) {
    return;
  }
  auto* const parameter = static_cast<ClientParameter*>(parameters.getUnchecked(parameterIndex));
  if (newValue >= 0.0F && newValue <= 1.0F) {
    impl->hostWrites.put(parameter->shellId(), newValue);
  }
}

void SivrayProcessor::processBlockBypassed(juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midi) {
  processBlock(buffer, midi);
  buffer.clear();
}

void SivrayProcessor::takePosition() {
  juce::AudioPlayHead* const host = getPlayHead();
  if (host == nullptr) {
    return;
  }
  const auto position = cofu::core::mayWait([host] { return host->getPosition(); });  // The host's code.
  if (!position) {
    return;
  }
  if (const auto bpm = position->getBpm()) {
    impl->instrument->setHostTempo(*bpm);
  }
  const bool moves = position->getIsPlaying() || position->getIsRecording();
  if (moves != impl->isMoving) {
    impl->isMoving = moves;
    impl->instrument->setTransport(moves);
  }
}

double SivrayProcessor::getTailLengthSeconds() const { return std::numeric_limits<double>::infinity(); }

// Programs.

int SivrayProcessor::getNumPrograms() {
  constexpr std::uint64_t kMost = std::numeric_limits<int>::max();
  return std::max(1, static_cast<int>(std::min(impl->instrument->programCount(kFactoryBank), kMost)));
}

int SivrayProcessor::getCurrentProgram() {
  const auto count = static_cast<std::uint64_t>(getNumPrograms());
  const std::uint64_t program = impl->instrument->currentProgram();
  if (impl->instrument->currentBank() == kFactoryBank && program < count) {
    impl->latestProgram = static_cast<int>(program);
  }
  return impl->latestProgram;
}

void SivrayProcessor::setCurrentProgram(int index) {
  if (index >= 0 && static_cast<std::uint64_t>(index) < impl->instrument->programCount(kFactoryBank)) {
    impl->latestProgram = index;
    impl->instrument->setProgram(kFactoryBank, static_cast<std::uint64_t>(index), Origin::host);
  }
}

const juce::String SivrayProcessor::getProgramName(int index) {
  return index < 0 ? juce::String()
                   : juce::String::fromUTF8(
                         impl->instrument->programName(kFactoryBank, static_cast<std::uint64_t>(index)).c_str());
}

bool SivrayProcessor::isProgramOfPanel() const { return impl->hostReports->latestOrigin() == Origin::panel; }

// Names.

std::string SivrayProcessor::keyName(int key) const { return soundNameOnKey(*impl->instrument, key); }

void SivrayProcessor::hostMoved(int parameterIndex) {
  const auto& parameters = getParameters();
  if (parameterIndex >= 0 && parameterIndex < parameters.size() &&
      panel::choosesSound(static_cast<ClientParameter*>(parameters.getUnchecked(parameterIndex))->shellId())) {
    impl->hostReports->soundMoved();
  }
}

bool SivrayProcessor::takeNamesChanged() { return impl->hostReports->takeNamesChanged(); }

// State.

void SivrayProcessor::getStateInformation(juce::MemoryBlock& destination) {
  if (impl->panel == nullptr) {
    destination = impl->unreadState;
    return;
  }
  const std::vector<std::uint8_t> state = impl->instrument->getState();
  destination.replaceAll(state.data(), state.size());
}

void SivrayProcessor::setStateInformation(const void* data, int sizeInBytes) {
  if (data == nullptr || sizeInBytes < 0) {
    return;
  }
  if (impl->panel == nullptr) {
    impl->unreadState.replaceAll(data, static_cast<std::size_t>(sizeInBytes));
    return;
  }
  impl->hostReports->stateComes();
  impl->instrument->setState(data, static_cast<std::size_t>(sizeInBytes));
  impl->hostReports->soundChanged();
}

juce::AudioProcessorEditor* SivrayProcessor::createEditor() { return new SivrayProcessorEditor(*this); }

}  // namespace tesh::bramel::vst
