// Grooves as text, and the suite of the factory: ten styles at one loudness.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <set>

#include "Scratch.h"
#include "content/Files.h"
#include "content/demo/Groove.h"
#include "content/measure/GrooveSound.h"

namespace sivray::content {
namespace {

TEST(Groove, PlaysDynamicsSwingRepetitionsAndGlides) {
  const Groove groove = parseGroove(
      "kit \"A Kit\"\ntempo 90\nswing 60\nmaster 99\npattern a\n kick 9..i\n glide hat.decay 0:64 1:72\n"
      "pattern b\n snare .5\n set tom.pitch 1:-24\nplay a b\nend a\n",
      "g");
  EXPECT_EQ(groove.kit, "A Kit");
  EXPECT_DOUBLE_EQ(groove.beats, 1.5);
  EXPECT_DOUBLE_EQ(groove.seconds(), 2.5 * 60.0 / 90.0);
  ASSERT_EQ(groove.hits.size(), 7U);
  EXPECT_EQ(groove.hits[0].velocity, 127);
  EXPECT_DOUBLE_EQ(groove.hits[1].beat, 3.2 / 4.0);
  EXPECT_DOUBLE_EQ(groove.hits[2].beat, 3.6 / 4.0) << "the second of two in a step that the swing shortens";
  EXPECT_LT(groove.hits[2].velocity, groove.hits[1].velocity);
  EXPECT_DOUBLE_EQ(groove.hits[3].beat, 5.2 / 4.0);
  EXPECT_EQ(groove.hits[3].note, 38);
  ASSERT_EQ(groove.moves.size(), 20U);
  EXPECT_EQ(groove.moves[2].controller, 76);
  EXPECT_EQ(groove.moves[2].value, 65);
  EXPECT_DOUBLE_EQ(groove.moves[10].beat, 5.2 / 4.0) << "a move swings with its step";
  EXPECT_EQ(groove.moves[10].value, 0);
}

TEST(Groove, HandsStrayByNoMoreThanTheyMayAndTheSameWayEachTime) {
  const std::string text = "tempo 60\nhuman 20\npattern a\n kick 5555 5555 5555 5555\nplay a\n";
  const Groove groove = parseGroove(text, "g");
  const Groove again = parseGroove(text, "g");
  std::set<double> places;
  for (std::size_t i = 0; i < groove.hits.size(); ++i) {
    const double away = groove.hits[i].beat - static_cast<double>(i) / 4.0;
    EXPECT_LE(std::abs(away), 0.02 + 1e-9);
    EXPECT_NEAR(groove.hits[i].velocity, 71, 20);
    EXPECT_EQ(groove.hits[i].beat, again.hits[i].beat);
    places.insert(away);
  }
  EXPECT_GT(places.size(), 12U);
}

TEST(Groove, TellsFileLineAndReasonOfAMistake) {
  for (const auto& [text, error] : std::vector<std::pair<std::string, std::string>>{
           {"tempo fast", "g:1: 'fast' is no number from 20 to 300"},
           {"kit Dub", "g:1: 'kit' takes a name between quotation marks"},
           {"kick 9", "g:1: 'kick' stands before the first pattern"},
           {"pattern a\ngong 9", "g:2: there is no pad 'gong'"},
           {"pattern a\nkick 9j", "g:2: a step is 1 to 9, a to i, r to z or a dot, not 'j'"},
           {"pattern a\nset kick.colour 0:1", "g:2: there is nothing called 'kick.colour' to move"},
           {"pattern a\nset master 0=1", "g:2: expected STEP:VALUE, not '0=1'"},
           {"pattern a\nset master 0:+1", "g:2: '+1' is no number from 0 to 127"},
           {"pattern a\nset tom.pitch 0:+25", "g:2: '25' is no number from -24 to 24"},
           {"play a", "g:1: there is no pattern 'a'"},
           {"pattern a\nkick 9", "g:2: the groove plays nothing"}}) {
    try {
      parseGroove(text, "g");
      ADD_FAILURE() << text;
    } catch (const factory::TextError& failure) {
      EXPECT_EQ(failure.what(), error);
    }
  }
}

/// Eight bars and what follows, fills and dynamics, and no step that two lines of a pattern fill.
TEST(Suite, HasTenGroovesOfEightBars) {
  const std::vector<Groove> suite = readSuite(SIVRAY_GROOVES_FOLDER);
  EXPECT_GE(suite.size(), 10U);
  std::set<std::string> kits;
  for (const Groove& groove : suite) {
    EXPECT_TRUE(kits.insert(groove.kit).second) << groove.kit;
    EXPECT_EQ(groove.beats, 32.0) << groove.kit;
    EXPECT_EQ(groove.endBeats, 4.0) << groove.kit;
    EXPECT_GE(groove.moves.size(), 20U) << groove.kit;
    std::set<int> notes;
    std::set<int> velocities;
    for (const GrooveHit& hit : groove.hits) {
      EXPECT_TRUE(hit.beat >= 0.0 && hit.beat < groove.beats + groove.endBeats) << groove.kit;
      notes.insert(hit.note);
      velocities.insert(hit.velocity);
    }
    EXPECT_GE(notes.size(), 7U) << groove.kit;
    EXPECT_GE(velocities.size(), 6U) << groove.kit;
  }
}

TEST(Suite, PlaysAtOneLoudnessWithoutClippingAndRestsBeforeTheNextKit) {
  const Scratch scratch;
  ::setenv("BRAMEL_COMMON_FILES", SIVRAY_CONTENT_FOLDER, 1);
  ::setenv("BRAMEL_DOCUMENTS", scratch.path().c_str(), 1);
  KitMeter meter;
  const std::vector<GrooveSound> sounds = soundsOf(meter, readSuite(SIVRAY_GROOVES_FOLDER));
  EXPECT_NEAR(sounds[0].loudness, -16.0, 1.0);
  for (const GrooveSound& groove : sounds) {
    EXPECT_NEAR(groove.loudness, -16.0, 1.4) << groove.kit;
    EXPECT_LE(groove.truePeak, -0.5) << groove.kit;
    EXPECT_LE(groove.rest, -36.0) << groove.kit;
  }
}

}  // namespace
}  // namespace sivray::content
