// Passes a host's calls on to JUCE's hosting classes, and records the plug-in's calls.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "formhost/FormInstance.h"

#include <algorithm>
#include <cstring>

#include "formhost/FormFile.h"
#include "formhost/StateText.h"

namespace sivray::formhost {
namespace {

using hosting::HostCallKind;

/// Room for the events of a block, with their heads.
constexpr std::size_t kMidiBytes = 8192 * 16;
/// Time after which a window, its host and the X server have exchanged all their messages.
constexpr std::chrono::milliseconds kSettled{12};

/// Whether a message is as long as its status requires and all its data bytes are below 128.
bool isWhole(std::span<const std::uint8_t> bytes) {
  constexpr std::uint8_t kStatus = 0x80;
  constexpr std::uint8_t kSystemExclusive = 0xF0;
  if (bytes.empty() || bytes.front() < kStatus) {
    return false;
  }
  const auto length = static_cast<std::size_t>(juce::MidiMessage::getMessageLengthFromFirstByte(bytes.front()));
  const bool isLong = bytes.front() == kSystemExclusive && bytes.size() >= 2;
  return isLong || (bytes.front() != kSystemExclusive && bytes.size() == length &&
                    std::ranges::all_of(bytes.subspan(1), [](std::uint8_t byte) { return byte < kStatus; }));
}

}  // namespace

FormInstance::FormInstance(hosting::Form ownForm, std::unique_ptr<juce::AudioPluginInstance> instance,
                           const std::vector<std::string>& names)
    : form(ownForm), plugin(std::move(instance)), block(FormFile::kLongestBlock) {
  midi.ensureSize(kMidiBytes);
  std::map<std::string, juce::AudioProcessorParameter*> byName;
  for (auto* const parameter : plugin->getParameters()) {
    byName.emplace(parameter->getName(256).toStdString(), parameter);
  }
  for (const std::string& name : names) {
    const auto found = byName.find(name);
    if (found != byName.end()) {
      ownIndices[found->second->getParameterIndex()] = static_cast<int>(parameters.size());
    }
    parameters.push_back(found == byName.end() ? nullptr : found->second);
  }
  plugin->setPlayHead(this);
  plugin->addListener(this);
  start(44100.0F, FormFile::kLongestBlock);
}

FormInstance::~FormInstance() {
  closeEditor();
  plugin->removeListener(this);
  plugin->releaseResources();
}

void FormInstance::start(float sampleRate, int longestBlock) {
  // These forms forbid blocks longer than announced, which some checks play.
  block = std::max(longestBlock, FormFile::kLongestBlock);
  plugin->releaseResources();
  plugin->setRateAndBufferSizeDetails(static_cast<double>(sampleRate), block);
  plugin->prepareToPlay(static_cast<double>(sampleRate), block);
}

void FormInstance::restart() {
  const double rate = plugin->getSampleRate();
  plugin->releaseResources();
  plugin->prepareToPlay(rate, block);
}

juce::AudioProcessorParameter* FormInstance::at(int index) {
  return index >= 0 && index < parameterCount() ? parameters[static_cast<std::size_t>(index)] : nullptr;
}

void FormInstance::setParameter(int index, float value) {
  if (auto* const parameter = at(index)) {
    parameter->setValue(value);
  }
}

float FormInstance::parameter(int index) {
  auto* const parameter = at(index);
  return parameter == nullptr ? 0.0F : parameter->getValue();
}

std::string FormInstance::parameterName(int index) {
  auto* const parameter = at(index);
  return parameter == nullptr ? std::string() : parameter->getName(256).toStdString();
}

std::string FormInstance::parameterText(int index) {
  auto* const parameter = at(index);
  return parameter == nullptr ? std::string() : parameter->getCurrentValueAsText().toStdString();
}

std::vector<std::uint8_t> FormInstance::chunk() {
  juce::MemoryBlock state;
  plugin->getStateInformation(state);
  return unwrapState(form, {static_cast<const std::uint8_t*>(state.getData()), state.getSize()});
}

void FormInstance::setChunk(std::span<const std::uint8_t> bytes) {
  juce::MemoryBlock state;
  if (form == hosting::Form::lv2) {
    plugin->getStateInformation(state);
  }
  const auto wrapped = rewrapState(form, {static_cast<const std::uint8_t*>(state.getData()), state.getSize()}, bytes);
  plugin->setStateInformation(wrapped.data(), static_cast<int>(wrapped.size()));
}

int FormInstance::latencyFrames() {
  rest(kSettled);  // A VST 3 reports to its host through the message thread.
  return plugin->getLatencySamples();
}

void FormInstance::queueMidi(std::span<const std::uint8_t> bytes, int atFrame) {
  if (!isWhole(bytes)) {
    return;  // JUCE's host reads past the end of a truncated message, and past its tables for data above 127.
  }
  midi.addEvent(bytes.data(), static_cast<int>(bytes.size()), atFrame);
}

void FormInstance::process(float* left, float* right, int frames) {
  std::array<float*, 2> channels{left, right};
  juce::AudioBuffer<float> audio(channels.data(), static_cast<int>(channels.size()), frames);
  plugin->processBlock(audio, midi);
  for (const auto& event : midi) {
    recordMidi({event.data, static_cast<std::size_t>(event.numBytes)});
  }
  midi.clear();
  frame += frames;
  quarters += frames / plugin->getSampleRate() * tempo / 60.0;
}

juce::Optional<juce::AudioPlayHead::PositionInfo> FormInstance::getPosition() const {
  PositionInfo info;
  info.setTimeInSamples(frame);
  info.setTimeInSeconds(static_cast<double>(frame) / plugin->getSampleRate());
  info.setPpqPosition(quarters);
  info.setBpm(tempo);
  info.setIsPlaying(playing);
  return info;
}

void FormInstance::openEditor(void* window) {
  if (editor != nullptr || window == nullptr) {
    return;
  }
  editor.reset(plugin->createEditorIfNeeded());
  if (editor != nullptr) {
    editor->setOpaque(true);
    editor->setVisible(true);
    editor->setTopLeftPosition(0, 0);
    editor->addToDesktop(0, window);
    editor->addComponentListener(this);
    settleEditor();
  }
}

void FormInstance::closeEditor() {
  if (editor != nullptr) {
    editor->removeComponentListener(this);
    editor.reset();
    settleEditor();
  }
}

hosting::WindowSize FormInstance::editorSize() {
  return editor == nullptr ? hosting::WindowSize{} : hosting::WindowSize{editor->getWidth(), editor->getHeight()};
}

bool FormInstance::setEditorScale(float scale) {
  if (editor == nullptr) {
    return false;
  }
  editor->setScaleFactor(scale);
  settleEditor();
  return true;
}

void FormInstance::settleEditor() { rest(kSettled); }

void FormInstance::audioProcessorParameterChanged(juce::AudioProcessor*, int index, float value) {
  recordAt(HostCallKind::automate, index, value);
}

void FormInstance::audioProcessorChanged(juce::AudioProcessor*, const ChangeDetails&) {
  recordAt(HostCallKind::updateDisplay, -1, 0.0F);
}

void FormInstance::audioProcessorParameterChangeGestureBegin(juce::AudioProcessor*, int index) {
  recordAt(HostCallKind::beginEdit, index, 0.0F);
}

void FormInstance::audioProcessorParameterChangeGestureEnd(juce::AudioProcessor*, int index) {
  recordAt(HostCallKind::endEdit, index, 0.0F);
}

void FormInstance::componentMovedOrResized(juce::Component&, bool, bool wasResized) {
  if (wasResized) {
    record({HostCallKind::sizeWindow, 0, 0.0F, editorSize()});
  }
}

void FormInstance::recordAt(HostCallKind kind, int hostIndex, float value) {
  const auto own = ownIndices.find(hostIndex);
  if (hostIndex >= 0 && own == ownIndices.end()) {
    return;
  }
  record({kind, hostIndex < 0 ? 0 : own->second, value, {}});
}

}  // namespace sivray::formhost
