// Great numbers of records: the sequencer keeps a bounded number, and the newest values.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "engine/EventSequencer.h"

namespace {

using namespace tesh::bramel::plugin::sivray;
using testing::ElementsAre;

/// Records the events that fire, and renders in slices as the frame does.
class Rendering : public IEventResponder {
 public:
  void onParameter(const SequencerEvent& record) override {
    note('p', record.id);
    tesh::cofu::core::mayWait([&] { lastSequences[record.id] = record.sequence; });
  }
  void onGlobalParameter(const SequencerEvent& record) override { note('g', record.id); }
  void onMidi(const SequencerMessage& message) override { note('m', message.bytes[0]); }

  void queue(std::int64_t frame, SequencerKind kind, std::uint32_t id) { sequencer.append(record(frame, kind, id)); }
  void queueInBlock(std::int64_t frame, SequencerKind kind, std::uint32_t id) {
    sequencer.add() = record(frame, kind, id);
  }

  /// Returns the records that fire in the next `frames` frames.
  std::vector<std::string> firedBy(int frames) {
    fired.clear();
    for (int remaining = frames; remaining > 0;) {
      const std::int64_t next = sequencer.nextEventFrame();
      const int slice = next < 0 || next > remaining ? remaining : static_cast<int>(next);
      sequencer.advance(slice);
      remaining -= slice;
    }
    return fired;
  }

  std::vector<std::string> fired;
  std::map<std::uint32_t, std::uint32_t> lastSequences;  ///< Of each parameter that has fired.

 private:
  SequencerEvent record(std::int64_t frame, SequencerKind kind, std::uint32_t id) {
    SequencerEvent made;
    made.frame = frame;
    made.kind = kind;
    made.sequence = sequence++;
    made.id = id;
    made.message.bytes[0] = static_cast<std::uint8_t>(id);
    return made;
  }

  void note(char kind, std::uint32_t id) {
    tesh::cofu::core::mayWait([&] { fired.push_back(kind + std::to_string(id)); });
  }

  EventSequencer sequencer{*this};
  std::uint32_t sequence = 0;
};

constexpr auto kParameter = SequencerKind::parameter;
constexpr auto kMidi = SequencerKind::midi;
constexpr auto kGlobal = SequencerKind::globalParameter;

TEST(EventSequencer, HoldsABoundedNumberOfRecordsAndTheNewestValues) {
  constexpr std::uint32_t kParameters = 560;
  for (const std::uint32_t last : {1000 * kParameters, static_cast<std::uint32_t>(EventSequencer::kCapacity)}) {
    Rendering rendering;
    for (std::uint32_t i = 0; i <= last; ++i) {
      rendering.queue(0, kParameter, i % kParameters);
    }
    rendering.queue(0, kGlobal, 7);
    rendering.queue(0, kMidi, 8);
    const std::vector<std::string> values = rendering.firedBy(1);
    EXPECT_LE(values.size(), EventSequencer::kCapacity);
    EXPECT_EQ(values.back(), "g7");
    EXPECT_EQ(rendering.lastSequences.size(), kParameters);
    for (const auto& [id, sequence] : rendering.lastSequences) {
      ASSERT_EQ(sequence, last - (last - id) % kParameters) << id;
    }
  }
}

TEST(EventSequencer, AFullListLosesOnlyOlderValuesOfAParameterAtAFrame) {
  Rendering rendering;
  for (int i = 0; i < 3; ++i) {
    rendering.queue(0, kMidi, 5);
  }
  for (const std::int64_t frame : {1, 2, 3}) {
    rendering.queue(frame, kParameter, 9);
  }
  rendering.queue(3, kGlobal, 9);
  for (std::size_t i = 0; i < EventSequencer::kCapacity; ++i) {
    rendering.queue(0, kParameter, 4);
  }
  EXPECT_THAT(rendering.firedBy(10), testing::Contains("m5").Times(3));
  EXPECT_THAT(std::vector(rendering.fired.end() - 4, rendering.fired.end()), ElementsAre("p9", "p9", "p9", "g9"));
}

TEST(EventSequencer, FiresWhatTheBlockAndOthersHaveQueuedAsOneList) {
  Rendering rendering;
  rendering.queue(5, kParameter, 1);
  rendering.queueInBlock(5, kMidi, 2);
  rendering.queueInBlock(5, kParameter, 3);
  rendering.queue(4, kGlobal, 4);
  rendering.queue(5, kParameter, 5);
  EXPECT_THAT(rendering.firedBy(20), ElementsAre("g4", "p1", "p3", "p5", "m2"));
  rendering.queueInBlock(0, kParameter, 6);
  EXPECT_THAT(rendering.firedBy(20), ElementsAre("p6"));
  rendering.queue(0, kParameter, 7);
  EXPECT_THAT(rendering.firedBy(20), ElementsAre("p7"));
}

TEST(EventSequencer, DropsTheNewestMessagesOfAFloodAndTakesRecordsAgainAfterIt) {
  Rendering rendering;
  for (std::size_t i = 0; i < 2 * EventSequencer::kCapacity; ++i) {
    rendering.queue(static_cast<std::int64_t>(i), kMidi, 1);
  }
  EXPECT_EQ(rendering.firedBy(100000).size(), EventSequencer::kCapacity);
  for (std::size_t i = 0; i < EventSequencer::kCapacity; ++i) {
    rendering.queue(0, kParameter, 2);
  }
  rendering.queue(0, kParameter, 3);
  EXPECT_EQ(rendering.firedBy(1).back(), "p3") << "older values make room for it";
}

}  // namespace
