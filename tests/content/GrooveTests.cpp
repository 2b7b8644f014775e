// Grooves in text form, and the suite of grooves in the content.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <set>

#include "content/Files.h"
#include "content/demo/Groove.h"
#include "content/factory/Bank.h"
#include "content/levels/StyleGrooves.h"
#include "content/measure/GrooveSound.h"
#include "support/Scratch.h"

namespace sivray::content {
namespace {

Groove parseGroove(const std::string& text) { return parseGrooves(text, "g").front(); }

TEST(Groove, PlaysDynamicsSwingRepetitionsAndGlides) {
  const Groove groove = parseGroove(
      "kit \"A Kit\"\ntempo 90\nswing 60\nmaster 99\npattern a\n kick 9..i\n glide hat.decay 0:64 1:72\n"
      "pattern b\n snare .5\n set tom.pitch 1:-24\nplay a b\nend a\n");
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
  const Groove groove = parseGroove(text);
  const Groove again = parseGroove(text);
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
           {"pattern a\nset effect.type 0:Sparkle", "g:2: there is no effect 'Sparkle'"},
           {"kit \"A\"\nkit \"B\"", "g:2: the groove plays nothing"},
           {"play a", "g:1: there is no pattern 'a'"},
           {"pattern a\nkick 9", "g:2: the groove plays nothing"}}) {
    try {
      parseGroove(text);
      ADD_FAILURE() << text;
    } catch (const factory::TextError& failure) {
      EXPECT_EQ(failure.what(), error);
    }
  }
}

TEST(Groove, GoesOnWithAnotherKit) {
  const std::vector<Groove> grooves = parseGrooves(
      "kit \"A\"\ntempo 90\npattern a\n kick 9999\n set effect.type 0:HallReverb\nplay a a\nkit \"B\"\nplay a\n", "g");
  ASSERT_EQ(grooves.size(), 2U);
  EXPECT_EQ(grooves[0].beats, 2.0);
  EXPECT_EQ(grooves[1].kit, "B");
  EXPECT_EQ(grooves[1].tempo, 90.0);
  EXPECT_EQ(grooves[1].beats, 1.0);
  EXPECT_EQ(grooves[1].hits.front().beat, 0.0);
  EXPECT_EQ(grooves[1].moves.front().value, 122) << "24 of 25 steps";
}

/// Every pad of every kit is played in the groove of its style.
TEST(StyleGrooves, PlayAllPads) {
  for (const auto& [file, kit] : factory::readBank(SIVRAY_KITS_FOLDER)) {
    ASSERT_TRUE(hasGroove(kit.comment)) << file;
    std::set<int> notes;
    std::ranges::transform(grooveOf(kit.comment).hits, std::inserter(notes, notes.end()), &GrooveHit::note);
    EXPECT_EQ(notes.size(), factory::kPads) << kit.comment;
  }
  EXPECT_FALSE(hasGroove("Polka"));
  EXPECT_EQ(grooveOf("Polka").hits.size(), grooveOf("Pop").hits.size());
}

/// The program selects a kit up to 0.1 s early, so hits and moves must not be in that time.
TEST(Suite, ShowsManyKitsAndPlaysTheirEffectsAndPitches) {
  constexpr double kAhead = 0.1;
  const std::vector<Groove> suite = readSuite(SIVRAY_GROOVES_FOLDER);
  std::set<std::string> kits;
  int effects = 0;
  int pitches = 0;
  double seconds = 0.0;
  for (const Groove& groove : suite) {
    EXPECT_TRUE(kits.insert(groove.kit).second) << groove.kit;
    const double free = groove.beats + groove.endBeats - kAhead * groove.tempo / 60.0;
    const bool isLast = &groove == &suite.back();
    EXPECT_TRUE(std::ranges::all_of(groove.hits, [=](const GrooveHit& hit) { return hit.beat < free; })) << groove.kit;
    EXPECT_TRUE(isLast || std::ranges::all_of(groove.moves, [=](const GrooveMove& move) { return move.beat < free; }))
        << groove.kit;
    const auto moves = [&](int first, int last) {
      return std::ranges::any_of(
          groove.moves, [=](const GrooveMove& move) { return move.controller >= first && move.controller <= last; });
    };
    effects += moves(12, 14) || moves(80, 87) || moves(91, 92) || moves(1, 1) ? 1 : 0;
    pitches += moves(102, 109) ? 1 : 0;
    seconds += groove.seconds();
  }
  EXPECT_GE(kits.size(), 20U);
  EXPECT_GE(effects, static_cast<int>(suite.size()) * 2 / 3);
  EXPECT_GE(pitches, static_cast<int>(suite.size()) / 2);
  EXPECT_NEAR(seconds, 120.0, 6.0);
}

TEST(Suite, HasAnArcOfLoudnessAndNoDeadAir) {
  const support::Scratch scratch;
  ::setenv("BRAMEL_COMMON_FILES", SIVRAY_CONTENT_FOLDER, 1);
  ::setenv("BRAMEL_DOCUMENTS", scratch.path().c_str(), 1);
  KitMeter meter;
  const std::vector<GrooveSound> sounds = soundsOf(meter, readSuite(SIVRAY_GROOVES_FOLDER));
  EXPECT_NEAR(sounds[0].loudness, -16.0, 0.5);
  EXPECT_LE(sounds[0].truePeak, -1.0);
  EXPECT_GE(sounds[0].range, 6.0);
  for (const GrooveSound& groove : sounds) {
    EXPECT_LE(groove.gap, 0.15) << groove.kit;
  }
}

}  // namespace
}  // namespace sivray::content
