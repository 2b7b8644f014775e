// The note map: the pad of each drum note, the hi-hat pedal, and the ends of held notes.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>

#include <optional>
#include <vector>

#include "core/NoteMap.h"

namespace {

using namespace tesh::cofu::core;
using testing::ElementsAre;

constexpr std::size_t kPlain = 0;
constexpr std::size_t kAllDrums = 1;
constexpr std::size_t kGeneralMidi = 2;

class NoteMapTest : public testing::Test {
 protected:
  /// Returns the note that the message plays; nothing if the map drops it.
  std::optional<int> send(std::uint8_t status, std::uint8_t note, std::uint8_t value = 100) {
    std::array<std::uint8_t, 3> message{status, note, value};
    const auto verdict = translator.translate(message);
    endedBefore = verdict.padToEnd;
    return verdict.isPlayed ? std::optional<int>(message[1]) : std::nullopt;
  }
  std::optional<int> strike(std::uint8_t note) { return send(0x99, note); }
  std::optional<int> end(std::uint8_t note) { return send(0x89, note); }
  void use(std::size_t map) { translator.setMap(namedNoteMaps()[map].map); }

  NoteTranslator translator;
  std::optional<int> endedBefore;  ///< The pad that was to be ended before the last message.
};

TEST_F(NoteMapTest, GivesTheDrumsOfAFilePads) {
  struct Case {
    std::vector<int> notes;
    int plain, allDrums, generalMidi;
  };
  const std::vector<Case> cases{{{35}, 0, 36, 36},
                                {{36}, 36, 36, 36},
                                {{38}, 38, 38, 38},
                                {{40}, 40, 40, 38},
                                {{41}, 41, 41, 41},
                                {{43}, 43, 43, 41},
                                {{45, 47, 48, 50}, 0, 41, 41},
                                {{42, 44}, 0, 42, 42},
                                {{46}, 0, 43, 43},
                                {{49, 51, 52, 53, 55, 57, 59}, 0, 40, 40},
                                {{34, 54, 56, 127}, 0, 0, 0}};
  for (const Case& scene : cases) {
    for (const int note : scene.notes) {
      for (const auto& [map, expected] :
           {std::pair{kPlain, scene.plain}, {kAllDrums, scene.allDrums}, {kGeneralMidi, scene.generalMidi}}) {
        use(map);
        const int wanted = expected == 0 || map == kPlain ? note : expected;
        EXPECT_EQ(strike(static_cast<std::uint8_t>(note)), wanted) << note << " in map " << map;
        EXPECT_EQ(end(static_cast<std::uint8_t>(note)), wanted) << note << " in map " << map;
      }
    }
  }
}

TEST_F(NoteMapTest, AnOpenPedalOpensTheHatExceptWhereTheMapIsPlain) {
  use(kAllDrums);
  EXPECT_EQ(strike(42), 42) << "before the first word of a pedal it is closed";
  send(0xB9, kHatPedalController, 0);
  EXPECT_EQ(end(42), 42) << "it ends where it began";
  EXPECT_EQ(strike(42), 43);
  EXPECT_EQ(strike(44), 42) << "the foot closes it";
  send(0xB9, kHatPedalController, 127);
  EXPECT_EQ(end(42), 43);
  EXPECT_EQ(strike(42), 42);
  send(0xB9, kHatPedalController, 0);
  use(kPlain);
  EXPECT_EQ(strike(42), 42);
}

TEST_F(NoteMapTest, ANoteEndsThePadThatItStruckUnlessAnotherHoldsIt) {
  use(kAllDrums);
  strike(45);
  strike(47);
  EXPECT_EQ(end(45), std::nullopt) << "47 holds the tom";
  EXPECT_EQ(send(0x99, 47, 0), 41);
  strike(35);
  use(kPlain);
  EXPECT_EQ(end(35), 36) << "it began under the other map";
  EXPECT_EQ(end(35), 35);
}

TEST_F(NoteMapTest, ANoteThatStrikesAnotherPadBeforeItsEndEndsTheFirst) {
  use(kAllDrums);
  strike(42);
  strike(42);
  EXPECT_EQ(endedBefore, std::nullopt) << "it strikes the same pad again";
  send(0xB9, kHatPedalController, 0);
  EXPECT_EQ(strike(42), 43);
  EXPECT_EQ(endedBefore, 42);
  EXPECT_EQ(end(42), 43);
  EXPECT_EQ(endedBefore, std::nullopt);

  strike(42);
  strike(46);
  use(kPlain);
  EXPECT_EQ(strike(42), 42);
  EXPECT_EQ(endedBefore, std::nullopt) << "46 holds the open hat";
}

TEST_F(NoteMapTest, ThePlainMapChangesNothing) {
  for (int note = 0; note < 128; ++note) {
    for (const int status : {0x85, 0x95, 0xA5, 0xB5}) {
      for (const int value : {0, 1, 127}) {
        EXPECT_EQ(
            send(static_cast<std::uint8_t>(status), static_cast<std::uint8_t>(note), static_cast<std::uint8_t>(value)),
            note);
      }
    }
  }
  std::array<std::uint8_t, 2> shortMessage{0xC9, 45};
  use(kAllDrums);
  EXPECT_TRUE(translator.translate(shortMessage).isPlayed);
  EXPECT_THAT(shortMessage, ElementsAre(0xC9, 45));
}

}  // namespace
