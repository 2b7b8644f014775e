// Chunks of all versions, macro records of both formats, the host's state content, and the results of broken ones.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "MacroScene.h"

namespace tesh::vimo {
namespace {

using cofu::core::ByteWriter;

/// Returns a macro record in the older format, with one set for each id.
Bytes olderRecord(const std::string& name, const std::vector<std::uint32_t>& ids) {
  Bytes record;
  ByteWriter writer(record);
  writer.text(name);
  writer.zeros(32 - name.size());
  for (const std::uint32_t id : ids) {
    writer.word(id);
    writer.real(0.0F);
    writer.real(0.5F);
  }
  return record;
}

/// Returns a chunk with two macros, no database, and the values 0.25 and 1.
Bytes chunkOf(std::uint32_t version) {
  const Bytes first = olderRecord("First", {8});
  const Bytes second = olderRecord("Second", {9});
  const auto macroBytes = static_cast<std::uint32_t>(12 + first.size() + second.size());
  const std::uint32_t entryBytes = version == 1280 ? 12 : 4;
  Bytes chunk;
  ByteWriter writer(chunk);
  for (const std::uint32_t word : {version, 2U, macroBytes, 0U, 4U, 2 * entryBytes}) {
    writer.word(word);
  }
  if (version >= 1024) {
    writer.word(0);
  }
  if (version >= 768) {
    for (const std::uint32_t word : {4U, 3U, 99U, 6U, 2U}) {
      writer.word(word);
    }
  }
  for (const std::size_t word : {std::size_t{2}, first.size(), second.size()}) {
    writer.word(static_cast<std::uint32_t>(word));
  }
  writer.bytes(first);
  writer.bytes(second);
  for (const float value : {0.25F, 1.0F}) {
    writer.real(value);
    writer.zeros(entryBytes - 4);
  }
  if (version >= 768) {
    writer.text("KitXfun");
  }
  return chunk;
}

TEST(MacroChunk, ReadsEveryVersion) {
  for (const std::uint32_t version : {512U, 768U, 1024U, 1280U}) {
    Scene scene;
    scene.controller().readChunk(chunkOf(version), Parts::all);
    ASSERT_EQ(scene.controller().macroCount(), 2U) << version;
    EXPECT_EQ(scene.macro(1).name(), "Second");
    EXPECT_EQ(scene.controller().macroValue(0), 0.25F);
    EXPECT_EQ(scene.macro(1).echoValue, 1.0F);
    EXPECT_EQ(scene.generator->plain, (std::map<std::uint32_t, float>{{8, 0.125F}, {9, 0.5F}}));
    const bool hasTexts = version != 512;
    EXPECT_EQ(scene.controller().programName(), hasTexts ? "KitX" : "");
    EXPECT_EQ(scene.controller().programComment(), hasTexts ? "fun" : "");
    EXPECT_EQ(scene.controller().programTime(), hasTexts ? 99U : 0U);
    EXPECT_EQ(scene.controller().programs().selection(),
              hasTexts ? (ProgramSelection{6, Bank::user}) : (ProgramSelection{0, Bank::factory}));
  }
}

TEST(MacroChunk, ASelectedProgramBringsItsCommentAndTime) {
  Scene scene;
  scene.addMacros(2);
  scene.controller().programs().storeCurrent(Bank::factory);
  scene.controller().readChunk(chunkOf(768), Parts::valuesOnly);
  scene.controller().programs().storeCurrent(Bank::user);
  scene.select(0, 0);
  EXPECT_EQ(scene.controller().programComment(), "");
  EXPECT_EQ(scene.controller().programTime(), 0U);
  scene.select(0, 2);
  EXPECT_EQ(scene.controller().programName(), "KitX");
  EXPECT_EQ(scene.controller().programComment(), "fun");
  EXPECT_EQ(scene.controller().programTime(), 99U);
}

TEST(MacroChunk, AnUnknownVersionOnlyEmptiesTheList) {
  Scene scene;
  scene.addMacros(2);
  scene.controller().readChunk(chunkOf(640), Parts::valuesOnly);
  EXPECT_EQ(scene.controller().macroCount(), 2U);
  scene.controller().readChunk(chunkOf(640), Parts::all);
  EXPECT_EQ(scene.controller().macroCount(), 0U);
}

TEST(MacroChunk, ReadsOlderMacroRecordsBySize) {
  const Bytes whole = olderRecord("Name", {4, 4, 5});
  const auto macroFrom = [&whole](std::size_t size) {
    auto macro = std::make_unique<MacroParameterControl>(nullptr, nullptr);
    macro->readRecord(std::span(whole).first(size));
    return macro;
  };
  EXPECT_EQ(macroFrom(31)->name(), "");
  EXPECT_EQ(macroFrom(32)->name(), "Name");
  EXPECT_EQ(macroFrom(32)->sets().size(), 0U);
  EXPECT_EQ(macroFrom(44)->sets().size(), 1U);
  EXPECT_EQ(macroFrom(45)->sets().size(), 0U);
  EXPECT_EQ(macroFrom(68)->sets().size(), 2U);
}

TEST(MacroChunk, CurrentMacroRecordsSkipUnknownSetsAndKeepTheFirst) {
  Bytes record;
  ByteWriter writer(record);
  writer.text(".rev");
  writer.word(256);
  writer.text("Sixteen letters!");
  writer.zeros(16);
  writer.word(4);
  for (const auto& [type, maximum] : std::vector<std::pair<std::uint32_t, float>>{{10, 9}, {1, 1}, {0, 2}, {3, 3}}) {
    writer.word(type);
    writer.word(12);
    writer.word(type == 3 ? 6 : 5);
    writer.real(0.0F);
    writer.real(maximum);
  }
  MacroParameterControl macro(nullptr, nullptr);
  macro.readRecord(record);
  ASSERT_EQ(macro.sets().size(), 2U);
  EXPECT_EQ(macro.sets()[0]->type(), MacroSetType::linearFlipped);
  EXPECT_EQ(macro.name(), "Sixteen letters!");
  Bytes written;
  macro.writeRecord(written);
  EXPECT_EQ(written.size(), record.size() - 40);
  EXPECT_TRUE(std::equal(record.begin(), record.begin() + 40, written.begin()));
  for (std::size_t size = 0; size < record.size(); ++size) {
    MacroParameterControl cut(nullptr, nullptr);
    cut.readRecord(Bytes(record.begin(), record.begin() + static_cast<std::ptrdiff_t>(size)));
    EXPECT_EQ(cut.sets().size(), size < 84 ? 0U : size < 124 ? 1U : 2U) << size;
  }
}

/// Gives the processor two macros and two factory programs, and selects the second one.
void fill(Scene& scene) {
  scene.addMacros(2);
  scene.macro(0).setName("Level");
  scene.store("One", {0.25F, 0.5F});
  scene.store("Two", {0.75F, 1.0F});
  scene.select(1);
  scene.macro(1).objectValue = 0x123456789AULL;
}

TEST(MacroChunk, WritesWhatItReads) {
  Scene scene;
  fill(scene);
  Bytes chunk;
  scene.controller().writeChunk(chunk);
  Scene other;
  other.controller().readChunk(chunk, Parts::all);
  EXPECT_EQ(other.controller().programs().programCount(Bank::factory), 2U);
  EXPECT_EQ(other.controller().programs().database(Bank::factory)->name(0), "One");
  EXPECT_EQ(other.macro(0).name(), "Level");
  EXPECT_EQ(other.controller().programs().selection(), (ProgramSelection{1, Bank::factory}));
  Bytes again;
  other.controller().writeChunk(again);
  ASSERT_EQ(again.size(), chunk.size());
  // The database's identifiers are new each time, so only the bytes around it are compared.
  const std::size_t database = 48 + *cofu::core::wordIn(chunk, 8);
  const std::size_t values = database + *cofu::core::wordIn(chunk, 12);
  EXPECT_TRUE(std::equal(chunk.begin(), chunk.begin() + static_cast<std::ptrdiff_t>(database), again.begin()));
  EXPECT_TRUE(std::equal(chunk.begin() + static_cast<std::ptrdiff_t>(values), chunk.end(),
                         again.begin() + static_cast<std::ptrdiff_t>(values)));
}

TEST(MacroChunk, BrokenChunksStayInside) {
  Scene source;
  fill(source);
  Bytes chunk;
  source.controller().writeChunk(chunk);
  for (std::size_t size = 0; size <= chunk.size(); ++size) {
    Scene scene;
    const Bytes cut(chunk.begin(), chunk.begin() + static_cast<std::ptrdiff_t>(size));
    scene.controller().readChunk(cut, Parts::all);
    EXPECT_LE(scene.controller().macroCount(), 2U);
  }
  for (std::size_t i = 0; i < 48 + 20; ++i) {
    for (const int value : {0x00, 0x7F, 0x80, 0xFF}) {
      Bytes mangled = chunk;
      mangled[i] = static_cast<std::uint8_t>(value);
      Scene scene;
      scene.controller().readChunk(mangled, Parts::all);
    }
  }
}

TEST(MacroChunk, PatchesAddToTheFactoryBank) {
  Scene scene;
  fill(scene);
  Bytes image;
  scene.controller().programs().saveDatabase(Bank::factory, image);
  for (const std::uint32_t version : {768U, 1024U}) {
    Bytes file;
    ByteWriter writer(file);
    for (const std::uint32_t word : {version, 2U, 5U, static_cast<std::uint32_t>(image.size())}) {
      writer.word(word);
    }
    writer.zeros(28 + 5);
    writer.bytes(image);
    scene.controller().readPatches(file);
    EXPECT_EQ(scene.controller().programs().programCount(Bank::factory), 4U) << version;
  }
}

TEST(StateContent, ComesBackWithoutTouchingProgramsOrMacros) {
  Scene scene;
  fill(scene);
  scene.processor->running = false;
  const auto view = scene.processor->getStateContent();
  const Bytes content(view.begin(), view.end());
  ASSERT_EQ(*cofu::core::wordIn(content, 4), 24U);
  ASSERT_EQ(*cofu::core::wordIn(content, 8), 3U);

  scene.processor->running = true;
  scene.select(0);
  scene.controller().programs().storeCurrent(Bank::factory);
  scene.processor->setStateContent(content);
  EXPECT_FALSE(scene.processor->running);
  EXPECT_EQ(scene.generator->log, "");
  EXPECT_EQ(scene.controller().programs().programCount(Bank::factory), 3U);
  EXPECT_EQ(scene.controller().programName(), "Two");
  EXPECT_EQ(scene.controller().programs().selection(), (ProgramSelection{1, Bank::factory}));
  EXPECT_EQ(scene.controller().macroValue(0), 0.75F);
  EXPECT_EQ(scene.controller().macroObject(1), 0x123456789AULL);
  EXPECT_EQ(scene.generator->plain.at(100), 0.75F);

  Bytes withEngine = content;
  withEngine[16 + 12] = 1;
  scene.processor->setStateContent(withEngine);
  EXPECT_EQ(scene.generator->log, "s");
}

TEST(StateContent, OfAnotherShapeChangesNothing) {
  Scene scene;
  fill(scene);
  const auto view = scene.processor->getStateContent();
  const Bytes content(view.begin(), view.end());
  scene.macro(0).storedValue = 0.125F;
  for (std::size_t size = 0; size < content.size(); ++size) {
    scene.processor->setStateContent(std::span(content).first(size));
  }
  for (std::size_t i = 0; i < 16; ++i) {
    Bytes mangled = content;
    mangled[i] = static_cast<std::uint8_t>(mangled[i] + 1);
    scene.processor->setStateContent(mangled);
  }
  EXPECT_EQ(scene.controller().macroValue(0), 0.125F);
}

TEST(StateContent, MiscFilesOfBothVersionsSetTheFlags) {
  const auto misc = [](std::uint32_t version, const char* tag, std::size_t words) {
    Bytes bytes;
    ByteWriter writer(bytes);
    writer.word(version);
    writer.text(tag);
    for (std::size_t i = 0; i < words; ++i) {
      writer.word(7);
    }
    return bytes;
  };
  struct Case {
    Bytes file;
    bool running;
    bool stores;
  };
  for (const Case& given : std::vector<Case>{{misc(256, "csim", 1), true, false},
                                             {misc(256, "csim", 0), false, true},
                                             {misc(512, "csim", 2), true, true},
                                             {misc(512, "csim", 1), false, true},
                                             {misc(512, "cism", 2), false, true},
                                             {misc(768, "csim", 2), false, true}}) {
    Scene scene;
    scene.processor->running = false;
    scene.processor->storeEngineChunk = true;
    scene.processor->readMisc(given.file);
    EXPECT_EQ(scene.processor->running, given.running);
    EXPECT_EQ(scene.processor->storeEngineChunk, given.stores);
  }
}

}  // namespace
}  // namespace tesh::vimo
