// Programs, their files, and the state that a host saves.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <atomic>
#include <chrono>
#include <fstream>
#include <functional>
#include <iterator>
#include <thread>

#include "ShellScene.h"
#include "core/LittleEndian.h"
#include "platform/FolderLock.h"
#include "storage/programs/ProgramFileCopies.h"
#include "storage/state/EditBufferRecord.h"
#include "support/Scratch.h"

namespace shell {
namespace {

constexpr std::uint64_t kFactory = 0;
constexpr std::uint64_t kUser = 3;

class Programs : public Shell {
 protected:
  void store(std::uint64_t bank, const std::string& name, float value) {
    for (std::uint64_t id = 0; id < 4; ++id) {
      shell->setParameter(id, value);
    }
    shell->saveProgramAs(bank, name);
    run();
  }
  Log names(std::uint64_t bank) {
    Log list;
    for (std::uint64_t i = 0; i < shell->programCount(bank); ++i) {
      list.push_back(shell->programName(bank, i));
    }
    return list;
  }
  /// Returns the editor's calls that begin with `word`.
  Log told(const std::string& word) const {
    Log lines;
    std::copy_if(editor->log.begin(), editor->log.end(), std::back_inserter(lines),
                 [&word](const std::string& line) { return line.rfind(word, 0) == 0; });
    return lines;
  }
  fs::path userFile() const { return documents / "Tesh Bramel/User Programs/Sivray_User.prog"; }
};

TEST_F(Programs, AreStoredSelectedAndOverwritten) {
  store(kUser, "low", 0.125F);
  EXPECT_EQ(told("program"), Log{"program"});
  EXPECT_EQ(told("saved"), Log{"saved User 0"});
  EXPECT_EQ(shell->currentBank(), kUser);
  store(kFactory, "high", 1.0F);
  EXPECT_EQ(shell->currentProgramName(), "high");
  EXPECT_EQ(shell->currentBank(), kFactory);
  shell->saveProgramAs(2, "nowhere");
  EXPECT_EQ(shell->programCount(2), 0U);

  editor->log.clear();
  shell->setProgram(kUser + 5, 7, bramel::vst::Origin::host);  // The last one of the user bank.
  EXPECT_EQ(shell->currentProgram(), 0U);
  EXPECT_EQ(shell->parameterValue(3), 0.125F);
  EXPECT_EQ(shell->parameterDisplay(2), "0.125000");
  EXPECT_EQ(host->log, (Log{"own program", "parameters"}));
  EXPECT_EQ(told("program"), Log{"program"});

  shell->setParameter(3, 0.5F);
  shell->renameCurrentProgram("lower");
  shell->overwriteProgram();
  shell->setProgram(kFactory, 0);
  shell->setProgram(kUser, 0);
  EXPECT_EQ(shell->parameterValue(3), 0.5F);
  EXPECT_EQ(names(kUser), Log{"lower"});
}

TEST_F(Programs, AreToldToTheEditorBeforeTheHostAndByTheBlockThatSelectsThem) {
  store(kUser, "one", 1.0F);
  store(kUser, "half", 0.5F);
  together.clear();
  shell->setProgram(kUser, 0);
  shell->saveProgramAs(kUser, "new");
  const Log changed{"editor: changed 0", "editor: changed 1", "editor: changed 2",
                    "editor: changed 3", "editor: release",   "editor: hold"};
  Log expected = changed;
  expected.insert(expected.end(),
                  {"editor: program", "host: program", "host: parameters", "editor: program", "editor: saved User 2"});
  EXPECT_EQ(together, expected);

  together.clear();
  shell->setParameter(0, 0.25F);
  shell->processorHandle()->programQueue.put(vimo::MidiEvent::programChange(1, 2, 1));
  run();
  EXPECT_EQ(together, changed) << "once each, though one was written and all were moved";
  EXPECT_EQ(shell->parameterValue(0), 0.5F);
  EXPECT_EQ(shell->parameterDisplay(0), "0.500000");

  shell->processorHandle()->commandQueue.put({vimo::MacroCommandKind::setMacro, 0, 0.125F, 0, 0});
  EXPECT_EQ(shell->currentProgram(), 1U);
  EXPECT_EQ(shell->parameterDisplay(0), "0.125000") << "who asks for the program wants the texts of its values too";
}

TEST_F(Programs, ReachTheDiskWithEveryChangeOfABank) {
  const auto expectOnDisk = [this](const Log& list) {
    EXPECT_EQ(names(kUser), list);
    const std::string exported = (documents / "memory.prog").string();
    shell->exportPrograms(exported);
    EXPECT_EQ(support::textIn(userFile()), support::textIn(exported).substr(64)) << list.back();
  };
  for (const char* name : {"a", "b", "c"}) {
    store(kUser, name, 0.5F);
  }
  expectOnDisk({"a", "b", "c"});
  shell->exportPrograms((documents / "three.prog").string());
  shell->moveProgram(kUser, 0, 2);
  expectOnDisk({"b", "c", "a"});
  shell->setParameter(0, 0.125F);
  shell->renameCurrentProgram("over");
  shell->overwriteProgram();
  expectOnDisk({"b", "over", "a"});
  shell->deleteProgram(kUser, 0);
  expectOnDisk({"over", "a"});
  shell->importPrograms((documents / "three.prog").string());
  expectOnDisk({"over", "a", "a", "b", "c"});
}

TEST_F(Programs, KeepACopyOfTheirFileBeforeAnythingInItIsLost) {
  const std::string exported = (documents / "one.prog").string();
  std::string before;
  const auto expectCopy = [&](const std::function<void()>& change) {
    before = support::textIn(userFile());
    const auto copies = vimo::programFileCopies(userFile().string());
    change();
    const auto after = vimo::programFileCopies(userFile().string());
    ASSERT_EQ(after.size(), copies.size() + 1);
    EXPECT_EQ(support::textIn(after.front().path), before);
  };
  store(kUser, "a", 0.5F);
  store(kUser, "b", 0.5F);
  shell->exportPrograms(exported);
  shell->moveProgram(kUser, 0, 1);
  EXPECT_TRUE(vimo::programFileCopies(userFile().string()).empty()) << "nothing was taken away";
  shell->renameCurrentProgram("c");
  expectCopy([this] { shell->overwriteProgram(); });
  expectCopy([&] { shell->importPrograms(exported); });
  expectCopy([this] { shell->deleteProgram(kUser, 0); });
  fs::resize_file(userFile(), 300);  // Unreadable as it is, but its user may be able to repair it.
  expectCopy([this] { shell->saveProgramAs(kUser, "d"); });
  std::string later = support::textIn(userFile()).substr(0, 28 + 224 + 4 * 12) + std::string(12, '\0');
  later[4] = 5;  // One program of five macros, of 8 + 224 + 5 * 12 bytes.
  later.replace(8, 2, "\x24\x01");
  later[24] = 1;
  std::ofstream(userFile(), std::ios::binary) << later;
  expectCopy([this] { shell->saveProgramAs(kUser, "e"); });
}

/// Two instances in a song, both of which loaded the user's programs before the other changed them.
class TwoInstances : public Programs {
 protected:
  TwoInstances() {
    for (const char* name : {"a", "b", "c"}) {
      store(kUser, name, 0.5F);
    }
    restart();
  }
  /// Replaces the other instance by a new one, which loads the programs of the file.
  void restart() {
    auto processor = std::make_unique<Processor>("Sivray", std::make_unique<NotingGenerator>());
    for (int macro = 0; macro < 4; ++macro) {
      processor->controller().addMacro();
    }
    const std::string text = support::textIn(userFile());
    const Bytes file(text.begin(), text.end());
    processor->controller().programs().loadDatabase(vimo::Bank::user, std::span(file).subspan(20), 4,
                                                    vimo::ProgramDatabase::Mode::replace);
    other = std::make_unique<BramelInstrument>(std::move(processor));
  }
  Log namesIn(BramelInstrument& instrument) {
    Log list;
    for (std::uint64_t i = 0; i < instrument.programCount(kUser); ++i) {
      list.push_back(instrument.programName(kUser, i));
    }
    return list;
  }
  std::unique_ptr<BramelInstrument> other;
};

TEST_F(TwoInstances, KeepWhatTheOtherHasStoredAndLoseWhatItHasDeleted) {
  other->saveProgramAs(kUser, "theirs");
  other->deleteProgram(kUser, 0);
  editor->log.clear();
  shell->saveProgramAs(kUser, "ours");
  EXPECT_EQ(names(kUser), (Log{"b", "c", "ours", "theirs"}));
  EXPECT_EQ(told("deleted"), Log{"deleted User 0"});
  EXPECT_EQ(told("saved"), (Log{"saved User 3", "saved User 2"}));
  run();
  EXPECT_EQ(shell->currentProgramName(), "ours");
  EXPECT_EQ(shell->currentProgram(), 2U) << "the new one is selected, though one before it is gone";

  other->moveProgram(kUser, 0, 1);
  EXPECT_EQ(namesIn(*other), (Log{"c", "b", "theirs", "ours"}));
  restart();
  EXPECT_EQ(namesIn(*other), (Log{"c", "b", "theirs", "ours"})) << "from the file";
}

TEST_F(TwoInstances, EachKeepItsOwnChangeOfAProgramThatBothHaveChanged) {
  shell->setProgram(kUser, 1);
  other->setProgram(kUser, 1);
  other->renameCurrentProgram("their b");
  other->overwriteProgram();
  shell->renameCurrentProgram("our b");
  shell->overwriteProgram();
  EXPECT_EQ(names(kUser), (Log{"a", "our b", "c", "their b"}));
  other->deleteProgram(kUser, 0);
  EXPECT_EQ(namesIn(*other), (Log{"their b", "c", "our b"}));
  shell->setProgram(kUser, 0);
  shell->moveProgram(kUser, 1, 2);
  EXPECT_EQ(names(kUser), (Log{"c", "our b", "their b"}));
  EXPECT_EQ(shell->currentBank(), 2U) << "the selected program is gone";
}

TEST_F(TwoInstances, ReadAndWriteTheirFileOneAfterTheOther) {
  shell->saveProgramAs(kUser, "ours");  // The block inside the move, between reading and writing, selects it.
  std::thread elsewhere;
  std::atomic<bool> isSaved = false;
  editor->whenHeld = [&] {
    elsewhere = std::thread([&] {
      other->saveProgramAs(kUser, "theirs");
      isSaved = true;
    });
    for (int i = 0; i < 20 && !isSaved; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
  };
  shell->moveProgram(kUser, 0, 1);
  elsewhere.join();
  restart();
  EXPECT_EQ(namesIn(*other), (Log{"a", "b", "c", "theirs", "ours"})) << "nothing is lost";
}

TEST_F(TwoInstances, WaitForAnotherProcessThatChangesTheirFile) {
  const std::string before = support::textIn(userFile());
  other->saveProgramAs(kUser, "theirs");
  const std::string after = support::textIn(userFile());
  std::ofstream(userFile(), std::ios::binary) << before;
  std::thread here;
  {
    const bramel::platform::FolderLock theirs(userFile().parent_path().string());
    ASSERT_TRUE(theirs.isHeld());
    here = std::thread([&] { shell->saveProgramAs(kUser, "ours"); });
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    std::ofstream(userFile(), std::ios::binary) << after;
  }
  here.join();
  restart();
  EXPECT_EQ(namesIn(*other), (Log{"a", "b", "c", "ours", "theirs"})) << "nothing is lost";
}

TEST_F(TwoInstances, TakeNothingFromAFileThatIsNoListOfPrograms) {
  const std::string good = support::textIn(userFile());
  for (const std::string& bad : {std::string(), good.substr(0, 100), std::string(good).replace(24, 1, 1, '\x7'),
                                 std::string(good).replace(20, 2, 2, '\0')}) {
    std::ofstream(userFile(), std::ios::binary) << bad;
    shell->moveProgram(kUser, 0, 2);
    EXPECT_EQ(shell->programCount(kUser), 3U) << bad.size();
  }
  std::ofstream(userFile(), std::ios::binary)
      << std::string(good).replace(8, 1, 1, '\x8').replace(9, 1, 1, '\0').replace(24, 1, 1, '\0').substr(0, 28);
  shell->saveProgramAs(kUser, "last");
  EXPECT_EQ(names(kUser), Log{"last"}) << "an empty list is one";
}

TEST_F(Programs, SayWhetherTheyReachedTheDisk) {
  EXPECT_TRUE(shell->areProgramsWritten());
  fs::create_directories(userFile());  // A folder with the file's name.
  store(kUser, "a", 0.5F);
  EXPECT_FALSE(shell->areProgramsWritten());
  EXPECT_FALSE(shell->exportPrograms(userFile().string()));
  fs::remove(userFile());
  store(kUser, "b", 0.5F);
  EXPECT_TRUE(shell->areProgramsWritten());
  EXPECT_TRUE(shell->exportPrograms((documents / "out.prog").string()));
}

TEST_F(TwoInstances, ReachTheDiskByThemselvesOnceItTakesThem) {
  fs::remove(userFile());
  fs::create_directories(userFile());
  store(kUser, "d", 0.5F);
  EXPECT_FALSE(shell->areProgramsWritten());
  fs::remove(userFile());
  for (int i = 0; i < 3000 && !shell->areProgramsWritten(); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  restart();
  EXPECT_EQ(namesIn(*other), (Log{"a", "b", "c", "d"}));
}

TEST_F(Programs, ReachTheDiskAtTheLatestWhenTheInstrumentIsClosed) {
  fs::create_directories(userFile());
  for (int i = 0; i < 3; ++i) {
    store(kUser, "a", 0.5F);
  }
  fs::remove(userFile());
  shell.reset();
  EXPECT_TRUE(fs::is_regular_file(userFile()));
}

TEST_F(Programs, FollowTheirSelectionWhenTheListChanges) {
  for (const char* name : {"a", "b", "c", "d"}) {
    store(kUser, name, 0.5F);
  }
  shell->setProgram(kUser, 2);
  editor->log.clear();
  shell->moveProgram(kUser, 0, 3);
  EXPECT_EQ(names(kUser), (Log{"b", "c", "d", "a"}));
  EXPECT_EQ(shell->currentProgram(), 1U);
  shell->moveProgram(kUser, 4, 0);
  shell->moveProgram(kUser, 0, 4);
  shell->moveProgram(kUser, 1, 1);
  shell->deleteProgram(kUser, 0);
  EXPECT_EQ(shell->currentProgram(), 0U);
  EXPECT_EQ(shell->currentBank(), kUser);
  shell->deleteProgram(kUser, 0);
  EXPECT_EQ(shell->currentBank(), 2U);
  EXPECT_EQ(names(kUser), (Log{"d", "a"}));
  shell->deleteProgram(kUser, 2);
  EXPECT_EQ(told("moved"), Log{"moved User 0 3"});
  EXPECT_EQ(told("deleted"), (Log{"deleted User 0", "deleted User 0"}));
}

TEST_F(Programs, KeepTheirSelectionInAListThatChangesBeforeABlockSelectsThem) {
  for (const char* name : {"a", "b", "c"}) {
    store(kUser, name, 0.5F);
  }
  shell->setProgram(kUser, 1);
  shell->overwriteProgram();
  shell->moveProgram(kUser, 0, 2);
  shell->overwriteProgram();
  shell->deleteProgram(kUser, 0);
  run();
  EXPECT_EQ(names(kUser), (Log{"c", "a"}));
  EXPECT_EQ(shell->currentBank(), 2U) << "the selected program is gone, and no other takes its place";
  EXPECT_EQ(shell->currentProgramName(), "b");
}

TEST_F(Programs, GoOutToFilesAndComeBackBehindThoseAtHand) {
  store(kUser, "first", 0.5F);
  EXPECT_EQ(support::textIn(userFile()).size(), 20U + 8U + 224U + 4U * 12U);
  store(kUser, "second", 0.75F);
  const std::string exported = (documents / "out\\of here.prog").string();
  shell->exportPrograms(exported);
  EXPECT_EQ(support::textIn(exported).substr(64), support::textIn(userFile()));
  editor->log.clear();
  shell->importPrograms(exported);
  EXPECT_EQ(names(kUser), (Log{"first", "second", "first", "second"}));
  EXPECT_EQ(told("saved"), Log{"saved User 2 3"});

  const std::string before = support::textIn(userFile());
  for (const std::string& bad :
       {support::textIn(exported).substr(0, 64), support::textIn(exported).substr(0, 100), std::string("nonsense"),
        support::textIn(exported).replace(4, 6, "Another"), support::textIn(exported).replace(68, 1, 1, '\0')}) {
    std::ofstream(documents / "bad.prog", std::ios::binary) << bad;
    editor->log.clear();
    shell->importPrograms((documents / "bad.prog").string());
    EXPECT_EQ(support::textIn(userFile()), before) << bad.size();
    EXPECT_EQ(told("saved"), Log{"saved User"}) << "no program";
  }
  shell->importPrograms("absent");
  EXPECT_EQ(support::textIn(userFile()), before);
}

TEST_F(Programs, TakeDefaultsForMacrosThatAnImportedFileDoesNotKnow) {
  const auto import = [this](std::uint32_t macros, std::uint32_t programs) {
    const std::size_t values = std::size_t{programs} * macros;
    Bytes file;
    cofu::core::ByteWriter writer(file);
    writer.word(256);
    writer.text("Sivray");
    writer.zeros(54);
    for (const auto word :
         {1024U, macros, static_cast<std::uint32_t>(8 + values * sizeof(float)), 4U, 0U, 256U, programs}) {
      writer.word(word);
    }
    for (std::size_t i = 0; i < values; ++i) {
      writer.real(0.125F);
    }
    shell->importPrograms(scratch.write("older.prog", file));
  };
  store(kUser, "own", 0.125F);
  import(4, 4000);
  const std::uint64_t count = shell->programCount(kUser);
  ASSERT_GT(count, 3000U);
  import(2, 1);
  ASSERT_EQ(shell->programCount(kUser), count + 1);
  for (const std::uint64_t program : {count, count - 1, std::uint64_t{0}}) {
    shell->setProgram(kUser, program);
    EXPECT_EQ(shell->parameterValue(1), 0.125F) << program;
    EXPECT_EQ(shell->parameterValue(3), 0.75F) << program << ": no program keeps a value for a macro that came later";
  }
}

using State = Programs;

TEST_F(State, ComesBackToTheByte) {
  store(kFactory, "kit", 0.5F);
  shell->setParameter(0, 0.0625F);
  shell->setParameterInteger(3, 77);
  shell->renameCurrentProgram("song");
  const Bytes saved = shell->getState();
  ASSERT_GT(saved.size(), 5U);
  EXPECT_EQ(hex(saved.data(), 5), "4d50636b83");

  store(kFactory, "other", 1.0F);
  shell->deleteProgram(kFactory, 1);
  editor->log.clear();
  generator->log.clear();
  generator->frames.clear();
  load(saved);
  EXPECT_EQ(generator->log, "dppppa");
  EXPECT_EQ(generator->frames, (std::vector<std::int32_t>{0, 0})) << "what waited before, and what the state brings";
  EXPECT_EQ(shell->getState(), saved);
  EXPECT_EQ(shell->parameterValue(0), 0.0625F);
  EXPECT_EQ(shell->parameterInteger(3), 77U);
  EXPECT_EQ(shell->parameterDisplay(0), "0.062500");
  EXPECT_EQ(shell->currentProgramName(), "song");
  EXPECT_EQ(told("program"), Log{"program"});
  EXPECT_TRUE(host->log.empty());
  run();
  EXPECT_EQ(shell->getState(), saved);
}

TEST_F(State, OutranksProgramsAndWritesThatStillWait) {
  store(kUser, "a", 1.0F);
  store(kUser, "b", 0.5F);
  const Bytes saved = shell->getState();
  shell->saveProgramAs(kUser, "c");
  shell->setParameter(0, 0.0F);
  EXPECT_TRUE(load(saved));
  run();
  EXPECT_EQ(shell->currentProgram(), 1U);
  EXPECT_EQ(shell->parameterValue(0), 0.5F);
}

TEST_F(State, StaysWhenTheBytesAreBad) {
  store(kFactory, "kit", 0.5F);
  const auto content = bramel::vst::unpackState(shell->getState())->content;
  shell->setParameter(0, 1.0F);
  const Bytes good = shell->getState();
  const auto expectUnchanged = [&](const Bytes& bytes, const char* what) {
    EXPECT_FALSE(load(bytes)) << what;
    ASSERT_EQ(shell->getState(), good) << what;
  };
  shell->setState(nullptr, 100);
  for (std::size_t size = 0; size < good.size(); ++size) {
    expectUnchanged({good.begin(), good.begin() + static_cast<std::ptrdiff_t>(size)}, "truncated");
  }
  for (std::size_t at = 0; at < 11; ++at) {
    Bytes flipped = good;
    flipped[at] ^= 0x40;
    expectUnchanged(flipped, "head");
  }
  for (const std::size_t word : {0U, 4U, 8U, 12U}) {
    for (const std::uint8_t top : Bytes{0x01, 0x80, 0xFF}) {
      bramel::vst::EditBufferRecord record{bramel::vst::kEditBufferName, 1, content};
      record.content[word + 3] = top;
      expectUnchanged(bramel::vst::packState(record), "sizes");
    }
  }
  expectUnchanged(bramel::vst::packState({"another", 1, content}), "name");
  expectUnchanged(bramel::vst::packState({bramel::vst::kEditBufferName, 2, content}), "version");
  generator->log.clear();
  expectUnchanged(bramel::vst::packState({bramel::vst::kEditBufferName, 1, {}}), "empty");
  EXPECT_EQ(generator->log, "da");
}

}  // namespace
}  // namespace shell
