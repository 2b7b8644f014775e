// The scale host against worked examples: the keys of a scale, and chords.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "scale/ScaleHost.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <vector>

#include "scale/Scales.h"

namespace scale {
namespace {

using testing::ElementsAre;

TEST(ScaleHost, TakesTheMostImportantDegreesOfAScaleInPitchOrder) {
  ScaleHost host;
  host.setScale(1);
  host.setNoteCount(5);
  EXPECT_THAT(host.noteTable(), ElementsAre(0, 2, 4, 7, 9));
  EXPECT_THAT(host.degreeTable(), ElementsAre(0, 2, 3, 4, 5));
}

TEST(ScaleHost, AddsChordsInEachScalesOwnOrderAsTheNumberOfNotesGrows) {
  const std::map<std::int32_t, std::vector<std::int32_t>> orders{
      {1, {0, 3, 4, 5, 2, 1, 6}}, {2, {0, 3, 4, 6, 2, 1, 5}}, {3, {0, 3, 6, 2, 1, 5, 4}}, {4, {0, 4, 5, 2, 1, 6, 3}},
      {5, {0, 3, 4, 6, 1, 5, 2}}, {6, {0, 3, 4, 6, 2, 5, 1}}, {7, {0, 3, 2, 4, 6, 1, 5}}, {10, {0, 2, 4, 5, 1, 3}}};
  for (const auto& [scale, order] : orders) {
    for (std::size_t count = 1; count <= order.size(); ++count) {
      ScaleHost host;
      host.setScale(scale);
      host.setNoteCount(count);
      std::vector<std::int32_t> degrees(order.begin(), order.begin() + static_cast<std::ptrdiff_t>(host.noteCount()));
      std::ranges::sort(degrees);
      EXPECT_EQ(host.degreeTable(), degrees) << "scale " << scale;
    }
  }
}

TEST(ScaleHost, KeepsTheCeilingThatANoteCountHasSet) {
  ScaleHost host;
  host.setScale(14);
  EXPECT_EQ(host.noteCount(), 5U);
  host.setScale(0);
  EXPECT_EQ(host.noteCount(), 12U);
  host.setScale(14);
  host.setNoteCount(12);
  host.setScale(0);
  EXPECT_THAT(host.noteTable(), ElementsAre(0, 2, 4, 7, 9));
}

TEST(ScaleHost, CountsKeysInNotesOfTheScale) {
  ScaleHost host;
  host.setScale(34);
  host.setKey(3);
  EXPECT_EQ(host.noteForKey(5, 0), 63);
  host.setScale(15);
  EXPECT_EQ(host.noteForKey(6, 2), 3 + 12 * 3 + 3);
}

TEST(ScaleHost, MovesOnlyTheFirstNoteOfARagaChordWithTheOctave) {
  ScaleHost host;
  host.setScale(16);
  host.setKey(1);
  const ChordRecord chord = host.chordForKey(0, 1);
  EXPECT_THAT(chord.notes, ElementsAre(13, 37, 44, 53));
  EXPECT_EQ(chord.bass, 13);
}

TEST(ScaleHost, DropsNotesThatMeetInAChord) {
  ScaleHost host;
  host.setScale(16);
  const ChordRecord chord = host.chordForKey(0, 3);
  EXPECT_EQ(chord.count, 3);
}

TEST(ScaleNames, AreHeldToTheCatalogue) {
  EXPECT_STREQ(scaleName(40), "Octave");
  EXPECT_STREQ(scaleName(-1), "Chromatic");
}

TEST(ScaleVoicings, InvertStackedDegrees) {
  EXPECT_THAT(IonianScale().chordVoicing(0, 1, 3).notes, ElementsAre(4, 7, 12, 0));
  EXPECT_THAT(MajorBluesScale().chordVoicing(2, 0, 4).notes, ElementsAre(5, 9, 12, 15));
  EXPECT_THAT(RagaTodiScale().chordVoicing(1, 4, 4).notes, ElementsAre(1, 52, 60, 67));
}

}  // namespace
}  // namespace scale
