// Keys, demo and the device's blocks: the events that reach the instrument, and their times.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "host/standalone/DemoKits.h"
#include "host/standalone/PadKeys.h"
#include "host/standalone/Playback.h"

namespace {

using namespace tesh::bramel::standalone;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(PadKeys, StrikeOnceWhileAKeyRepeatsAndReleaseWhenItComesUp) {
  std::vector<std::string> log;
  PadKeys keys([&](int note, bool isOn) { log.push_back(std::to_string(note) + (isOn ? " on" : " off")); });
  std::set<int> down;
  const auto move = [&](std::set<int> now, bool mayStrike = true) {
    down = std::move(now);
    keys.keysMoved([&](int key) { return down.contains(key); }, mayStrike);
    return std::exchange(log, {});
  };
  EXPECT_THAT(move({'a'}), ElementsAre("36 on"));
  EXPECT_THAT(move({'a'}), IsEmpty());
  EXPECT_THAT(move({'a', 'k', 'q'}), ElementsAre("43 on"));
  EXPECT_THAT(move({'k'}, false), ElementsAre("36 off")) << "a note ends also once a text field has the focus";
  EXPECT_THAT(move({'k', 'd'}, false), IsEmpty());
  EXPECT_THAT(move({'k', 'd'}), IsEmpty()) << "a key held since it was typed is no strike";
  EXPECT_THAT(move({'d'}), ElementsAre("43 off"));
  move({'s'});
  keys.releaseAll();
  EXPECT_THAT(std::exchange(log, {}), ElementsAre("37 off"));
  EXPECT_THAT(move({'s'}), ElementsAre("37 on")) << "it came up where nobody saw it";
  EXPECT_TRUE(PadKeys::isPadKey('H') && PadKeys::isPadKey('g') && !PadKeys::isPadKey('l'));
}

/// Returns a demo of one bar at 120 BPM: notes at 0 and at 0.5 s, and a controller at 0.75 s.
DemoScore oneBar() {
  DemoScore score;
  score.seconds = 2.0;
  score.events = {{.seconds = 0.0, .bytes = {0x99, 36, 100}, .size = 3},
                  {.seconds = 0.5, .bytes = {0x99, 38, 90}, .size = 3},
                  {.seconds = 0.75, .bytes = {0xB9, 20, 64}, .size = 3}};
  return score;
}

/// Records its blocks, and outputs a constant.
class NotingProcessor final : public juce::AudioProcessor {
 public:
  NotingProcessor()
      : AudioProcessor(BusesProperties()
                           .withOutput("Main", juce::AudioChannelSet::stereo())
                           .withOutput("Pad", juce::AudioChannelSet::stereo(), false)) {}

  void processBlock(juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midi) override {
    longest = std::max(longest, buffer.getNumSamples());
    for (const auto event : midi) {
      const auto message = event.getMessage();
      EXPECT_LT(event.samplePosition, buffer.getNumSamples());
      EXPECT_TRUE(event.samplePosition == 0 || !message.isController()) << "it moves at a block's start alone";
      const auto* const bytes = message.getRawData();
      log.push_back(std::to_string(frame + event.samplePosition) + ": " + std::to_string(bytes[0] >> 4) + " " +
                    std::to_string(bytes[1]));
    }
    if (const auto position = getPlayHead()->getPosition()) {
      const double newTempo = position->getBpm().orFallback(0.0);
      if (std::exchange(tempo, newTempo) != newTempo) {
        tempoChanges.push_back(frame);
      }
      isMoving = position->getIsPlaying();
      beat = position->getPpqPosition().orFallback(-1.0);
    }
    frame += buffer.getNumSamples();
    buffer.clear();
    for (int i = 0; i < buffer.getNumSamples(); ++i) {
      buffer.setSample(0, i, 0.5F);
      buffer.setSample(1, i, 0.25F);
      for (int channel = 2; channel < buffer.getNumChannels(); ++channel) {
        buffer.setSample(channel, i, static_cast<float>(channel));
      }
    }
  }
  using AudioProcessor::processBlock;
  const juce::String getName() const override { return {}; }
  void prepareToPlay(double rate, int /*frames*/) override { preparedRate = rate; }
  void releaseResources() override { preparedRate = 0.0; }
  double getTailLengthSeconds() const override { return 0.0; }
  bool acceptsMidi() const override { return true; }
  bool producesMidi() const override { return false; }
  juce::AudioProcessorEditor* createEditor() override { return nullptr; }
  bool hasEditor() const override { return false; }
  int getNumPrograms() override { return 3; }
  int getCurrentProgram() override { return program; }
  void setCurrentProgram(int index) override { programs.push_back(program = index); }
  const juce::String getProgramName(int index) override { return "Kit " + juce::String(index); }
  void changeProgramName(int /*index*/, const juce::String& /*name*/) override {}
  void getStateInformation(juce::MemoryBlock& state) override { state.append(&program, sizeof(program)); }
  void setStateInformation(const void* data, int size) override {
    programs.push_back(size == sizeof(program) ? -1 : -2);
    std::memcpy(&program, data, sizeof(program));
  }

