// The processing of a host's block: its division, its MIDI, and an instrument without a processor.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "ShellScene.h"
#include "host/vst/VstRecords.h"

namespace shell {
namespace {

TEST_F(Shell, CutsBlocksAndIgnoresThoseThatCannotBe) {
  run(5000);
  EXPECT_EQ(generator->frames, (std::vector<std::int32_t>{2048, 2048, 904}));
  generator->frames.clear();
  std::array<float, 8> samples{};
  std::array<float*, 2> half{samples.data(), nullptr};
  shell->process(nullptr, half.data(), 8);
  shell->process(nullptr, nullptr, 8);
  shell->process(nullptr, nullptr, 0);
  std::array<float*, 2> outputs{samples.data(), samples.data()};
  shell->process(nullptr, outputs.data(), -1);
  EXPECT_TRUE(generator->frames.empty());
  shell->process(half.data(), outputs.data(), 8);
  EXPECT_EQ(samples, (std::array<float, 8>{0.5F, 0.5F, 0.5F, 0.5F, 0.5F, 0.5F, 0.5F, 0.5F}));
}

TEST_F(Shell, FillsTheOutsThatAreConnectedInBlocksOfAnySize) {
  constexpr std::size_t kFrames = 5000;
  std::vector<std::vector<float>> samples(vimo::kAllChannels, std::vector<float>(kFrames, 9.0F));
  std::array<float*, vimo::kAllChannels> outputs{samples[0].data(), samples[1].data()};
  for (std::size_t channel = 4; channel < outputs.size(); ++channel) {
    outputs[channel] = samples[channel].data();
  }
  shell->processOuts(outputs, static_cast<std::int32_t>(kFrames));
  for (std::size_t channel = 0; channel < outputs.size(); ++channel) {
    const float expected = channel < 2 ? 0.5F : channel < 4 ? 9.0F : static_cast<float>(channel);
    EXPECT_EQ(samples[channel], std::vector<float>(kFrames, expected)) << channel;
  }
  BramelInstrument(nullptr).processOuts(outputs, static_cast<std::int32_t>(kFrames));
  EXPECT_EQ(samples[19], std::vector<float>(kFrames, 0.0F));
}

TEST_F(Shell, IsSilentAndEmptyWithoutAProcessor) {
  BramelInstrument empty(nullptr);
  std::vector<float> samples(6000, 1.0F);
  std::array<float*, 2> outputs{samples.data(), samples.data() + 3000};
  for (const float rate : {44100.0F, 48000.0F}) {
    empty.setSampleRate(rate);
    empty.process(outputs.data(), outputs.data(), 3000);
    EXPECT_EQ(samples, std::vector<float>(6000)) << rate;
  }
  const Bytes note{0x90, 36, 100};
  empty.resume();
  empty.sendMidi(note.data(), note.size(), 0);
  empty.sendKeyboardMidi(note.data(), note.size(), 0);
  empty.setParameter(0, 0.5F);
  empty.setParameterFromEditor(0, 0.5F);
  empty.setProgram(3, 0);
  empty.saveProgramAs(3, "a");
  empty.overwriteProgram();
  empty.deleteProgram(0, 0);
  empty.moveProgram(0, 0, 1);
  empty.importPrograms("absent");
  empty.setState("MPck", 4);
  EXPECT_FALSE(empty.isActive());
  EXPECT_EQ(empty.productName(), "Error");
  EXPECT_EQ(empty.parameterCount() + empty.currentProgram() + empty.programCount(0), 0U);
  EXPECT_EQ(empty.inputCount() + empty.outputCount(), 0);
  EXPECT_EQ(empty.parameterValue(0), 0.0F);
  EXPECT_TRUE(empty.getState().empty());
}

TEST_F(Shell, SendsEachMessageWhereItBelongs) {
  struct Case {
    Bytes message;
    std::string atEngine;
    float value = 0.25F;  // Of the mapped parameter, after the message.
  };
  const std::vector<Case> cases{
      {{0x95, 40, 101}, "902865"},  {{0x8F, 40, 1}, "802801"},  {{0xB3, 7, 127}, "", 1.0F},
      {{0xB0, 7, 0}, "", 0.0F},     {{0xB0, 7, 255}, "", 1.0F}, {{0xB2, 74, 5}, "b04a05"},
      {{0xB0, 0, 9}, ""},           {{0xB0, 32, 9}, ""},        {{0xB0, 223, 9}, "b0df09"},
      {{0xB0, 224, 127}, "", 1.0F}, {{0xE4, 0, 64}, "", 0.5F},  {{0xE0, 0, 0}, "", 0.0F},
      {{0xA3, 36, 9}, ""},          {{0xC0, 5, 0}, ""},         {{0xD0, 5, 0}, ""},
      {{0xFA, 0, 0}, "fa0000"},     {{0x90}, "900000"},         {{0xF0, 1, 2, 3, 4}, "f00102"},
  };
  for (const Case& given : cases) {
    shell->setParameter(1, 0.25F);
    run();
    generator->midi.clear();
    send(given.message, 3);
    run();
    EXPECT_EQ(generator->midi, given.atEngine.empty() ? Log{} : Log{given.atEngine + "@3"})
        << hex(given.message.data(), 2);
    EXPECT_EQ(shell->parameterValue(1), given.value) << hex(given.message.data(), given.message.size());
  }
  EXPECT_EQ(editor->messages,
            (Log{"902865", "802801", "b0077f", "b00700", "b007ff", "b04a05", "b00009", "b02009", "b0df09", "b0e07f",
                 "e00040", "e00000", "a32409", "c00500", "d00500", "fa0000", "90", "f001020304"}));
  controller().ccMap.clear();
  generator->midi.clear();
  send({0xE0, 1, 2});
  run();
  EXPECT_TRUE(generator->midi.empty());
}

TEST_F(Shell, LosesNoMessageOfABusyBlockAndBoundsWhatNobodyFetches) {
  for (const float rate : {44100.0F, 48000.0F}) {
    shell->setSampleRate(rate);
    for (int block = 0; block < 4; ++block) {
      for (int i = 0; i < 2048; ++i) {
        send({0x90, static_cast<std::uint8_t>(i % 128), 1}, i / 8);
      }
      run(256);
    }
    run(1024);
    EXPECT_EQ(generator->midi.size(), 4U * 2048U) << rate;
    generator->midi.clear();
  }
  for (int i = 0; i < 100000; ++i) {
    send({0x90, 36, 1}, i % 2 == 0 ? -5 : 2147483647);
  }
  run();
  EXPECT_LT(generator->midi.size(), 10000U);
}

TEST_F(Shell, KeepsTheOrderAndTheTimesOfMessagesHoweverTheyAreTaken) {
  for (int i = 0; i < 3000; ++i) {
    send({0x90, 36, 1});
  }
  shell->resume();
  send({0x90, 38, 1}, 5);
  shell->sendKeyboardMidi(Bytes{0x90, 39, 1}.data(), 3, 5);
  run(512);
  EXPECT_EQ(generator->midi, (Log{"902601@5", "902701@5"})) << "those before the resume are dropped";
  generator->midi.clear();
  shell->setSampleRate(48000.0F);
  send({0x90, 36, 1}, 480);
  shell->setSampleRate(44100.0F);
  send({0x90, 37, 1}, 441);
  send({0xB0, 74, 5}, 441);
  send({0x80, 37, 0}, 442);
  run(512);
  EXPECT_EQ(generator->midi, (Log{"902401@441", "902501@441", "b04a05@441", "802500@442"}));

  // A list of a note, which needs no lock, and a controller, which needs one.
  generator->midi.clear();
  std::array<bramel::vst::VstMidiEvent, 2> list{};
  for (auto& event : list) {
    event.type = bramel::vst::kVstMidiType;
  }
  std::copy_n("\x90\x24\x01", 3, list[0].midiData);
  std::copy_n("\xB0\x4A\x05", 3, list[1].midiData);
  const auto record = [](auto& event) { return reinterpret_cast<bramel::vst::VstEvent*>(&event); };
  shell->sendEvents({2, 0, {record(list[0]), record(list[1])}});
  run();
  EXPECT_EQ(generator->midi, (Log{"902401@0", "b04a05@0"}));
}

TEST_F(Shell, SetsAParameterToTheLatestOfMessagesAndWrites) {
  for (const Bytes& message : {Bytes{0xB0, 7, 0}, Bytes{0xE0, 0, 0}}) {
    send(message);
    shell->setParameter(1, 0.25F);
    run();
    EXPECT_EQ(shell->parameterValue(1), 0.25F);
    shell->setParameter(1, 0.5F);
    send(message);
    run();
    EXPECT_EQ(shell->parameterValue(1), 0.0F);
  }
}

TEST_F(Shell, PlaysTheKeyboardOnlyWhileActiveAndTellsTheHost) {
  const Bytes note{0x90, 36, 100};
  shell->sendKeyboardMidi(note.data(), note.size(), 0);
  run();
  EXPECT_TRUE(generator->midi.empty());
  EXPECT_TRUE(host->log.empty());
  shell->resume();
  shell->sendKeyboardMidi(note.data(), note.size(), 2);
  const Bytes bend{0xB0, 7, 127};
  shell->sendKeyboardMidi(bend.data(), bend.size(), 0);
  run();
  EXPECT_EQ(generator->midi, Log{"902464@2"});
  EXPECT_EQ(host->log, (Log{"midi 902464@2", "begin 1", "automate 1", "end 1", "midi b0077f@0"}));
  EXPECT_EQ(shell->parameterValue(1), 1.0F);
  shell->suspend();
  EXPECT_FALSE(shell->isActive());
  EXPECT_EQ(generator->log, "ad");
}

TEST_F(Shell, HandsTheEnginesMidiToTheHostAndTemposToTheEngine) {
  generator->toHost = {vimo::MidiEvent(Bytes{0x90, 1, 2}, 5), vimo::MidiEvent(Bytes(8, 0xF0), 6)};
  run();
  generator->toHost.clear();
  run();
  EXPECT_EQ(host->log, Log{"midi 900102@5"});
  host.reset();
  run();
  for (const float bpm : {120.0F, 90.0F, 90.0F, std::numeric_limits<float>::quiet_NaN(), 300.0F}) {
    shell->setTempo(bpm);
  }
  EXPECT_EQ(generator->tempi, (std::vector<double>{120.0, 90.0, 300.0}));
}

TEST_F(Shell, PlaysNotesWhileSuspendedButNoneThatWaitedForTheResume) {
  shell->resume();
  shell->suspend();
  send({0x90, 36, 100});
  run();
  EXPECT_EQ(generator->midi, Log{"902464@0"}) << "a block is served in both states";
  send({0x90, 37, 100});
  shell->resume();
  send({0x90, 38, 100});
  run();
  EXPECT_EQ(generator->midi, (Log{"902464@0", "902664@0"}));
}

TEST_F(Shell, ComesBackFromSuspendWithoutOldSound) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  shell->setSampleRate(48000.0F);
  for (const float rate : {0.0F, -1.0F, nan, std::numeric_limits<float>::infinity()}) {
    shell->setSampleRate(rate);
  }
  std::array<std::vector<float>, 2> passes;
  for (std::vector<float>& samples : passes) {
    shell->suspend();
    shell->resume();
    samples.resize(960);
    std::array<float*, 2> outputs{samples.data(), samples.data() + 480};
    shell->process(nullptr, outputs.data(), 480);
  }
  EXPECT_EQ(passes[0], passes[1]);
  EXPECT_EQ(passes[0][0], 0.0F);
  EXPECT_NEAR(passes[0][479], 0.5F, 0.001F);
}

}  // namespace
}  // namespace shell
