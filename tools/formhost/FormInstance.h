// One instance in JUCE's host. Parameters are looked up by name, because the forms order them differently.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "hosting/HostedPlugin.h"

namespace sivray::formhost {

class FormInstance final : public hosting::HostedPlugin,
                           private juce::AudioPlayHead,
                           private juce::AudioProcessorListener,
                           private juce::ComponentListener {
 public:
  FormInstance(hosting::Form form, std::unique_ptr<juce::AudioPluginInstance> instance,
               const std::vector<std::string>& names);
  ~FormInstance() override;

  void start(float sampleRate, int longestBlock) override;
  void setSampleRate(float sampleRate) override { start(sampleRate, block); }
  void restart() override;

  int parameterCount() const override { return static_cast<int>(parameters.size()); }
  void setParameter(int index, float value) override;
  float parameter(int index) override;
  std::string parameterName(int index) override;
  std::string parameterText(int index) override;

  std::vector<std::uint8_t> chunk() override;
  void setChunk(std::span<const std::uint8_t> bytes) override;

  int currentProgram() override { return plugin->getCurrentProgram(); }
  int programCount() override { return plugin->getNumPrograms(); }
  std::string programName(int index) override { return plugin->getProgramName(index).toStdString(); }
  void selectProgram(int index) override { plugin->setCurrentProgram(index); }
  int latencyFrames() override;

  void queueMidi(std::span<const std::uint8_t> bytes, int frame) override;
  void process(float* left, float* right, int frames) override;

  void openEditor(void* window) override;
  void closeEditor() override;
  void leaveWindow() override { closeEditor(); }
  hosting::WindowSize editorSize() override;
  bool setEditorScale(float scale) override;
  void settleEditor() override;

 private:
  juce::Optional<PositionInfo> getPosition() const override;
  void audioProcessorParameterChanged(juce::AudioProcessor*, int index, float value) override;
  void audioProcessorChanged(juce::AudioProcessor*, const ChangeDetails& details) override;
  void audioProcessorParameterChangeGestureBegin(juce::AudioProcessor*, int index) override;
  void audioProcessorParameterChangeGestureEnd(juce::AudioProcessor*, int index) override;
  void componentMovedOrResized(juce::Component& component, bool wasMoved, bool wasResized) override;

  juce::AudioProcessorParameter* at(int index);
  void recordAt(hosting::HostCallKind kind, int hostIndex, float value);

  hosting::Form form;
  std::unique_ptr<juce::AudioPluginInstance> plugin;
  std::vector<juce::AudioProcessorParameter*>
      parameters;                 ///< By the VST 2 form's index; null where the name is missing.
  std::map<int, int> ownIndices;  ///< VST 2 indices, by the host's index.
  std::unique_ptr<juce::AudioProcessorEditor> editor;
  juce::MidiBuffer midi;
  std::int64_t frame = 0;
  double quarters = 0.0;
  int block;
};

}  // namespace sivray::formhost