  std::vector<std::string> log;
  std::vector<int> programs;  ///< Selected programs; -1 for a state.
  int program = 1;
  int frame = 0;
  int longest = 0;
  double tempo = 0.0;
  double beat = 0.0;
  double preparedRate = 0.0;
  std::vector<int> tempoChanges;  ///< In frames.
  bool isMoving = false;
};

class PlaybackTest : public testing::Test {
 protected:
  /// Renders one block of a device with this number of channels, and returns the channels.
  std::vector<std::vector<float>> block(int frames, int channelCount = 2) {
    std::vector<std::vector<float>> channels(static_cast<std::size_t>(channelCount),
                                             std::vector<float>(static_cast<std::size_t>(frames), 9.0F));
    std::vector<float*> outputs;
    outputs.reserve(channels.size());
    for (auto& channel : channels) {
      outputs.push_back(channel.data());
    }
    playback.audioDeviceIOCallbackWithContext(nullptr, 0, outputs.data(), channelCount, frames, {});
    return channels;
  }

  NotingProcessor processor;
  Playback playback{processor, oneBar()};
};

TEST_F(PlaybackTest, PlaysTheDemoInALoopHoweverTheDeviceCutsItsBlocks) {
  for (const int frames : {100, 256, 7000}) {
    playback.prepare(1000.0, 256);  // At 1000 Hz, a frame is a millisecond.
    playback.demo().play();
    processor.log.clear();
    processor.frame = 0;
    processor.longest = 0;
    for (int done = 0; done < 3500; done += frames) {
      block(frames);
    }
    processor.log.resize(5);
    EXPECT_THAT(processor.log, ElementsAre("0: 9 36", "500: 9 38", "750: 11 20", "2000: 9 36", "2500: 9 38")) << frames;
    EXPECT_LE(processor.longest, 256) << "no block is longer than announced";
    playback.demo().stop();
    block(1);
  }
}

TEST_F(PlaybackTest, AStopEndsTheNotesThatSoundAndAStartBeginsAtTheFirstBeat) {
  playback.prepare(1000.0, 600);
  block(10);
  EXPECT_THAT(processor.log, IsEmpty());
  EXPECT_EQ(processor.tempo, 120.0) << "also at rest";
  EXPECT_FALSE(processor.isMoving);
  playback.demo().play();
  block(600);
  block(50);
  EXPECT_TRUE(processor.isMoving);
  EXPECT_DOUBLE_EQ(processor.beat, 1.2);
  playback.demo().stop();
  block(10);
  playback.demo().play();
  block(10);
  EXPECT_THAT(processor.log, ElementsAre("10: 9 36", "510: 9 38", "660: 8 36", "660: 8 38", "670: 9 36"));
}

TEST_F(PlaybackTest, GoesOnAtTheSameBeatWhenTheDeviceChangesItsRate) {
  playback.prepare(1000.0, 500);
  playback.demo().play();
  block(500);
  playback.audioDeviceStopped();
  EXPECT_EQ(processor.preparedRate, 0.0);
  playback.prepare(2000.0, 500);
  EXPECT_EQ(processor.preparedRate, 2000.0);
  for (int i = 0; i < 7; ++i) {
    block(500);
  }
  EXPECT_THAT(processor.log, ElementsAre("0: 9 36", "500: 9 38", "1000: 11 20", "3500: 9 36"));
  processor.suspendProcessing(true);
  EXPECT_EQ(block(1000)[0][999], 0.0F) << "while a state is set";
  EXPECT_EQ(processor.log.size(), 4U);
}

TEST(Playback, EndsNoNoteOfTheDemoTwice) {
  DemoScore score = oneBar();
  score.events[2] = {.seconds = 0.6, .bytes = {0x89, 38, 0}, .size = 3};
  score.events.push_back({.seconds = 0.7, .bytes = {0x99, 36, 0}, .size = 3});
  NotingProcessor processor;
  Playback playback(processor, score);
  playback.prepare(1000.0, 800);
  std::vector<float> left(800);
  float* const outputs[]{left.data()};
  playback.demo().play();
  playback.audioDeviceIOCallbackWithContext(nullptr, 0, outputs, 1, 800, {});
  playback.demo().stop();
  playback.audioDeviceIOCallbackWithContext(nullptr, 0, outputs, 1, 100, {});
  EXPECT_THAT(processor.log, ElementsAre("0: 9 36", "500: 9 38", "600: 8 38", "700: 9 36"));
}

/// Returns a demo of two bars: one at 120 BPM on kit 1, one at 240 BPM on kit 2.
DemoScore twoKits() {
  DemoScore score = oneBar();
  score.events.pop_back();  // A controller would split a block.
  score.seconds = 3.0;
  score.tempos = {{0.0, 120.0, 0.0}, {2.0, 240.0, 4.0}};
  score.kits = {{0.0, "Kit 1"}, {2.0, "Kit 2"}};
  return score;
}

TEST(DemoKits, FollowTheDemoWhichWaitsForThemAndBringTheUsersSoundBack) {
  NotingProcessor processor;
  Playback playback(processor, twoKits());
  playback.prepare(1000.0, 500);
  std::vector<float> left(500);
  float* const outputs[]{left.data()};
  const auto play = [&](int frames) { playback.audioDeviceIOCallbackWithContext(nullptr, 0, outputs, 1, frames, {}); };
  const auto select = [&] {
    for (int round = 0; round < 500 && processor.program != static_cast<int>(playback.demo().kit()) + 1; ++round) {
      juce::MessageManager::getInstance()->runDispatchLoopUntil(20);
    }
  };
  {
    DemoKits kits(processor, playback.demo());
    kits.stop();
    EXPECT_THAT(processor.programs, IsEmpty());
    kits.play();
    EXPECT_THAT(processor.programs, ElementsAre(0, 1)) << "chosen anew, as the user may have edited it";
    kits.play();
    EXPECT_THAT(processor.programs, ElementsAre(0, 1));
    for (int time = 0; time < 2000; time += 500) {
      play(500);
      EXPECT_EQ(playback.demo().kit(), 0U) << time;
      EXPECT_DOUBLE_EQ(processor.tempo, 120.0);
      EXPECT_DOUBLE_EQ(processor.beat, time / 500.0);
    }
    for (int round = 0; round < 3; ++round) {  // While the message thread is busy.
      play(500);
      EXPECT_EQ(playback.demo().kit(), 1U);
      EXPECT_DOUBLE_EQ(processor.tempo, 240.0);
      EXPECT_DOUBLE_EQ(processor.beat, 4.0);
    }
    select();
    EXPECT_THAT(processor.programs, ElementsAre(0, 1, 2));
    for (const double beat : {4.0, 6.0}) {
      play(500);
      EXPECT_DOUBLE_EQ(processor.beat, beat);
    }
    play(60);  // The first kit again, which it waits for.
    select();
    for (int done = 0; done < 3000; done += 60) {  // The tempo changes in the middle of one.
      play(60);
      EXPECT_EQ(playback.demo().kit(), done < 1900 || done >= 2900 ? 0U : 1U) << "ahead by 0.1 s: " << done;
      select();
    }
    EXPECT_THAT(processor.tempoChanges, ElementsAre(0, 2000, 4500, 6560));
    EXPECT_THAT(processor.log, ElementsAre("0: 9 36", "500: 9 38", "4560: 9 36", "5060: 9 38"));
  }
  EXPECT_EQ(processor.programs.back(), -1);
  EXPECT_EQ(processor.program, 1);
  EXPECT_FALSE(playback.demo().isPlaying());
}

TEST_F(PlaybackTest, FitsTheSoundToTheDevicesChannels) {
  playback.prepare(44100.0, 64);
  EXPECT_FLOAT_EQ(block(64, 1)[0][63], 0.375F);
  const auto four = block(100, 4);
  EXPECT_THAT((std::vector{four[0][99], four[1][99], four[2][99], four[3][99]}), ElementsAre(0.5F, 0.25F, 0.0F, 0.0F));
  EXPECT_TRUE(block(16, 0).empty());

  // After three channels of its own, one for each side of another output.
  playback.prepare(44100.0, 64, 2);
  std::array<std::vector<float>, 5> channels;
  channels.fill(std::vector<float>(100, 9.0F));
  for (const bool isConnected : {true, false}) {
    const std::array<float*, 5> outputs{channels[0].data(), channels[1].data(), channels[2].data(),
                                        isConnected ? channels[3].data() : nullptr, channels[4].data()};
    playback.audioDeviceIOCallbackWithContext(nullptr, 0, outputs.data(), 5, 100, {});
    EXPECT_THAT((std::vector{channels[0][99], channels[1][99], channels[2][99], channels[3][99], channels[4][99]}),
                ElementsAre(0.5F, 0.25F, 0.0F, 2.0F, 3.0F));
  }
  playback.prepare(44100.0, 64);
  EXPECT_FLOAT_EQ(block(64, 1)[0][63], 0.375F) << "the further out is off again";
}

TEST_F(PlaybackTest, KeysAndMidiInputsStrikeAndTheToneFadesInAndOut) {
  playback.playNote(36, true);     // Before any device is open, so nobody hears it.
  playback.prepare(48000.0, 100);  // A device may deliver longer blocks.
  playback.playNote(40, true);
  playback.playNote(40, false);
  playback.handleIncomingMidiMessage(nullptr, juce::MidiMessage::noteOn(3, 41, juce::uint8{9}).withTimeStamp(0.001));
  for (int i = 0; i < 4; ++i) {
    block(512);
  }
  EXPECT_THAT(processor.log, testing::UnorderedElementsAre(testing::EndsWith("9 40"), testing::EndsWith("8 40"),
                                                           testing::EndsWith("9 41")));

  playback.playTestTone();
  std::vector<float> tone;
  for (int i = 0; i < 50; ++i) {
    const auto part = block(512)[0];
    tone.insert(tone.end(), part.begin(), part.end());
  }
  float peak = 0.0F;
  float steepest = 0.0F;
  for (std::size_t i = 1; i < tone.size(); ++i) {
    peak = std::max(peak, std::abs(tone[i] - 0.5F));
    steepest = std::max(steepest, std::abs(tone[i] - tone[i - 1]));
  }
  EXPECT_NEAR(peak, 0.125F, 0.001F);
  EXPECT_LT(steepest, 0.0075F) << "no click: a sine of 440 Hz at this level moves by 0.0072 a frame";
  EXPECT_EQ(tone.back(), 0.5F) << "half a second";
}

TEST_F(PlaybackTest, MidiInputsPlayByTheNoteMapAndThePadsOfThePanelAreHeard) {
  playback.prepare(48000.0, 100);
  tesh::cofu::core::NoteMap map;
  map.notes[60] = 38;
  playback.setNoteMap(map);
  const auto send = [&](const juce::MidiMessage& message) {
    playback.handleIncomingMidiMessage(nullptr, message.withTimeStamp(0.001));
  };
  send(juce::MidiMessage::noteOn(1, 60, juce::uint8{90}));
  send(juce::MidiMessage::noteOff(1, 60));
  send(juce::MidiMessage::programChange(1, 60));
  block(1000);
  EXPECT_THAT(processor.log, testing::UnorderedElementsAre(testing::EndsWith("9 38"), testing::EndsWith("8 38"),
                                                           testing::EndsWith("12 60")));
  EXPECT_EQ(playback.takeHeard().inputNote, 60);
  EXPECT_EQ(playback.takeHeard().inputNote, -1);
  playback.playNote(36, true);
  playback.playNote(36, false);
  EXPECT_EQ(playback.takeHeard().panelNote, 36) << "a key plays a pad too";
}

TEST(DemoScore, IsReadFromAMidiFileAndEmptyForAnythingElse) {
  juce::MidiMessageSequence track;
  track.addEvent(juce::MidiMessage::tempoMetaEvent(500000 / 2), 0.0);  // 240 BPM.
  track.addEvent(juce::MidiMessage::noteOn(10, 36, juce::uint8{100}), 96.0);
  track.addEvent(juce::MidiMessage::noteOff(10, 36), 5 * 96.0);
  juce::MidiFile midi;
  midi.setTicksPerQuarterNote(96);
  midi.addTrack(track);
  juce::MemoryOutputStream stream;
  midi.writeTo(stream);
  const std::span bytes(static_cast<const std::uint8_t*>(stream.getData()), stream.getDataSize());

  const DemoScore score = readDemoScore(bytes);
  ASSERT_EQ(score.events.size(), 2U);
  EXPECT_DOUBLE_EQ(score.events[0].seconds, 0.25);
  EXPECT_DOUBLE_EQ(score.tempoAt(0.1).beatsPerMinute, 240.0);
  EXPECT_DOUBLE_EQ(score.seconds, 2.0) << "two bars: five beats do not fit into one";
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    EXPECT_LE(readDemoScore(bytes.first(size)).events.size(), 2U);
  }

