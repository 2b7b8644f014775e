// Movements, their frames and echoes; programs and the selection; full queues.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "MacroScene.h"
#include "macro/MacroSetQuantized.h"

namespace tesh::vimo {
namespace {

using cofu::core::boxed::makeBox;

using Kind = MacroCommandKind;
using Moves = std::vector<TimedValue>;

TEST(MacroController, OneMovementDrivesAllSetsEvenWithoutAChange) {
  Scene scene;
  scene.addMacros(2);
  Scene::addSet(scene.macro(1), 7, MacroSetType::linearFlipped);
  Scene::addSet(scene.macro(1), 7, MacroSetType::linear);
  scene.macro(1).objectValue = 3;
  for (int i = 0; i < 2; ++i) {
    scene.command(Kind::setMacro, 1, 0.25F);
    scene.run();
    EXPECT_EQ(scene.generator->automation, (Moves{{101, 0.25F, 0, 0}, {7, 0.75F, 0, 0}}));
    EXPECT_EQ(scene.echo.moves, (Moves{{1, 0.25F, 0, 0}}));
  }
  EXPECT_EQ(scene.macro(1).objectValue, 0U);
  scene.command(Kind::setMacro, 2, 0.5F);
  scene.command(Kind::setParameter, 33, 0.125F);
  scene.run();
  EXPECT_EQ(scene.generator->automation, (Moves{{33, 0.125F, 0, 0}}));
  EXPECT_TRUE(scene.echo.moves.empty());
  scene.processor->commandQueue.put({Kind::setMacro, 0, 0.9F, 55, 0});
  scene.run();
  EXPECT_EQ(scene.generator->automation, (Moves{{100, 0.0F, 0, 55}}));
  EXPECT_EQ(scene.controller().macroObject(0), 55U);
}

TEST(MacroController, TemporaryMovesReturnToTheStoredValue) {
  Scene scene;
  scene.addMacros(3);
  scene.command(Kind::setMacro, 1, 0.5F);
  scene.command(Kind::moveTemporarily, 1, 0.75F);
  scene.command(Kind::moveTemporarily, 9, 0.75F);
  scene.run();
  EXPECT_EQ(scene.controller().macroValue(1), 0.5F);
  EXPECT_EQ(scene.controller().liveMacroValue(1), 0.75F);
  EXPECT_EQ(scene.macro(1).echoValue, 0.5F);
  scene.command(Kind::endTemporaryMoves, 0, 0.0F);
  scene.run();
  EXPECT_EQ(scene.generator->automation, (Moves{{101, 0.5F, 0, 0}}));
  EXPECT_EQ(scene.echo.moves, (Moves{{1, 0.5F, 0, 0}}));
}

TEST(MacroController, TimestampsBecomeFramesOfTheBlock) {
  Scene scene;
  scene.addMacros(1);
  constexpr std::uint64_t start = 5'000'000'000;
  const auto at = [](double frame) { return start + static_cast<std::uint64_t>(std::ceil(frame * 1e9 / 44100.0)); };
  scene.command(Kind::setMacro, 0, 0.1F, start - 1'000'000);
  scene.command(Kind::setMacro, 0, 0.2F, at(10.0));
  scene.command(Kind::setMacro, 0, 0.3F, at(63.9));
  scene.command(Kind::setMacro, 0, 0.4F, at(64.0));
  scene.command(Kind::setMacro, 0, 0.5F, start);
  scene.run(64, start);
  EXPECT_EQ(scene.echo.moves, (Moves{{0, 0.1F, 0, 0}, {0, 0.2F, 10, 0}, {0, 0.3F, 63, 0}}));
  scene.run(0, start);
  EXPECT_TRUE(scene.echo.moves.empty());
  scene.run(64, start, 0.5, 1e9 / 44100.0);
  EXPECT_EQ(scene.echo.moves, (Moves{{0, 0.4F, 33, 0}, {0, 0.5F, 1, 0}}));
  scene.command(Kind::setMacro, 0, 0.6F, std::numeric_limits<std::uint64_t>::max() / 2);
  scene.run();
  scene.run(64, 0, 1e300);
  EXPECT_TRUE(scene.echo.moves.empty());
}

TEST(MacroController, FullQueuesDropAndGoOn) {
  Scene scene(4);
  scene.addMacros(1);
  for (int i = 0; i < 600; ++i) {
    scene.command(Kind::setMacro, 0, static_cast<float>(i) / 1024.0F);
  }
  scene.run();
  EXPECT_EQ(scene.echo.moves.size(), 511U);
  EXPECT_EQ(scene.generator->automation.size(), 3U);
  EXPECT_EQ(scene.macro(0).storedValue, 510.0F / 1024.0F);
  int taken = 0;
  while (scene.processor->programQueue.put(MidiEvent::programChange(1, 0, 0))) {
    ++taken;
  }
  EXPECT_EQ(taken, 7);
}

TEST(MacroController, ReadersSeeCleanValues) {
  Scene scene;
  scene.addMacros(1);
  for (const auto& [raw, clean] : std::vector<std::pair<float, float>>{
           {std::nanf(""), 0.0F}, {INFINITY, 0.0F}, {-INFINITY, 0.0F}, {1.5F, 1.0F}, {-0.5F, 0.0F}}) {
    scene.macro(0).storedValue = raw;
    scene.macro(0).liveValue = raw;
    EXPECT_EQ(scene.controller().macroValue(0), clean);
    EXPECT_EQ(scene.controller().liveMacroValue(0), clean);
  }
}

TEST(MacroController, SelectingAProgramSetsEveryMacroOnce) {
  Scene scene;
  scene.addMacros(2);
  scene.store("One", {0.25F, 0.5F});
  scene.store("Two", {0.75F, 1.0F});
  scene.addMacros(1);
  scene.macro(2).defaultValue = 0.625F;
  scene.select(9);
  EXPECT_EQ(scene.echo.moves, (Moves{{0, 0.75F, 0, 0}, {1, 1.0F, 0, 0}, {2, 0.625F, 0, 0}}));
  EXPECT_EQ(scene.controller().programs().selection(), (ProgramSelection{1, Bank::factory}));
  EXPECT_EQ(scene.controller().programName(), "Two");
  scene.command(Kind::setMacro, 0, 0.1F);
  scene.select(1);
  EXPECT_EQ(scene.echo.moves.size(), 1U);
  EXPECT_EQ(scene.echo.programs, 2);
  scene.select(0, 1);
  scene.select(0, 4);
  EXPECT_EQ(scene.controller().programs().selection(), (ProgramSelection{1, Bank::factory}));
}

TEST(MacroController, ImagesOfAnotherMacroCountAreFitted) {
  Scene writer;
  writer.addMacros(10);
  writer.store("Old", std::vector<float>(10, 0.5F));
  Bytes image;
  writer.controller().programs().saveDatabase(Bank::factory, image);
  for (const std::size_t count : {8U, 12U}) {
    Scene scene;
    scene.addMacros(count);
    scene.macro(count - 1).defaultValue = 0.25F;
    scene.controller().programs().loadDatabase(Bank::user, image, 10, ProgramDatabase::Mode::replace);
    const auto entries = scene.controller().programs().database(Bank::user)->entries(0);
    ASSERT_EQ(entries.size(), count);
    EXPECT_EQ(entries[count - 1].value, count == 12 ? 0.25F : 0.5F);

    scene.controller().programs().loadDatabase(Bank::ghost, Bytes{1, 2, 3, 4}, 0, ProgramDatabase::Mode::append);
    EXPECT_EQ(scene.controller().programs().database(Bank::user)->entries(0)[0].value, 0.5F)
        << "no program came, none may change";
  }
}

TEST(MacroController, TheSelectionFollowsItsProgram) {
  struct Case {
    std::uint64_t from, to, before, after;
  };
  for (const Case& move : std::vector<Case>{{2, 5, 4, 3},
                                            {2, 5, 2, 5},
                                            {2, 5, 6, 6},
                                            {5, 2, 2, 3},
                                            {5, 2, 5, 2},
                                            {5, 2, 1, 1},
                                            {5, 2, 4, 5},
                                            {2, 9, 4, 4}}) {
    Scene scene;
    for (int i = 0; i < 7; ++i) {
      scene.controller().programs().storeCurrent(Bank::user);
    }
    scene.controller().programs().setSelection(move.before, Bank::user);
    scene.controller().programs().moveProgram(Bank::user, move.from, move.to);
    EXPECT_EQ(scene.controller().programs().selection(), (ProgramSelection{move.after, Bank::user}));
  }
}

TEST(MacroController, DeletingTheSelectedNumberLeavesTheGhostBank) {
  Scene scene;
  for (int i = 0; i < 5; ++i) {
    scene.controller().programs().storeCurrent(Bank::user);
  }
  scene.controller().programs().setSelection(3, Bank::factory);
  scene.controller().programs().deleteProgram(3, Bank::user);
  EXPECT_EQ(scene.controller().programs().selection(), (ProgramSelection{3, Bank::ghost}));
  scene.controller().programs().setSelection(3, Bank::user);
  scene.controller().programs().deleteProgram(1, Bank::user);
  EXPECT_EQ(scene.controller().programs().selection(), (ProgramSelection{2, Bank::user}));
  scene.controller().programs().deleteProgram(2, Bank::user);
  scene.controller().programs().deleteProgram(2, Bank::user);
  EXPECT_EQ(scene.controller().programs().selection(), (ProgramSelection{2, Bank::ghost}));
  EXPECT_EQ(scene.controller().programs().programCount(Bank::user), 2U);
}

TEST(MacroController, StepsComeFromTheFirstSet) {
  Scene scene;
  scene.addMacros(2);
  EXPECT_EQ(scene.controller().stepCount(0), 128U);
  auto half = makeMacroSet(MacroSetType::squaredFlipped);
  half->setProperty(0, makeBox(tmm{0.0F, 3.0F / 127.0F}));
  scene.controller().addMacro().addSet(std::move(half));
  auto steps = std::make_unique<MacroSetQuantized>();
  steps->setValues({0.0F, 0.5F, 1.0F});
  scene.controller().addMacro().addSet(std::move(steps));
  EXPECT_EQ(scene.controller().stepCount(2), 4U);
  EXPECT_EQ(scene.controller().stepCount(3), 3U);
  scene.controller().addMacro();
  EXPECT_EQ(scene.controller().stepCount(4), 128U);
  EXPECT_EQ(scene.controller().stepCount(5), 128U);
}

TEST(PluginMacroControllable, AStoppedEngineLetsTheInputPass) {
  Scene scene;
  std::vector<float> input(8, 0.5F);
  std::vector<float> left(8, 1.0F);
  std::vector<float> right(8, 1.0F);
  float* inputs[1] = {input.data()};
  float* outputs[2] = {left.data(), right.data()};
  ProcessBlock block;
  block.inputs = inputs;
  block.inputCount = 1;
  block.outputs = outputs;
  block.frames = 8;
  scene.processor->running = false;
  scene.processor->process(block, 0, 1.0, 0.0);
  scene.processor->process(block, 0, 1.0, 0.0);
  EXPECT_EQ(left, input);
  EXPECT_EQ(right, std::vector<float>(8, 0.0F));
  EXPECT_EQ(scene.generator->log, "d");
  scene.processor->running = true;
  scene.run();
  scene.run();
  EXPECT_EQ(scene.generator->log, "da");
  EXPECT_EQ(scene.generator->blocks, 2);
}

TEST(PluginMacroControllable, QueuedMidiJoinsTheBlockAndNotesAreReported) {
  Scene scene;
  const std::array<std::uint8_t, 3> note{0x93, 36, 200};
  const std::array<std::uint8_t, 3> off{0x80, 37, 0};
  const std::array<std::uint8_t, 3> control{0xB0, 7, 1};
  scene.midi = {MidiEvent(off, 3), MidiEvent(control, 4)};
  scene.midi.reserve(3);
  scene.processor->programQueue.put(MidiEvent(note, 0));
  scene.run();
  EXPECT_EQ(scene.midi.size(), 3U);
  EXPECT_EQ(scene.echo.notes, (std::vector<std::uint16_t>{37 << 8, 36 << 8 | 72}));
  EXPECT_EQ(scene.echo.programs, 0);
}

}  // namespace
}  // namespace tesh::vimo
