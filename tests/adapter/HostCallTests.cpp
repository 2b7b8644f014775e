// What a host's calls change, and what they leave unchanged.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <atomic>
#include <cmath>
#include <limits>
#include <random>
#include <thread>

#include "adapter/AdapterScene.h"
#include "host/adapter/CreateVstPlugin.h"

namespace adapter {
namespace {

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

TEST_F(Adapter, TellsWhatItIsAndAsksOnlyForTheVendorBeforeThat) {
  host.vendor = std::string(1000, 'v');
  load();
  const auto calls = host.take();
  ASSERT_EQ(calls.size(), 1U);
  EXPECT_EQ(calls[0].opcode, audioMasterGetVendorString);
  EXPECT_EQ(effect->uniqueID, 0x54423130);  // "TB10"
  EXPECT_EQ(effect->flags, effFlagsCanReplacing | effFlagsProgramChunks | effFlagsIsSynth);
  EXPECT_EQ(effect->numPrograms, 0);
  EXPECT_EQ(effect->numParams, 2);
  EXPECT_EQ(effect->numInputs, 0);
  EXPECT_EQ(effect->numOutputs, 2);
  EXPECT_EQ(text(effGetEffectName, 0, 32), "Sivray");
  EXPECT_EQ(text(effGetProductString, 0, 64), "Sivray");
  EXPECT_EQ(text(effGetVendorString, 0, 64), "TESH");
  EXPECT_EQ(text(effGetProgramName), "Sivray");
  EXPECT_EQ(dispatch(effGetNumMidiOutputChannels), 1);
  EXPECT_EQ(dispatch(effGetPlugCategory), 2);
}

TEST_F(Adapter, AnswersAbilitiesByTheirBeginning) {
  load();
  const auto canDo = [this](std::string ability) { return dispatch(effCanDo, 0, 0, ability.data()); };
  for (const char* ability : {"NKSCallbacks", "sendVstEvents", "sendVstEventsAndMore", "sendVstMidiEvents",
                              "receiveVstEvents", "receiveVstMidiEvent", "receiveVstTimeInfo"}) {
    EXPECT_EQ(canDo(ability), 1) << ability;
  }
  for (const char* ability : {"", "NKSCallbacks2", "sendVst", "bypass", "xsendVstEvents"}) {
    EXPECT_EQ(canDo(ability), 0) << ability;
  }
  EXPECT_EQ(dispatch(effCanDo), 0);
}

TEST_F(Adapter, AnswersTheQuestionsOfOneHostFamilyWithinTheirRoom) {
  load();
  const auto ask = [this](std::int32_t question, std::intptr_t value = 0) {
    Bytes answer(16, 0xEE);
    answer.resize(dispatch(effVendorSpecific, question, value, answer.data()) == 1 ? 16 : 0);
    return Bytes(answer.begin(), std::find(answer.begin(), answer.end(), 0xEE));
  };
  EXPECT_EQ(ask(0x4E49000D), Bytes(4, 0));
  EXPECT_EQ(ask(0x4E49001C), Bytes{1});
  EXPECT_EQ(ask(0x4E490020), (Bytes{1, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(ask(0x4E690020), (Bytes{8, 0, 0, 0, 0, 0, 0, 0, 1}));
  EXPECT_EQ(ask(0x4E49000E), Bytes{});
  Bytes untouched{7};
  EXPECT_EQ(dispatch(effVendorSpecific, 0x6E690020, 8, untouched.data()), 1);
  EXPECT_EQ(dispatch(effVendorSpecific, 0x6E690020, 7, untouched.data()), 0);
  EXPECT_EQ(untouched, Bytes{7});
  EXPECT_EQ(dispatch(effVendorSpecific, 0x4E490020), 0);
  EXPECT_EQ(dispatch(effVendorSpecific, 0x4E690020), 1);
  EXPECT_EQ(dispatch(effVendorSpecific, 0x6E690020, 8), 0);
}

TEST_F(Adapter, NumbersParametersWithoutTheHiddenOnes) {
  load();
  run();
  EXPECT_EQ(text(effGetParamName, 0), "Level0");
  EXPECT_EQ(text(effGetParamName, 1), "Level2");
  effect->setParameter(effect, 1, 0.25F);
  EXPECT_EQ(effect->getParameter(effect, 1), 0.25F);
  EXPECT_EQ(shell->parameterValue(2), 0.25F);
  EXPECT_EQ(text(effGetParamDisplay, 1), "-31");  // For its text, the third parameter is a pan.
  for (const float value : {kNaN, -0.01F, 1.01F, INFINITY}) {
    effect->setParameter(effect, 1, value);
    EXPECT_EQ(effect->getParameter(effect, 1), 0.25F);
  }
  for (const std::int32_t index : {-1, 2, kHighest, kLowest}) {
    effect->setParameter(effect, index, 1.0F);
    EXPECT_EQ(effect->getParameter(effect, index), 0.0F);
    EXPECT_EQ(text(effGetParamName, index), "");
    EXPECT_EQ(text(effGetParamDisplay, index), "");
  }
  EXPECT_EQ(text(effGetParamLabel, 0).front(), '#') << "there are no units";
}

TEST_F(Adapter, TakesTempoAndTransportWithEachBlock) {
  load();
  VstTimeInfo time{};
  host.time = reinterpret_cast<std::intptr_t>(&time);
  const auto sent = [&](std::int32_t flags) {
    editor->messages.clear();
    time.flags = flags;
    run();
    return editor->messages;
  };
  using Messages = std::vector<Bytes>;
  EXPECT_EQ(sent(kVstTransportPlaying | kVstTransportRecording), Messages{});
  EXPECT_EQ(sent(kVstTransportChanged), (Messages{{0xFC, 0, 0}}));
  EXPECT_EQ(sent(kVstTransportChanged | kVstTransportPlaying), (Messages{{0xFA, 0, 0}}));
  EXPECT_EQ(sent(kVstTransportChanged | kVstTransportRecording), (Messages{{0xFA, 0, 0}}));
  EXPECT_EQ(host.take().back().value, 0x40B);
  for (const double tempo : {0.0, -1.0, 1e30, 1e300, -1e300, std::nan(""), HUGE_VAL, 5e-324, 120.0}) {
    time.tempo = tempo;
    EXPECT_EQ(sent(kVstTempoValid), Messages{});
  }
  for (const std::intptr_t wild : {0, 1, -1}) {
    host.time = wild;
    run();
  }
}

TEST_F(Adapter, TakesMidiOutOfAnyEventsAndSkipsTheRest) {
  load();
  EXPECT_EQ(dispatch(effProcessEvents), 1);
  VstMidiEvent note{kVstMidiType, sizeof(VstMidiEvent), 10, 0, 0, 0, {'\x99', 36, 127, 0}, 0, 0, 0, 0};
  VstMidiEvent wild{kVstMidiType, -5, kLowest, -1, -1, -1, {'\xFF', '\xFF', '\xFF', '\xFF'}, -1, -1, -1, -1};
  VstMidiEvent hopeless{kVstMidiType, sizeof(VstMidiEvent), kHighest, 0, 0, 0, {'\x99', 37, 127, 0}, 0, 0, 0, 0};
  VstMidiSysexEvent sysex{kVstSysExType, sizeof(VstMidiSysexEvent), 0, 0, kHighest, 0, nullptr, 0};
  struct {
    std::int32_t numEvents;
    std::intptr_t reserved;
    std::array<void*, 6> events;
  } list{6, 0, {&sysex, nullptr, &hopeless, &note, &wild, &note}};
  EXPECT_EQ(dispatch(effProcessEvents, 0, 0, &list), 1);
  list.numEvents = -3;
  EXPECT_EQ(dispatch(effProcessEvents, 0, 0, &list), 1);
  run();
  EXPECT_EQ(editor->messages, (std::vector<Bytes>{{0x90, 36, 127}, {0xFF, 0xFF, 0xFF}, {0x90, 36, 127}}));
}

/// Offset of an instance's own data in its factory program: a time and an id. All other bytes equal the state's.
constexpr std::ptrdiff_t kProgramIdentity = 32;

/// Returns the distance from the first differing byte to the last.
std::ptrdiff_t spread(const Bytes& a, const Bytes& b) {
  EXPECT_EQ(a.size(), b.size());
  const auto first = std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first;
  const auto last = std::mismatch(a.rbegin(), a.rend(), b.rbegin(), b.rend()).first;
  return std::max<std::ptrdiff_t>(last.base() - first, 0);
}

TEST_F(Adapter, StateGoesIntoAnotherInstanceAndBadStateNowhere) {
  load();
  run();
  effect->setParameter(effect, 0, 0.375F);
  const Bytes saved = chunk();
  const Bytes head(saved.begin(), saved.begin() + 5);
  EXPECT_EQ(head, (Bytes{'M', 'P', 'c', 'k', 0x83}));
  plugin.reset();
  load();
  run();
  EXPECT_GT(spread(chunk(), saved), kProgramIdentity);
  Bytes copy = saved;
  EXPECT_EQ(dispatch(effSetChunk, 1, static_cast<std::intptr_t>(copy.size()), copy.data()), copy.size());
  EXPECT_EQ(effect->getParameter(effect, 0), 0.375F);
  EXPECT_LE(spread(chunk(), saved), kProgramIdentity);
  EXPECT_EQ(dispatch(effSetChunk, 0, -1, copy.data()), -1);
  EXPECT_EQ(dispatch(effSetChunk, 0, 4096, nullptr), 4096);
  EXPECT_EQ(dispatch(effSetChunk, 0, 0, copy.data()), 0);
  EXPECT_EQ(dispatch(effSetChunk, 0, static_cast<std::intptr_t>(copy.size()) / 2, copy.data()), copy.size() / 2);
  EXPECT_EQ(dispatch(effGetChunk), 0);
  EXPECT_LE(spread(chunk(), saved), kProgramIdentity);
}

TEST_F(Adapter, EditsOfTheEditorGoOutAsGesturesAndComeBackAsValues) {
  load();
  host.take();
  shell->setParameterFromEditor(2, 0.125F);
  const auto calls = host.take();
  ASSERT_EQ(calls.size(), 3U);
  const std::array<std::int32_t, 3> opcodes{audioMasterBeginEdit, audioMasterAutomate, audioMasterEndEdit};
  for (std::size_t i = 0; i < opcodes.size(); ++i) {
    EXPECT_EQ(calls[i].opcode, opcodes[i]);
    EXPECT_EQ(calls[i].index, 1);
  }
  EXPECT_EQ(calls[1].opt, 0.125F);
  EXPECT_EQ(effect->getParameter(effect, 1), 0.125F);
}

TEST_F(Adapter, TellsTheHostAllParametersOfASelectedProgramFromTheFirstOn) {
  load();
  run();  // The first block selects the first program.
  effect->setParameter(effect, 0, 0.125F);
  host.take();
  shell->saveProgramAs(3, "quiet");
  const int blocks = editor->blocks;
  shell->setProgram(0, 0);
  EXPECT_EQ(editor->blocks - blocks, 1) << "which selects it";
  auto calls = host.take();
  std::erase_if(calls, [](const HostCall& call) { return call.opcode != audioMasterAutomate; });
  ASSERT_EQ(calls.size(), 2U);
  EXPECT_EQ(calls[0].index, 0);
  EXPECT_EQ(calls[0].opt, 1.0F);
  EXPECT_EQ(calls[1].index, 1);
  EXPECT_EQ(calls[1].opt, 0.5F);
}

TEST_F(Adapter, SurvivesEveryOpcodeWithAnyNumbers) {
  load();
  std::mt19937 random(5);
  const std::array<std::int32_t, 5> indices{-1, 2, kHighest, kLowest, 0};
  Bytes room(4096);
  const auto call = [&](std::int32_t opcode, std::int32_t index, std::intptr_t value) {
    // Skipped: closing destroys the object, resuming waits, and events and records are read through pointers.
    if (opcode == effClose || opcode == effMainsChanged || opcode == effProcessEvents || opcode == effSetChunk) {
      return;
    }
    dispatch(opcode, index, value, nullptr, kNaN);
    std::fill(room.begin(), room.end(), std::uint8_t{0});
    dispatch(opcode, index, value, room.data(), 1e30F);
  };
  for (std::int32_t opcode = 0; opcode < 128; ++opcode) {
    for (const std::int32_t index : indices) {
      call(opcode, index, index);
    }
  }
  for (int i = 0; i < 10000; ++i) {
    const auto opcode = static_cast<std::int32_t>(random());
    std::fill(room.begin(), room.end(), std::uint8_t{0x55});
    EXPECT_EQ(dispatch(opcode | 128, static_cast<std::int32_t>(random()), -1, room.data()), 0);
    EXPECT_EQ(std::count(room.begin(), room.end(), std::uint8_t{0x55}), 4096);
  }
  run();
}

TEST_F(Adapter, KeepsPlayingThroughCallsInOddOrder) {
  load();
  for (int i = 0; i < 100; ++i) {
    run(i);
    dispatch(effOpen);
    dispatch(effMainsChanged, 0, 0);
    dispatch(effMainsChanged, 0, 0);
    dispatch(effSetBlockSize, 0, i % 2 == 0 ? -1 : 0);
    for (const float rate : {0.0F, -44100.0F, kNaN, INFINITY, 48000.0F}) {
      dispatch(effSetSampleRate, 0, 0, nullptr, rate);
    }
    float* nothing[2] = {nullptr, nullptr};
    effect->processReplacing(effect, nullptr, nullptr, 64);
    effect->processReplacing(effect, nothing, nothing, 64);
    effect->processReplacing(effect, nullptr, nullptr, 0);
    effect->processReplacing(effect, nullptr, nothing, -64);
    effect->processDoubleReplacing(effect, nullptr, nullptr, 64);
    effect->process(effect, nullptr, nullptr, 64);
  }
  dispatch(effSetProgram, 0, -1);
  dispatch(effSetProgram, 0, 1);
  EXPECT_EQ(dispatch(effGetProgram), 0);
}

TEST_F(Adapter, TellsTheHostOfAnEditorAndTheEditorOfTheContentScale) {
  struct ScaledEditor final : AEffEditor {
    using AEffEditor::AEffEditor;
    bool setContentScale(float newScale) override {
      scale = newScale;
      return newScale <= 2.0F;
    }
    float scale = 0.0F;
  };
  load();
  const auto giveScale = [this](float scale) {
    return dispatch(effVendorSpecific, fourCharacters('P', 'r', 'e', 'S'), fourCharacters('A', 'e', 'C', 's'), nullptr,
                    scale);
  };
  EXPECT_EQ(effect->flags & effFlagsHasEditor, 0);
  EXPECT_EQ(giveScale(1.5F), 0);
  auto owned = std::make_unique<ScaledEditor>(plugin.get());
  const ScaledEditor& window = *owned;
  plugin->setEditor(std::move(owned));
  EXPECT_NE(effect->flags & effFlagsHasEditor, 0);
  EXPECT_EQ(giveScale(1.5F), 1);
  EXPECT_EQ(giveScale(3.0F), 0) << "the editor does not follow it";
  for (const float scale : {0.0F, -1.0F, kNaN, INFINITY}) {
    EXPECT_EQ(giveScale(scale), 0);
  }
  EXPECT_EQ(dispatch(effVendorSpecific, fourCharacters('P', 'r', 'e', 'S'), fourCharacters('A', 'e', 'C', 't'), nullptr,
                     2.0F),
            0);
  EXPECT_EQ(window.scale, 3.0F);
  plugin->setEditor(nullptr);
  EXPECT_EQ(effect->flags & effFlagsHasEditor, 0);
}

TEST_F(Adapter, TakesCallsOfTheMainThreadWhileTheAudioThreadPlays) {
  host.vendor = "Native Instruments";
  load();
  dispatch(effMainsChanged, 0, 1);
  run();  // The first block selects the first program.
  std::atomic<bool> isPlaying = true;
  std::thread audio([&] {
    VstMidiEvent note{kVstMidiType, sizeof(VstMidiEvent), 10, 0, 0, 0, {'\x90', 36, 127, 0}, 0, 0, 0, 0};
    VstEvents events{1, 0, {reinterpret_cast<VstEvent*>(&note), nullptr}};
    for (int block = 0; block < 300; ++block) {
      dispatch(effProcessEvents, 0, 0, &events);
      effect->setParameter(effect, 0, static_cast<float>(block % 128) / 127.0F);
      run();
    }
    isPlaying = false;
  });
  do {  // At least once, because the audio thread may have finished before this thread gets here.
    effect->setParameter(effect, 1, 0.5F);
    text(effGetParamDisplay, 1);
    shell->setKeyState(36, 1);
    dispatch(effSetSampleRate, 0, 0, nullptr, 48000.0F);
    Bytes state = chunk();
    dispatch(effSetChunk, 0, static_cast<std::intptr_t>(state.size()), state.data());
  } while (isPlaying);
  audio.join();
  EXPECT_EQ(effect->getParameter(effect, 1), 0.5F);
}

TEST_F(Adapter, LivesWithoutAHostAndDoesNotLiveWithoutFiles) {
  AudioEffect* const alone = createVstPlugin(nullptr);
  ASSERT_NE(alone, nullptr);
  plugin.reset(dynamic_cast<BramelVstAdapter*>(alone));
  effect = alone->getAeffect();
  run();
  EXPECT_EQ(text(effGetEffectName, 0, 32), "Sivray");
  std::filesystem::remove(folder.pathOf("../../Macro/Sivray/readme.json"));
  EXPECT_EQ(createVstPlugin(FakeHost::callback), nullptr);
  EXPECT_TRUE(host.take().empty());
}

}  // namespace
}  // namespace adapter