  juce::MidiMessageSequence second;
  second.addEvent(juce::MidiMessage::textMetaEvent(1, "a comment"), 0.0);
  second.addEvent(juce::MidiMessage::textMetaEvent(1, "program=Kit"), 0.0);
  second.addEvent(juce::MidiMessage::tempoMetaEvent(500000), 8 * 96.0);
  second.addEvent(juce::MidiMessage::tempoMetaEvent(1000000), 8 * 96.0);
  second.addEvent(juce::MidiMessage::noteOn(10, 38, juce::uint8{100}), 0.0);
  second.addEvent(juce::MidiMessage::noteOff(10, 38), 12 * 96.0);
  midi.addTrack(second);
  juce::MemoryOutputStream longer;
  midi.writeTo(longer);
  const DemoScore both = readDemoScore({static_cast<const std::uint8_t*>(longer.getData()), longer.getDataSize()});
  ASSERT_EQ(both.events.size(), 4U);
  EXPECT_EQ(both.events[0].bytes[1], 38) << "by time, not by track";
  ASSERT_EQ(both.kits.size(), 1U);
  EXPECT_EQ(both.kits[0].name, "Kit");
  EXPECT_EQ(both.tempos.size(), 2U) << "the last one of a moment counts";
  EXPECT_DOUBLE_EQ(both.tempoAt(3.0).beatsPerMinute, 60.0);
  EXPECT_DOUBLE_EQ(both.seconds, 6.0) << "two bars of 1 s, and one of 4 s that is full";
  EXPECT_TRUE(readDemoScore({}).isEmpty());
  EXPECT_TRUE(readDemoScore(bytes.first(20)).isEmpty());
}

}  // namespace
