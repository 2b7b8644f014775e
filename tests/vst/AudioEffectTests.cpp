// The base classes as called by a host: through the record, by opcode.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "host/vst/AudioEffectX.h"
#include "host/vst/NumberText.h"

namespace tesh::bramel::vst {
namespace {

struct HostCall {
  std::int32_t opcode;
  std::int32_t index;
  std::intptr_t value;
  float opt;
};

/// A host that records its calls and answers each with the same number.
struct FakeHost {
  static inline std::vector<HostCall> calls;
  static inline std::intptr_t answer = 0;
  static std::intptr_t SIVRAY_VST_CALL call(AEffect* /*effect*/, std::int32_t opcode, std::int32_t index,
                                            std::intptr_t value, void* /*ptr*/, float opt) {
    calls.push_back({opcode, index, value, opt});
    return answer;
  }
};

/// Records its calls.
class Recorder : public AudioEffectX {
 public:
  explicit Recorder(std::string& newLog, AudioMasterCallback master = nullptr)
      : AudioEffectX(master, 4, 2), log(newLog) {}
  ~Recorder() override { log += "gone "; }
  void close() override { log += "close "; }
  void suspend() override { log += "suspend "; }
  void resume() override { throw std::bad_alloc(); }
  void setProgram(std::int32_t index) override { log += "program " + std::to_string(index) + " "; }
  void setParameter(std::int32_t index, float value) override {
    log += "parameter " + std::to_string(index) + " " + std::to_string(value) + " ";
  }
  std::int32_t setChunk(void*, std::int32_t size, bool isPreset) override { return isPreset ? size : -size; }

 private:
  std::string& log;
};

class KeyEditor : public AEffEditor {
 public:
  explicit KeyEditor(VstKeyCode& newLast) : AEffEditor(nullptr), last(newLast) {}
  bool onKeyDown(VstKeyCode& key) override {
    last = key;
    return true;
  }

 private:
  VstKeyCode& last;
};

class Record : public testing::Test {
 protected:
  void SetUp() override {
    FakeHost::calls.clear();
    FakeHost::answer = 0;
  }
  std::intptr_t dispatch(std::int32_t opcode, std::int32_t index = 0, std::intptr_t value = 0, void* ptr = nullptr,
                         float opt = 0.0F) const {
    return effect->dispatcher(effect, opcode, index, value, ptr, opt);
  }

