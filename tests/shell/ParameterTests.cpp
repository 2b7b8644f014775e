// The ways by which values reach the engine, the values that are read back, and the reports to host and editor; keys
// and properties.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <map>

#include "ShellScene.h"
#include "support/QuietSides.h"

namespace shell {
namespace {

TEST_F(Shell, KnowsItsParametersByIdAndByVisibleIndex) {
  EXPECT_EQ(shell->parameterCount(), 3U);
  EXPECT_EQ(shell->cachedParameterCount(), 4U);
  EXPECT_EQ(shell->parameterId(1), 1U);
  EXPECT_EQ(shell->parameterId(2), 3U);
  EXPECT_EQ(shell->parameterName(3), "macro3");
  EXPECT_EQ(shell->parameterSteps(3), 128U);
  EXPECT_EQ(shell->parameterDefault(3), 0.75F);
  EXPECT_EQ(shell->parameterValue(3), 0.25F);
  EXPECT_EQ(shell->parameterDisplay(3), "0.250000");
  for (const std::uint64_t far : {std::uint64_t{4}, std::uint64_t{1} << 32, BramelInstrument::kNoParameter}) {
    EXPECT_EQ(shell->parameterId(far), BramelInstrument::kNoParameter);
    EXPECT_EQ(shell->parameterName(far) + shell->parameterDisplay(far), "");
    EXPECT_EQ(shell->parameterValue(far) + shell->parameterDefault(far), 0.0F);
    EXPECT_EQ(shell->parameterSteps(far) + shell->parameterInteger(far), 0U);
    shell->setParameter(far, 1.0F);
    shell->setParameterFromEditor(far, 1.0F);
    shell->setParameterInteger(far, 1);
    shell->beginGesture(far);
    shell->endGesture(far);
  }
  run();
  EXPECT_TRUE(generator->automation.empty());
  EXPECT_TRUE(host->log.empty());
}

TEST_F(Shell, ReadsBackWhatWasWrittenWhileNoAudioRuns) {
  shell->setParameter(1, 0.5F);
  EXPECT_EQ(shell->parameterDisplay(1), "0.500000");
  EXPECT_EQ(shell->parameterValue(1), 0.5F);
  for (const float bad : {-0.001F, 1.001F, std::numeric_limits<float>::quiet_NaN()}) {
    shell->setParameter(1, bad);
    shell->setParameterFromEditor(2, bad);
    shell->setParameterFromEditor(1, bad);
  }
  EXPECT_EQ(shell->parameterDisplay(1), "0.500000");
  EXPECT_EQ(shell->parameterValue(1), 0.5F);
  EXPECT_EQ(shell->parameterValue(2), 0.25F);
  shell->setParameterInteger(2, 1234567890123);
  EXPECT_EQ(shell->parameterInteger(2), 1234567890123U);
  EXPECT_EQ(shell->parameterValue(2), 0.25F);
  EXPECT_EQ(controller().macroObject(2), 1234567890123U);
}

TEST_F(Shell, GivesTheEngineEveryValueAndTheEditorOneChangeEach) {
  run();
  editor->log.clear();
  shell->setParameter(3, 0.125F);
  shell->setParameter(0, 0.5F);
  shell->setParameter(3, 1.0F);
  run();
  std::vector<std::pair<std::uint32_t, float>> arrived;
  for (const auto& entry : generator->automation) {
    arrived.emplace_back(entry.id, entry.value);
    EXPECT_EQ(entry.frame, 0U);
  }
  EXPECT_EQ(arrived, (std::vector<std::pair<std::uint32_t, float>>{{103, 0.125F}, {100, 0.5F}, {103, 1.0F}}));
  EXPECT_EQ(editor->log, (Log{"changed 0", "changed 3", "release", "hold"}));
  EXPECT_EQ(shell->parameterValue(3), 1.0F);
  editor.reset();
  shell->setParameter(3, 0.0F);
  run();
  EXPECT_EQ(shell->parameterValue(3), 0.0F);
}

TEST_F(Shell, LetsTheLatestValueOfEachParameterThroughHoweverManyWritesCome) {
  for (const std::uint32_t writes : {600U, 200000U}) {
    generator->automation.clear();
    editor->log.clear();
    shell->setParameter(1, 0.125F);
    for (std::uint32_t i = 0; i < writes; ++i) {
      shell->setParameter(i % 2 == 0 ? 0 : 3, static_cast<float>(i) / static_cast<float>(writes));
    }
    shell->setParameter(2, 1.0F);
    run();
    EXPECT_EQ(generator->automation.size(), 511U) << "as many as the queue holds";
    EXPECT_EQ(generator->automation.front().id, kFirstTarget + 1) << "the oldest that nothing has replaced";
    EXPECT_EQ(generator->automation.back().id, kFirstTarget + 2);
    EXPECT_EQ(editor->log, (Log{"changed 0", "changed 1", "changed 2", "changed 3", "release", "hold"}));
    std::map<std::uint32_t, float> engine;
    for (const auto& entry : generator->automation) {
      engine[entry.id] = entry.value;
    }
    for (std::uint32_t id = 0; id < 4; ++id) {
      EXPECT_EQ(engine[kFirstTarget + id], shell->parameterValue(id)) << id;
    }
    EXPECT_EQ(engine[kFirstTarget + 3], static_cast<float>(writes - 1) / static_cast<float>(writes));
  }
}

TEST_F(Shell, TakesTheEditorsWritesByWayOfTheHost) {
  shell->setParameterFromEditor(3, 0.5F);
  shell->beginGesture(0);
  shell->setParameterFromEditor(0, 0.5F);
  shell->setParameterFromEditor(0, 1.0F);
  shell->endGesture(0);
  shell->setParameterFromEditor(2, 0.0F);
  shell->beginGesture(2);
  EXPECT_EQ(host->log, (Log{"begin 2", "automate 2", "end 2", "begin 0", "automate 0", "automate 0", "end 0"}));
  host->log.clear();
  shell->setParameterFromEditor(0, 1.0F);
  EXPECT_EQ(host->log, (Log{"begin 0", "automate 0", "end 0"})) << "the gesture has ended";
  EXPECT_EQ(shell->parameterValue(0), 1.0F);
  EXPECT_EQ(shell->parameterValue(2), 0.0F);
  EXPECT_EQ(shell->parameterValue(3), 0.5F);
}

TEST_F(Shell, AnswersAListenerThatAsksInsideABlock) {
  struct Asking final : support::QuietHost {
    explicit Asking(BramelInstrument& shell) : instrument(shell) {}
    void sendMidi(const std::uint8_t*, std::size_t, std::int32_t) override {
      instrument.setParameter(0, 1.0F);
      seen = instrument.parameterValue(0);
    }
    BramelInstrument& instrument;
    float seen = -1.0F;
  };
  const auto asking = std::make_shared<Asking>(*shell);
  shell->setHostCallback(asking);
  generator->toHost = {vimo::MidiEvent(Bytes{0x90, 1, 2}, 5)};
  run();
  EXPECT_EQ(asking->seen, 0.25F);
  EXPECT_EQ(generator->frames.size(), 1U);
  generator->toHost.clear();
  EXPECT_EQ(shell->parameterValue(0), 1.0F);
}

TEST_F(Shell, TellsTheHostOfABlockThatChoosesASound) {
  struct Counting final : support::QuietHost {
    void soundChanged() override { ++sounds; }
    int sounds = 0;
  };
  const auto counting = std::make_shared<Counting>();
  shell->setHostCallback(counting);
  shell->setParameter(1, 0.5F);
  run();
  EXPECT_EQ(counting->sounds, 0) << "a level";
  shell->setParameter(0, 0.5F);
  EXPECT_EQ(counting->sounds, 0) << "before the block";
  run();
  run();
  EXPECT_EQ(counting->sounds, 1);
}

TEST_F(Shell, KeepsKeyStatesAndProperties) {
  EXPECT_EQ(shell->keyState(127), 9U);
  shell->setKeyState(60, 4);
  shell->setKeyState(128, 4);
  shell->setKeyState(-1, 4);
  EXPECT_EQ(shell->keyState(60), 4U);
  EXPECT_EQ(shell->keyState(128) + shell->keyState(-1), 0U);
  EXPECT_EQ(host->log, Log{"key 60"});
  shell->setAllKeyStates(1);
  EXPECT_EQ(host->log.size(), 129U);
  EXPECT_EQ(host->log.back(), "key 127");

  using Number = cofu::core::boxed::holder<int>;
  shell->setProperty("a", std::make_unique<Number>(7));
  const auto copy = shell->property("a");
  shell->setProperty("a", nullptr);
  ASSERT_NE(dynamic_cast<Number*>(copy.get()), nullptr);
  EXPECT_EQ(dynamic_cast<Number*>(copy.get())->value, 7);
  EXPECT_EQ(shell->property("a"), nullptr);
  EXPECT_EQ(shell->property("b"), nullptr);
}

TEST_F(Shell, TakesWritesInTheirOrderThoughSomeHaveMadeRoomForOthers) {
  const auto idsAfter = [this](bool writesAgain) {
    generator->automation.clear();
    shell->setParameter(3, 0.125F);
    shell->setParameter(0, 0.125F);
    for (int i = 0; i < 600; ++i) {
      shell->setParameter(1, i % 2 == 0 ? 0.25F : 0.5F);
    }
    if (writesAgain) {
      shell->setParameter(3, 0.75F);
    }
    run();
    std::vector<std::uint32_t> ids;
    for (const vimo::TimedValue& value : generator->automation) {
      if (ids.empty() || ids.back() != value.id) {
        ids.push_back(value.id);
      }
    }
    return ids;
  };
  EXPECT_EQ(idsAfter(false), (std::vector<std::uint32_t>{103, 100, 101}));
  EXPECT_EQ(idsAfter(true), (std::vector<std::uint32_t>{100, 101, 103}))
      << "a later write takes the place of a held one";
  EXPECT_EQ(generator->automation.back().value, 0.75F);
}

}  // namespace
}  // namespace shell
