// Own sounds: permanent numbers, changes that happen completely or not at all, and repairs.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <sys/resource.h>

#include <algorithm>
#include <csignal>
#include <thread>

#include "OwnScene.h"
#include "terminal/Interrupt.h"

namespace sivray::content {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

TEST_F(OwnSounds, KeepTheirNumbersHoweverTheyComeAndGo) {
  const std::string oak = writeConstant(scratch.path("in/Oak Kick.wav"), 11);
  const std::string pine = writeConstant(scratch.path("in/Pine Snare.wav"), 12);
  const auto first = add({oak, pine});
  ASSERT_EQ(first.size(), 2U);
  for (std::int32_t wave = 0; wave < kWaves; ++wave) {
    EXPECT_EQ(heard(wave * 8), 1000 + wave);
  }
  EXPECT_EQ(heard(first.at("Oak Kick")), 11);
  EXPECT_EQ(heard(first.at("Pine Snare")), 12);
  EXPECT_EQ(shown(first.at("Oak Kick")), "Oak Kick");

  fs::rename(oak, scratch.path("in/Another Name.wav"));
  const std::string elm = writeConstant(scratch.path("in/Elm Clap.wav"), 13);
  const auto second = add({elm, scratch.path("in")});
  EXPECT_EQ(second.at("Another Name"), first.at("Oak Kick"));
  EXPECT_EQ(second.at("Pine Snare"), first.at("Pine Snare"));

  // The number of a removed sound is not reused, and the sound gets it back.
  EXPECT_EQ(remove({first.at("Oak Kick")}).size(), 1U);
  EXPECT_EQ(heard(first.at("Oak Kick")), 1000) << "the kick that is as short";
  EXPECT_EQ(shown(first.at("Oak Kick")), "Kick");
  const auto third = add({writeConstant(scratch.path("in/New.wav"), 14)});
  EXPECT_NE(third.at("New"), first.at("Oak Kick"));
  EXPECT_EQ(heard(first.at("Pine Snare")), 12);
  EXPECT_EQ(add({scratch.path("in/Another Name.wav")}).at("Another Name"), first.at("Oak Kick"));
  EXPECT_EQ(heard(first.at("Oak Kick")), 11);
  EXPECT_EQ(readText(root() + "/files/" + open().ledger().withNumber(first.at("Pine Snare"))->file), readText(pine));
}

TEST_F(OwnSounds, TakeTheNumbersOfRemovedOnesOnlyWhenNothingElseIsFree) {
  std::vector<std::string> files;
  for (std::size_t i = 0; i < kRoom; ++i) {
    files.push_back(
        writeConstant(scratch.path("in/s" + std::to_string(i) + ".wav"), static_cast<std::int16_t>(20 + i)));
  }
  const auto numbers = add({files.begin(), files.end() - 1});
  const std::int32_t gone = numbers.at("s4");
  remove({gone});
  remove({numbers.at("s2")});
  EXPECT_NE(add({files.back()}).at("s13"), gone) << "one number was never used";
  EXPECT_EQ(add({writeConstant(scratch.path("in/late.wav"), 90)}).at("late"), gone) << "the first that was removed";
  EXPECT_EQ(heard(gone), 90);
  EXPECT_EQ(add({writeConstant(scratch.path("in/later.wav"), 91)}).at("later"), numbers.at("s2"));
  EXPECT_TRUE(add({writeConstant(scratch.path("in/too late.wav"), 92)}).empty());
  EXPECT_THAT(outcomes.front().note, HasSubstr("is one too many"));
}

/// A parameter in motion passes the free numbers between two factory waves.
TEST_F(OwnSounds, LeaveFreeNumbersToTheNearestFactoryWave) {
  const auto numbers = add({writeConstant(scratch.path("in/kick.wav"), 11)});
  ASSERT_EQ(numbers.at("kick"), 1);
  for (std::int32_t number = 2; number <= 16; ++number) {
    EXPECT_EQ(heard(number), 1000 + (number + 4) / 8) << number;
    EXPECT_EQ(shown(number), number < 4 ? "Kick" : number < 12 ? "Snare" : "Kick 2") << number;
  }
}

TEST_F(OwnSounds, AreComparedWithTheFactorysAtEachChange) {
  const auto nearestTo = [this](std::int32_t number) {
    tesh::vimo::SivraySampleLibrary library;
    library.load(root() + "/Tesh/Bramel/Resource/SivrayPCM/drumparam_category.bin");
    const auto* const kin = library.similarWaves().of(number);
    return kin == nullptr ? std::vector<std::int32_t>() : kin->nearest;
  };
  const std::int32_t own = add({writeConstant(scratch.path("in/kick.wav"), 11)}).at("kick");
  EXPECT_THAT(nearestTo(own), testing::UnorderedElementsAre(0, 8, 16));
  EXPECT_THAT(nearestTo(16), testing::UnorderedElementsAre(0, 8, own));
  remove({own});
  EXPECT_TRUE(nearestTo(own).empty());
  EXPECT_THAT(nearestTo(16), testing::UnorderedElementsAre(0, 8));
}

TEST_F(OwnSounds, TakeTheLoudnessOfFactoryWavesFromTheInstalledLibrary) {
  const std::string installed = scratch.path("installed/Tesh/Bramel/Resource/SivrayPCM");
  const tesh::vimo::WaveKin snare{1, -12.34F, {}, -1};
  writeFile(installed + "/similar.bin",
            tesh::vimo::SimilarWaves::pack(std::span(&snare, 1), readFile(installed + "/drumparam_category.bin")));
  const auto loudnessOf = [this](std::int32_t number) {
    tesh::vimo::SivraySampleLibrary library;
    library.load(root() + "/Tesh/Bramel/Resource/SivrayPCM/drumparam_category.bin");
    const auto* const kin = library.similarWaves().of(number);
    return kin == nullptr ? 0.0F : kin->loudness;
  };
  add({writeConstant(scratch.path("in/kick.wav"), 11)});
  EXPECT_FLOAT_EQ(loudnessOf(8), -12.34F);
  EXPECT_LT(loudnessOf(16), -13.0F) << "measured, as the file says nothing of it";
}

TEST_F(OwnSounds, AreAsBeforeWhenAnAddFailsHalfWay) {
  const std::string first = writeConstant(scratch.path("in/first.wav"), 11);
  for (const bool hasContent : {false, true}) {
    const auto before = snapshot();
    const std::string next = writeConstant(scratch.path("in/next.wav"), 12, 40000);
    bool isAtTables = false;
    EXPECT_THROW(add({next}, {},
                     [&isAtTables](double progress) {
                       if (progress >= 1.0) {
                         isAtTables = true;
                         throw Interrupted{SIGINT};
                       }
                     }),
                 Interrupted);
    EXPECT_TRUE(isAtTables);
    EXPECT_EQ(snapshot(), before);
    if (!hasContent) {
      add({first});
    }
  }
}

TEST_F(OwnSounds, TellHowFarTheFilesAreRead) {
  for (int i = 0; i < 70; ++i) {
    writeConstant(scratch.path("in/" + std::to_string(i) + ".wav"), static_cast<std::int16_t>(20 + i));
  }
  std::vector<double> told;
  add({scratch.path("in")}, {}, [&told](double progress) { told.push_back(progress); });
  EXPECT_TRUE(std::ranges::is_sorted(told));
  EXPECT_EQ(std::ranges::count(told, 1.0), 1);
  EXPECT_GE(told.size(), 3U) << "at least after each load of files";
  told.clear();
  add({scratch.path("absent")}, {}, [&told](double progress) { told.push_back(progress); });
  EXPECT_THAT(told, ElementsAre(1.0));
}

/// Limits the file size to different values, which fails like a full disk at different moments.
TEST_F(OwnSounds, AreAsBeforeOnAFullDisk) {
  add({writeConstant(scratch.path("in/first.wav"), 11, 200)});
  const std::string next = writeConstant(scratch.path("in/next.wav"), 12, 100);
  const auto before = snapshot();
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  rlimit old{};
  getrlimit(RLIMIT_FSIZE, &old);
  int failures = 0;
  for (rlim_t limit = 0; limit < 20000 && snapshot() == before; limit += limit < 1200 ? 20 : 500) {
    const rlimit small{limit, old.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    try {
      OwnContent content = open();
      addSounds(content, {{next}, {}}, {[](const FileOutcome&) {}, [](double) {}});
    } catch (const std::runtime_error& error) {
      ++failures;
      EXPECT_THAT(error.what(), HasSubstr("cannot be written"));
      setrlimit(RLIMIT_FSIZE, &old);
      EXPECT_EQ(snapshot(), before) << limit;
    }
    setrlimit(RLIMIT_FSIZE, &old);
  }
  std::signal(SIGXFSZ, handler);
  EXPECT_GT(failures, 10);
  EXPECT_NE(snapshot(), before) << "with room enough it is added";
}

/// Edited ledgers, and ledgers cut at any byte, lose no sound that plays, and no number.
TEST_F(OwnSounds, OutliveABrokenLedger) {
  const auto numbers =
      add({writeConstant(scratch.path("in/a kick.wav"), 11), writeConstant(scratch.path("in/b tom.wav"), 12),
           writeConstant(scratch.path("in/c hit.wav"), 13)});
  remove({numbers.at("c hit")});
  const std::string ledger = root() + "/ledger.txt";
  const std::string whole = readText(ledger);
  const auto sounds = [](const OwnContent& content) {
    std::set<std::tuple<std::int32_t, int, std::uint64_t, std::string, std::string>> all;
    for (const OwnSound& sound : content.ledger().sounds) {
      if (!sound.isRemoved()) {
        all.insert({sound.number, sound.category, sound.hash, sound.name, sound.file});
      }
    }
    return all;
  };
  const auto before = sounds(open());
  std::vector<std::string> broken{std::string(300, '\0'), "sound\t1\n", whole + whole, whole + "more\n"};
  for (std::size_t size = 0; size < whole.size(); size += 7) {
    broken.push_back(whole.substr(0, size));
  }
  for (const auto& [what, instead] : std::map<std::string, std::string>{
           {"sound\t1\t", "sound\t8\t"}, {"Kick", "Kik"}, {"sound\t2", "sound\t1"}, {"0002 b tom", "../b tom"}}) {
    broken.push_back(whole);
    broken.back().replace(broken.back().find(what), what.size(), instead);
  }
  for (const std::string& text : broken) {
    writeText(ledger, text);
    lines.clear();
    ASSERT_EQ(sounds(open()), before) << text;
    ASSERT_EQ(lines.size(), 1U);
    ASSERT_THAT(lines.front(), HasSubstr(ledger));
    ASSERT_EQ(readText(ledger + ".broken"), text);
    ASSERT_EQ(sounds(open()), before);
    ASSERT_EQ(lines.size(), 1U) << "it is whole again";
  }
  fs::remove(ledger);
  EXPECT_EQ(sounds(open()), before);
  // A valid edit is accepted.
  writeText(ledger, whole);
  std::string edited = whole;
  edited.replace(edited.find("\ta kick\t"), 8, "\tOaken\t");
  writeText(ledger, edited);
  {
    OwnContent content = open();
    EXPECT_TRUE(content.differs());
    OwnChange(content, OwnChange::Build::asNeeded).commit(content.ledger());
  }
  EXPECT_EQ(shown(numbers.at("a kick")), "Oaken");
}

/// A program may be killed after any of the files that a change replaces. In each state on disk, every listed number
/// plays the sound with its name, and the next command completes the change.
TEST_F(OwnSounds, AreSoundBetweenAnyTwoStepsOfAChange) {
  const std::string a = writeConstant(scratch.path("in/11.wav"), 11);
  const std::string b = writeConstant(scratch.path("in/12.wav"), 12);
  const auto numbers = add({a, b});
  const auto before = contents();
  remove({numbers.at("11")});
  add({writeConstant(scratch.path("in/13.wav"), 13), writeConstant(scratch.path("in/14.wav"), 14)});
  const auto after = contents();
  const std::string library = "Tesh/Bramel/Resource/SivrayPCM/";
  const std::vector<std::string> order{library + "drumdata.bin", library + "sampleparam.bin", library + "drumparam.bin",
                                       "ledger.txt", library + "drumparam_category.bin"};
  const auto write = [this](const std::map<std::string, std::string>& files, const std::string& name) {
    writeText(root() + "/" + name, files.at(name));
  };
  for (std::size_t steps = 0; steps <= order.size(); ++steps) {
    for (const auto& [name, text] : before) {
      writeText(root() + "/" + name, text);
    }
    for (std::size_t i = 0; i < steps; ++i) {
      write(after, order[i]);
    }
    for (const std::int32_t number : {1, 2, 3, 4}) {
      const std::string name = shown(number);
      const bool isOwn = name.find_first_not_of("0123456789") == std::string::npos;
      if (isOwn && !(steps > 0 && name == "11")) {  // The samples of a removed sound may already be overwritten.
        EXPECT_EQ(std::to_string(heard(number)), name) << steps;
      }
    }
    OwnContent content = open();
    OwnChange(content, OwnChange::Build::asNeeded).commit(content.ledger());
    EXPECT_FALSE(content.differs() || content.needsBuilding()) << steps;
    for (const OwnSound& sound : content.ledger().sounds) {
      if (!sound.isRemoved() && sound.name != "11") {
        EXPECT_EQ(std::to_string(heard(sound.number)), sound.name) << steps;
      }
    }
  }
}

TEST_F(OwnSounds, AreBuiltAnewBesideANewerFactory) {
  const auto numbers =
      add({writeConstant(scratch.path("in/kick.wav"), 11), writeConstant(scratch.path("in/tom.wav"), 12)});
  EXPECT_FALSE(open().isOutdated());
  writeFactory(2000);
  scratch.write("installed/Tesh/Bramel/Resource/SivrayKits/bank.txt", "new");
  EXPECT_EQ(heard(0), 1000) << "until then the old one plays";
  const auto refresh = [this] {
    OwnContent content = open();
    OwnChange(content, OwnChange::Build::anew).commit(content.ledger());
  };
  ASSERT_TRUE(open().isOutdated());
  refresh();
  EXPECT_FALSE(open().isOutdated());
  EXPECT_THAT((std::vector{heard(0), heard(8), heard(16), heard(numbers.at("kick")), heard(numbers.at("tom"))}),
              ElementsAre(2000, 2001, 2002, 11, 12));
  EXPECT_EQ(readText(root() + "/Tesh/Bramel/Resource/SivrayKits/bank.txt"), "new");

  // The list and the user's own files suffice. A missing file costs only its own sound.
  fs::remove_all(root() + "/Tesh");
  fs::remove(root() + "/files/" + open().ledger().withNumber(numbers.at("tom"))->file);
  refresh();
  EXPECT_EQ(heard(numbers.at("kick")), 11);
  EXPECT_TRUE(open().ledger().withNumber(numbers.at("tom"))->isRemoved());
  EXPECT_EQ(heard(numbers.at("tom")), 2000);
}

TEST_F(OwnSounds, AreChangedByOneProgramAtATime) {
  const std::string first = writeConstant(scratch.path("in/first.wav"), 11);
  const std::string second = writeConstant(scratch.path("in/second.wav"), 12);
  std::optional<OwnContent> holder;
  holder.emplace([](const std::string&) {});
  std::jthread other([&] { add({second}); });
  while (lines.empty()) {
    std::this_thread::yield();
  }
  addSounds(*holder, {{first}, {}}, {[](const FileOutcome&) {}, [](double) {}});
  holder.reset();
  other.join();
  EXPECT_THAT(lines.front(), HasSubstr("waiting"));
  EXPECT_EQ(open().ledger().sounds.size(), 2U);
  EXPECT_EQ(heard(1) + heard(2), 23);
}

TEST_F(OwnSounds, SayWhatIsWrongWithAFile) {
  const std::string folder = scratch.path("in");
  writeConstant(folder + "/kick.wav", 11);
  writeConstant(folder + "/eight.wav", 12, 50, 8);
  writeConstant(folder + "/fast.wav", 13, 400, 1, 384000);
  writeConstant(folder + "/long.wav", 14, 600 * 8000, 1, 8000);
  writeConstant(folder + "/empty.wav", 15, 0);
  writeConstant(folder + "/" + std::string(251, 'x') + ".wav", 16);
  std::string script;
  for (int i = 0; i < 83; ++i) {
    script += "\xE9\xBC\x93";  // The Japanese character for a drum.
  }
  writeConstant(folder + "/" + script + ".wav", 17);
  scratch.write("in/lies.wav", readText(folder + "/kick.wav").substr(0, 100));
  scratch.write("in/text.wav", "no sound");
  fs::create_directory_symlink(folder, folder + "/loop");
  fs::create_symlink(folder + "/self", folder + "/self");
  add({folder, folder + "/absent.wav"});
  std::map<std::string, std::string> notes;
  for (const FileOutcome& outcome : outcomes) {
    EXPECT_TRUE(notes.emplace(fileNameOf(outcome.path), outcome.note).second) << outcome.path;
  }
  EXPECT_EQ(notes.size(), 11U);
  EXPECT_EQ(notes.at("kick.wav"), "");
  EXPECT_THAT(notes.at("eight.wav"), HasSubstr("8 channels"));
  EXPECT_EQ(notes.at("fast.wav"), "");
  EXPECT_THAT(notes.at("long.wav"), HasSubstr("the first 6.00 of 600.00 s"));
  EXPECT_THAT(notes.at("empty.wav"), HasSubstr("no samples"));
  EXPECT_THAT(notes.at("lies.wav"), HasSubstr("breaks off"));
  EXPECT_THAT(notes.at("text.wav"), HasSubstr("no sound file"));
  EXPECT_THAT(notes.at("self"), HasSubstr("is no file"));
  EXPECT_THAT(notes.at("absent.wav"), HasSubstr("does not exist"));
  EXPECT_EQ(open().ledger().sounds.size(), 6U);
}

TEST_F(OwnSounds, SayWhatIsInTheirWay) {
  const std::string file = writeConstant(scratch.path("in/kick.wav"), 11);
  scratch.write("data/sivray/content", "no folder");
  EXPECT_THROW(add({file}), std::runtime_error);
  fs::remove(scratch.path("data/sivray/content"));
  fs::remove_all(scratch.path("installed/Tesh"));
  EXPECT_THROW(add({file}), std::runtime_error);
  EXPECT_FALSE(fs::exists(root() + "/Tesh"));
}

TEST_F(OwnSounds, TakeTheNumbersThatASongsFilesBringAlong) {
  const std::string kick = writeConstant(scratch.path("in/kick.wav"), 11);
  const std::string tom = writeConstant(scratch.path("in/tom.wav"), 12);
  const auto there = add({writeConstant(scratch.path("in/clap.wav"), 13), kick, tom});
  Ledger used = open().ledger();
  std::erase_if(used.sounds, [](const OwnSound& sound) { return sound.name == "clap"; });
  writeText(scratch.path("song/" + std::string(kNumbersFile)), textOf(used));
  fs::copy_file(kick, scratch.path("song/x.wav"));
  fs::copy_file(tom, scratch.path("song/y.wav"));
  fs::remove_all(root());
  add({writeConstant(scratch.path("in/other.wav"), 14)});  // Gets the clap's number.
  const auto here = add({scratch.path("song")});
  EXPECT_EQ(here.at("x"), there.at("kick"));
  EXPECT_EQ(here.at("y"), there.at("tom"));
  EXPECT_EQ(shown(here.at("y")), "tom");

  // If decoding gives other samples, as on another system, the file's name identifies the sound.
  fs::remove_all(root());
  add({writeConstant(scratch.path("in/other.wav"), 14)});
  writeConstant(scratch.path("song/tom.wav"), 15);
  fs::remove(scratch.path("song/y.wav"));
  EXPECT_EQ(add({scratch.path("song")}).at("tom"), there.at("tom"));
}

}  // namespace
}  // namespace sivray::content
