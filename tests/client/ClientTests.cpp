// Hosts of the other forms get the same sound and reports as VST 2 hosts.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>
#include <utility>

#include "client/ClientScene.h"
#include "host/editor/BramelInstrumentEditor.h"
#include "host/resample/CFsConverterWrapper.h"
#include "support/QuietSides.h"

namespace client {
namespace {

class ClientAt : public Client, public testing::WithParamInterface<float> {};

TEST_P(ClientAt, GivesTheSamplesOfTheVst2PluginInTheSameBlocks) {
  const float rate = GetParam();
  const Plugin plugin(rate);
  SivrayProcessor processor;
  processor.prepareToPlay(static_cast<double>(rate), 512);
  Samples left;
  Samples right;
  juce::AudioBuffer<float> buffer;
  juce::MidiBuffer midi;
  float loudest = 0.0F;
  for (const Block& block : randomBlocks(300, plugin.effect->numParams)) {
    plugin.render(block, left, right);
    render(processor, block, buffer, midi);
    const auto size = left.size() * sizeof(float);
    ASSERT_EQ(std::memcmp(buffer.getReadPointer(0), left.data(), size), 0);
    ASSERT_EQ(std::memcmp(buffer.getReadPointer(1), right.data(), size), 0);
    loudest = std::max(loudest, buffer.getMagnitude(0, block.frames));
    for (int index = 0; index < plugin.effect->numParams; ++index) {
      ASSERT_EQ(processor.getParameters()[index]->getValue(), plugin.effect->getParameter(plugin.effect, index));
    }
  }
  EXPECT_GT(loudest, 0.1F);
}

INSTANTIATE_TEST_SUITE_P(Rates, ClientAt, testing::Values(44100.0F, 48000.0F, 96000.0F));

TEST_F(Client, RendersThoseOutsThatAreOnBesideTheSameMainOne) {
  SivrayProcessor plain;
  SivrayProcessor processor;
  ASSERT_EQ(processor.getBusCount(false), 10);
  EXPECT_EQ(processor.getTotalNumOutputChannels(), 2);
  EXPECT_EQ(processor.getBus(false, 9)->getName(), "Effect");
  auto layout = processor.getBusesLayout();
  layout.outputBuses.getReference(3) = layout.outputBuses.getReference(1) = juce::AudioChannelSet::mono();
  EXPECT_FALSE(processor.checkBusesLayoutSupported(layout));
  // The outputs of pads 1 and 3. All but the second of the four pairs sound.
  layout.outputBuses.getReference(3) = layout.outputBuses.getReference(1) = juce::AudioChannelSet::stereo();
  layout.outputBuses.getReference(2) = juce::AudioChannelSet::stereo();
  ASSERT_TRUE(processor.setBusesLayout(layout));
  ASSERT_EQ(processor.getTotalNumOutputChannels(), 8);
  for (SivrayProcessor* const each : {&plain, &processor}) {
    each->prepareToPlay(48000.0, 512);
  }
  juce::AudioBuffer<float> main(2, 512);
  juce::AudioBuffer<float> all(8, 512);
  for (int block = 0; block < 4; ++block) {
    for (auto* const buffer : {&main, &all}) {
      juce::MidiBuffer midi;
      midi.addEvent(juce::MidiMessage::noteOn(1, 36, juce::uint8{100}), 10);
      midi.addEvent(juce::MidiMessage::noteOn(1, 38, juce::uint8{100}), 90);
      (buffer == &main ? plain : processor).processBlock(*buffer, midi);
    }
    for (int channel = 0; channel < 2; ++channel) {
      ASSERT_EQ(std::memcmp(main.getReadPointer(channel), all.getReadPointer(channel), 512 * sizeof(float)), 0);
    }
  }
  EXPECT_GT(all.getMagnitude(2, 0, 512), 0.01F);
  EXPECT_EQ(all.getMagnitude(4, 0, 512), 0.0F);
  EXPECT_GT(all.getMagnitude(6, 0, 512), 0.01F);
}

TEST_F(Client, ShowsTheParametersOfTheVst2PluginUnderNamesThatStay) {
  const Plugin plugin(44100.0F);
  SivrayProcessor processor;
  ASSERT_EQ(processor.getParameters().size(), plugin.effect->numParams);
  for (int index = 0; index < plugin.effect->numParams; ++index) {
    auto* const parameter = dynamic_cast<juce::AudioProcessorParameterWithID*>(processor.getParameters()[index]);
    const int macro = index < 40 ? index / 5 * 6 + index % 5 : index + 8;  // The sixth of each pad is hidden.
    EXPECT_EQ(parameter->paramID, "macro" + juce::String(macro));
    EXPECT_EQ(parameter->getName(100).toStdString(), plugin.text(effGetParamName, index));
    for (const float value : {0.0F, 0.3F, 1.0F}) {
      plugin.effect->setParameter(plugin.effect, index, value);
      const juce::String text = parameter->getText(value, 100);
      EXPECT_EQ(text.toStdString(), plugin.text(effGetParamDisplay, index));
      EXPECT_EQ(parameter->getText(parameter->getValueForText(text), 100), text);
    }
  }
}

TEST_F(Client, TellsTheHostOfGesturesAndOfAProgramOfThePanel) {
  SivrayProcessor processor;
  NotingHost host;
  processor.addListener(&host);
  using Told = std::vector<std::string>;
  const auto instrument = processor.instrument();
  instrument->setParameterFromEditor(7, 0.25F);
  EXPECT_EQ(std::exchange(host.told, {}), (Told{"begin 6 0.80", "set 6 0.25", "end 6 0.25"}));
  instrument->beginGesture(7);
  instrument->setParameterFromEditor(7, 0.5F);
  instrument->endGesture(7);
  EXPECT_EQ(std::exchange(host.told, {}), (Told{"begin 6 0.25", "set 6 0.50", "end 6 0.50"}));

  instrument->setProgram(0, 1);  // The panel selects a program this way.
  EXPECT_EQ(processor.getCurrentProgram(), 1);
  EXPECT_EQ(processor.getParameters()[kEffectType]->getValue(), 1.0F);
  for (int round = 0; round < 100 && host.told.empty(); ++round) {
    juce::MessageManager::getInstance()->runDispatchLoopUntil(20);
  }
  juce::MessageManager::getInstance()->runDispatchLoopUntil(20);
  EXPECT_EQ(host.told, Told{"program"}) << "and no edits that nobody made";
  processor.removeListener(&host);
}

TEST_F(Client, TellsAnLv2HostThatThePanelHasChangedItsState) {
  juce::AudioProcessor::setTypeOfNextNewPlugin(juce::AudioProcessor::wrapperType_LV2);
  SivrayProcessor processor;
  juce::AudioProcessor::setTypeOfNextNewPlugin(juce::AudioProcessor::wrapperType_Undefined);
  NotingHost host;
  processor.addListener(&host);
  using Told = std::vector<std::string>;
  processor.instrument()->setParameterFromEditor(7, 0.25F);
  EXPECT_EQ(std::exchange(host.told, {}), (Told{"begin 6 0.80", "set 6 0.25", "end 6 0.25", "state"}));
  processor.instrument()->setProgram(0, 1);  // The panel selects a program this way.
  EXPECT_EQ(std::exchange(host.told, {}), Told{"state"});
  processor.setCurrentProgram(0);
  EXPECT_EQ(host.told, Told{}) << "of a program of the host's";
  processor.removeListener(&host);
}

TEST_F(Client, SelectsTheHostsProgramAtOnceAndHasItReadTheValuesLater) {
  SivrayProcessor processor;
  processor.setCurrentProgram(1);
  EXPECT_EQ(processor.getParameters()[kEffectType]->getValue(), 1.0F);
  EXPECT_EQ(processor.getCurrentProgram(), 1);
  EXPECT_EQ(processor.getProgramName(1), "Wet");
  processor.setCurrentProgram(processor.getNumPrograms());
  processor.setCurrentProgram(-1);
  EXPECT_EQ(processor.getCurrentProgram(), 1);

  // A host that restores a song selects its program and then sets its state. In between it must not read the program's
  // values.
  SivrayProcessor other;
  other.getParameters()[6]->setValue(0.25F);
  const Bytes state = stateOf(other);
  NotingHost host;
  processor.addListener(&host);
  processor.setStateInformation(state.data(), static_cast<int>(state.size()));
  juce::MessageManager::getInstance()->runDispatchLoopUntil(150);
  EXPECT_TRUE(host.told.empty());
  EXPECT_EQ(valuesOf(processor), valuesOf(other));
  processor.setCurrentProgram(0);
  juce::MessageManager::getInstance()->runDispatchLoopUntil(150);
  EXPECT_EQ(host.told, std::vector<std::string>{"program"});
  processor.removeListener(&host);
}

TEST_F(Client, TakesEachWriteOfTheHostWhateverProgramCameBefore) {
  SivrayProcessor processor;
  processor.prepareToPlay(44100.0, 64);
  juce::AudioBuffer<float> buffer;
  juce::MidiBuffer midi;
  processor.setCurrentProgram(1);
  const std::vector<float> second = valuesOf(processor);
  juce::MessageManager::getInstance()->runDispatchLoopUntil(150);
  processor.setCurrentProgram(0);
  const std::vector<float> first = valuesOf(processor);
  ASSERT_NE(first, second);
  Block all{64, {}, {}};
  for (int index = 0; index < processor.getParameters().size(); ++index) {
    all.writes.push_back({index, second[static_cast<std::size_t>(index)]});
  }
  render(processor, all, buffer, midi);
  EXPECT_EQ(valuesOf(processor), second);

  // More writes than the queue holds; the last value must win. A block without frames takes the writes, too.
  for (int count = 0; count < 600; ++count) {
    processor.setParameter(count == 0 ? 1 : kMaster, count == 0 || count == 599 ? 0.25F : 0.5F);
  }
  EXPECT_EQ(processor.getParameters()[kMaster]->getValue(), 0.25F) << "before the block";
  processor.setParameter(kMaster, std::nanf(""));
  processor.setParameter(kMaster, 1.5F);
  juce::AudioBuffer<float> none;  // For a host that flushes.
  midi.clear();
  processor.processBlock(none, midi);
  SivrayProcessor reader;
  const Bytes state = stateOf(processor);
  reader.setStateInformation(state.data(), static_cast<int>(state.size()));
  EXPECT_EQ(reader.getParameters()[1]->getValue(), 0.25F);
  EXPECT_EQ(reader.getParameters()[kMaster]->getValue(), 0.25F);
}

TEST_F(Client, DropsMessagesThatWaitWhenItIsPreparedAndReadsTypedTexts) {
  SivrayProcessor processor;
  processor.prepareToPlay(44100.0, 512);
  juce::AudioBuffer<float> buffer;
  juce::MidiBuffer midi;
  render(processor, {512, {}, {}}, buffer, midi);
  const std::array<std::uint8_t, 3> note{0x90, 36, 127};
  processor.instrument()->sendMidi(note.data(), note.size(), 0);
  processor.prepareToPlay(44100.0, 512);
  render(processor, {512, {}, {}}, buffer, midi);
  EXPECT_EQ(buffer.getMagnitude(0, 512), 0.0F);

  auto& type = *processor.getParameters()[kEffectType];
  const juce::String name = type.getText(1.0F, 0);
  EXPECT_EQ(type.getValueForText("  " + name.toUpperCase() + " "), 1.0F);
  EXPECT_EQ(type.getText(1.0F, 2), name.substring(0, 2));
  type.setValue(1.0F);
  EXPECT_EQ(type.getValueForText("none of them"), 1.0F) << "the present value";
}

TEST_F(Client, TakesStatesOfAllFormsAndNothingElse) {
  const Plugin plugin(44100.0F);
  SivrayProcessor processor;
  processor.setCurrentProgram(1);
  plugin.effect->setParameter(plugin.effect, 1, 0.75F);
  const Bytes chunk = plugin.chunk();
  processor.setStateInformation(chunk.data(), static_cast<int>(chunk.size()));
  const std::vector<float> values = valuesOf(processor);
  EXPECT_EQ(values, valuesOf(plugin));
  EXPECT_EQ(values[1], 0.75F);

  for (std::size_t size = 0; size < chunk.size(); size += 997) {
    processor.setStateInformation(chunk.data(), static_cast<int>(size));
  }
  const Bytes foreign(5000, 0x81);
  processor.setStateInformation(foreign.data(), static_cast<int>(foreign.size()));
  processor.setStateInformation(nullptr, 10);
  EXPECT_EQ(valuesOf(processor), values);

  processor.getParameters()[1]->setValue(0.25F);
  Bytes state = stateOf(processor);
  plugin.dispatch(effSetChunk, 0, static_cast<std::intptr_t>(state.size()), state.data());
  EXPECT_EQ(valuesOf(plugin), valuesOf(processor));
}

/// Records the messages that the instrument receives.
struct NotingPanel final : support::QuietEditor {
  void midiReceived(const std::uint8_t* data, std::size_t size) override { messages.emplace_back(data, data + size); }
  std::vector<Bytes> messages;
};

/// A transport that is stopped, plays or records.
struct Transport final : juce::AudioPlayHead {
  juce::Optional<PositionInfo> getPosition() const override { return position; }
  PositionInfo position;
};

TEST_F(Client, HearsOfARecordingTransportAsOfAPlayingOneAndRefusesLongMessages) {
  SivrayProcessor processor;
  processor.prepareToPlay(44100.0, 64);
  const auto panel = std::make_shared<NotingPanel>();
  processor.instrument()->setUICallback(panel);
  Transport transport;
  processor.setPlayHead(&transport);
  juce::AudioBuffer<float> buffer(2, 64);
  const auto heardWhile = [&](bool plays, bool records, juce::MidiBuffer midi) {
    transport.position.setIsPlaying(plays);
    transport.position.setIsRecording(records);
    processor.processBlock(buffer, midi);
    return std::exchange(panel->messages, {});
  };
  using Messages = std::vector<Bytes>;
  const Messages start{{0xFA, 0, 0}};
  const Messages stop{{0xFC, 0, 0}};
  EXPECT_EQ(heardWhile(false, false, {}), Messages());
  EXPECT_EQ(heardWhile(false, true, {}), start);
  EXPECT_EQ(heardWhile(true, true, {}), Messages());
  EXPECT_EQ(heardWhile(true, false, {}), Messages());
  EXPECT_EQ(heardWhile(false, false, {}), stop);

  juce::MidiBuffer longOne;
  const Bytes foreign{0xF0, 0x90, 36, 100, 0xF7};
  longOne.addEvent(foreign.data(), static_cast<int>(foreign.size()), 0);
  longOne.addEvent(juce::MidiMessage::noteOn(1, 37, juce::uint8{90}), 1);
  ASSERT_EQ(longOne.getNumEvents(), 2);
  EXPECT_EQ(heardWhile(false, false, longOne), (Messages{{0x90, 37, 90}}));
}

TEST_F(Client, FollowsParametersThatAControllerMoves) {
  SivrayProcessor processor;
  processor.prepareToPlay(44100.0, 64);
  juce::AudioBuffer<float> buffer;
  juce::MidiBuffer midi;
  render(processor, {64, {{kMaster, 0.25F}}, {}}, buffer, midi);
  EXPECT_EQ(processor.getParameters()[kMaster]->getValue(), 0.25F);
  render(processor, {64, {}, {{0, {0xB0, 7, 127}}}}, buffer, midi);
  EXPECT_EQ(processor.getParameters()[kMaster]->getValue(), 1.0F);
}

TEST_F(Client, IsSilentWhileBypassedAndGivesTheHostNothingBack) {
  SivrayProcessor processor;
  processor.prepareToPlay(44100.0, 512);
  juce::AudioBuffer<float> buffer(2, 512);
  juce::MidiBuffer midi;
  render(processor, {512, {}, {}}, buffer, midi);  // Applies the program.
  midi.addEvent(juce::MidiMessage::noteOn(1, 36, 1.0F), 0);
  buffer.setSample(0, 0, 1.0F);
  processor.processBlockBypassed(buffer, midi);
  EXPECT_EQ(buffer.getMagnitude(0, 512), 0.0F);
  EXPECT_TRUE(midi.isEmpty());
  render(processor, {512, {}, {}}, buffer, midi);
  EXPECT_GT(buffer.getMagnitude(0, 512), 0.01F) << "the note goes on";
}

/// Returns the frame of the largest sample in the first thousand frames of a note.
double peakOf(double rate, int noteFrame) {
  SivrayProcessor processor;
  processor.prepareToPlay(rate, 4096);
  juce::AudioBuffer<float> buffer;
  juce::MidiBuffer midi;
  Block block{4096, {}, {}};
  render(processor, block, buffer, midi);  // Applies the program.
  block.messages.push_back({noteFrame, {0x90, 36, 127}});
  render(processor, block, buffer, midi);
  int peak = 0;
  for (int frame = 0; frame < block.frames; ++frame) {
    if (std::fabs(buffer.getSample(0, frame)) > std::fabs(buffer.getSample(0, peak))) {
      peak = frame;
    }
  }
  return static_cast<double>(peak) - noteFrame;
}

TEST(ClientOfAClick, ReportsTheLatencyThatItHas) {
  const juce::ScopedJuceInitialiser_GUI juce;
  support::Wave click;
  click.name = "click";
  click.left.assign(400, 0);
  std::fill_n(click.left.begin(), 2, std::int16_t{20000});
  const support::KitFolder folder({click, click, click});
  for (const double rate : {44100.0, 48000.0, 88200.0, 96000.0, 192000.0, 22050.0}) {
    const double reference = peakOf(44100.0, 1000) * rate / 44100.0;
    // The note begins at a whole frame of the engine, while the peak lies between two frames.
    EXPECT_NEAR(peakOf(rate, 1000) - reference, CFsConverterWrapper::latency(rate),
                1.5 * std::max(1.0, rate / 44100.0));
  }
}

TEST_F(Client, NamesEachPlaceWhereItLookedForItsSounds) {
  ::setenv("XDG_DATA_HOME", "/nowhere/home", 1);
  ::setenv("XDG_DATA_DIRS", "/nowhere/a:/nowhere/b", 1);
  ::unsetenv("BRAMEL_COMMON_FILES");
  const SivrayProcessor processor;
  for (const char* const place : {"/nowhere/home", "/nowhere/a", "/nowhere/b"}) {
    EXPECT_NE((processor.fault() + "\n").find(std::string("\n") + place + "\n"), std::string::npos) << place;
  }
  ::setenv("BRAMEL_COMMON_FILES", "/nowhere/chosen", 1);
  EXPECT_EQ(SivrayProcessor().fault(),
            "Sivray's sounds are not installed. None of these folders holds Tesh/Bramel:\n/nowhere/chosen");
  ::unsetenv("XDG_DATA_HOME");
  ::unsetenv("XDG_DATA_DIRS");
}

TEST_F(Client, StaysSilentAndKeepsTheStateWhereItsFilesAreMissing) {
  const support::SampleFolder empty;  // It has no description.
  SivrayProcessor processor;
  EXPECT_NE(processor.fault(), "");
  EXPECT_EQ(processor.getParameters().size(), 0);
  EXPECT_EQ(processor.getNumPrograms(), 1);
  const Bytes state{1, 2, 3};
  processor.setStateInformation(state.data(), 3);
  EXPECT_EQ(stateOf(processor), state);
  processor.prepareToPlay(48000.0, 64);
  juce::AudioBuffer<float> buffer;
  juce::MidiBuffer midi;
  render(processor, {64, {}, {{0, {0x90, 36, 127}}}}, buffer, midi);
  EXPECT_EQ(buffer.getMagnitude(0, 64), 0.0F);
  const std::unique_ptr<juce::AudioProcessorEditor> editor(processor.createEditorIfNeeded());
  EXPECT_EQ(editor->getWidth(), 768);
}

TEST_F(Client, GivesThePanelsKeysToTheHost) {
  SivrayProcessor processor;
  processor.prepareToPlay(44100.0, 64);
  const std::array<std::uint8_t, 3> note{0x90, 40, 100};
  processor.instrument()->sendKeyboardMidi(note.data(), note.size(), 70);
  juce::AudioBuffer<float> buffer;
  juce::MidiBuffer midi;
  render(processor, {64, {}, {{0, {0xB0, 1, 1}}}}, buffer, midi);
  ASSERT_EQ(midi.getNumEvents(), 1);
  const juce::MidiMessageMetadata told = *midi.begin();
  EXPECT_EQ(told.samplePosition, 63);
  EXPECT_EQ((Bytes{told.data, told.data + told.numBytes}), (Bytes{0x90, 40, 100}));
}

}  // namespace
}  // namespace client