  std::string log;
  std::unique_ptr<Recorder> plugin = std::make_unique<Recorder>(log, FakeHost::call);
  AEffect* effect = plugin->getAeffect();
};

TEST_F(Record, IsWhatHostsReadBeforeTheyAskAnything) {
  EXPECT_EQ(effect->magic, 0x56737450);     // "VstP"
  EXPECT_EQ(effect->uniqueID, 0x4E6F4566);  // "NoEf"
  EXPECT_EQ(effect->numPrograms, 4);
  EXPECT_EQ(effect->numParams, 2);
  EXPECT_EQ(effect->numInputs, 1);
  EXPECT_EQ(effect->numOutputs, 2);
  EXPECT_EQ(effect->flags, 16);
  EXPECT_EQ(effect->ioRatio, 1.0F);
  EXPECT_EQ(effect->version, 1);
  plugin->isSynth(true);
  plugin->programsAreChunks(true);
  plugin->noTail(true);
  plugin->canDoubleReplacing(true);
  plugin->canProcessReplacing(false);
  EXPECT_EQ(effect->flags, 32 + 256 + 512 + 4096);
  EXPECT_EQ(dispatch(effGetPlugCategory), 2);
  EXPECT_TRUE(FakeHost::calls.empty()) << "the host does not know the record yet";
}

TEST_F(Record, AnswersWhatNobodyServes) {
  const std::vector<std::pair<std::int32_t, std::intptr_t>> notZero{{effIdentify, 0x4E764566},
                                                                    {effCanBeAutomated, 1},
                                                                    {effGetVstVersion, 2400},
                                                                    {effGetCurrentMidiProgram, -1},
                                                                    {effSetTotalSampleToProcess, 77}};
  for (std::int32_t opcode = 0; opcode < 128; ++opcode) {
    if (opcode == effClose || opcode == effSetProgram) {
      continue;
    }
    std::intptr_t expected = 0;
    for (const auto& [known, answer] : notZero) {
      expected = opcode == known ? answer : expected;
    }
    expected = opcode == effSetChunk ? -77 : expected;
    EXPECT_EQ(dispatch(opcode, 0, 77), expected) << opcode;
  }
  for (const std::int32_t opcode : {-1, 128, 0x7FFFFFFF, std::numeric_limits<std::int32_t>::min()}) {
    EXPECT_EQ(dispatch(opcode, 0, 77), 0) << opcode;
  }
}

TEST_F(Record, NumbersThatDoNotFitNeverBecomeOthers) {
  dispatch(effSetProgram, 0, 3);
  dispatch(effSetProgram, 0, 4);
  dispatch(effSetProgram, 0, std::intptr_t{1} << 32);
  dispatch(effSetProgram, 0, std::numeric_limits<std::intptr_t>::min() + 2);
  EXPECT_EQ(log, "program 3 program -2147483648 ");
  EXPECT_EQ(dispatch(effSetChunk, 1, (std::intptr_t{1} << 32) + 5), 0x7FFFFFFF);
}

TEST_F(Record, ClosingEndsTheObjectOnce) {
  plugin.release();
  EXPECT_EQ(dispatch(effClose), 1);
  EXPECT_EQ(log, "close gone ");
}

TEST_F(Record, NothingThrownReachesTheHost) {
  EXPECT_EQ(dispatch(effMainsChanged, 0, 1), 0);
  EXPECT_EQ(dispatch(effMainsChanged, 0, 0), 0);
  EXPECT_EQ(log, "suspend ");
}

TEST_F(Record, EditorsGetKeysAndBelongToTheirPlugin) {
  EXPECT_EQ(dispatch(effEditKeyDown, 'a', 3, nullptr, 2.0F), 0);
  VstKeyCode key{};
  plugin->setEditor(std::make_unique<KeyEditor>(key));
  EXPECT_EQ(effect->flags & effFlagsHasEditor, effFlagsHasEditor);
  EXPECT_EQ(dispatch(effEditKeyDown, 'a', 0x103, nullptr, 2.5F), 1);
  EXPECT_EQ(key.character, 'a');
  EXPECT_EQ(key.virt, 3);
  EXPECT_EQ(key.modifier, 2);
  for (const float wild : {-1.0F, 1e9F, std::nanf("")}) {
    EXPECT_EQ(dispatch(effEditKeyDown, 'a', 0, nullptr, wild), 1);
    EXPECT_EQ(key.modifier, 0);
  }
  ERect* rect = reinterpret_cast<ERect*>(&key);
  EXPECT_EQ(dispatch(effEditGetRect, 0, 0, &rect), 0);
  EXPECT_EQ(rect, nullptr);
  plugin->setEditor(nullptr);
  EXPECT_EQ(effect->flags & effFlagsHasEditor, 0);
}

TEST_F(Record, SpeakerArrangementsBecomeNullWhereTheyAreAddresses) {
  int arrangement = 0;
  void* input = &arrangement;
  void* output = &arrangement;
  EXPECT_EQ(dispatch(effGetSpeakerArrangement, 0, reinterpret_cast<std::intptr_t>(&input), &output), 0);
  EXPECT_EQ(input, nullptr);
  EXPECT_EQ(output, nullptr);
  for (const std::intptr_t wild : {-1, 1, 8, 0x7FFFFFFF, std::numeric_limits<std::int32_t>::min()}) {
    EXPECT_EQ(dispatch(effGetSpeakerArrangement, 0, wild), 0);
  }
}

TEST_F(Record, HostsThatAnswerEverythingAlikeAreNotBelieved) {
  for (const std::intptr_t answer : {0, 1, 2, -1, 0x10001}) {
    FakeHost::answer = answer;
    EXPECT_EQ(plugin->getTimeInfo(kVstTempoValid), nullptr);
  }
  EXPECT_EQ(FakeHost::calls.back().value, 0x400);
  VstTimeInfo time{};
  FakeHost::answer = reinterpret_cast<std::intptr_t>(&time);
  EXPECT_EQ(plugin->getTimeInfo(0), &time);
}

TEST_F(Record, AutomationReachesTheObjectAndThenTheHost) {
  plugin->setParameterAutomated(1, 0.5F);
  ASSERT_EQ(FakeHost::calls.size(), 1U);
  EXPECT_EQ(FakeHost::calls[0].opcode, 0);
  EXPECT_EQ(FakeHost::calls[0].index, 1);
  EXPECT_EQ(FakeHost::calls[0].opt, 0.5F);
  Recorder alone(log);
  alone.setParameterAutomated(0, 0.25F);
  EXPECT_EQ(log, "parameter 1 0.500000 parameter 0 0.250000 ");
  EXPECT_EQ(alone.getMasterVersion(), 1);
  EXPECT_FALSE(alone.beginEdit(0));
  EXPECT_EQ(alone.getTimeInfo(0), nullptr);
}

TEST(NumberText, FitsEightCharactersAndIsCutNotRounded) {
  EXPECT_EQ(floatText(0.0), "0.000000");
  EXPECT_EQ(floatText(0.9999999), "0.999999");
  EXPECT_EQ(floatText(-12.5), "-12.5000");
  EXPECT_EQ(floatText(1234567.75), "1234567.");
  EXPECT_EQ(floatText(99999999.0), "99999999");
  EXPECT_EQ(floatText(-9999999.0), "-9999999");
  for (const double tooLong : {1e8, -1e7, 1e300, std::nan("")}) {
    EXPECT_EQ(floatText(tooLong), "Huge!");
  }
  EXPECT_EQ(integerText(-9999999), "-9999999");
  EXPECT_EQ(integerText(std::numeric_limits<std::int32_t>::min()), "Huge!");
  EXPECT_EQ(levelText(0.1F), "-20.0000");
  EXPECT_EQ(levelText(0.0F), "-oo");
  std::array<char, 4> text{'x', 'x', 'x', 'x'};
  copyText(text.data(), "abcdef", 3);
  EXPECT_STREQ(text.data(), "ab");
  EXPECT_EQ(text[3], 'x');
}

}  // namespace
}  // namespace tesh::bramel::vst
