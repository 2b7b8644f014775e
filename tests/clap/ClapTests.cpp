// The calls between the plug-in and a CLAP host, and the sound.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <thread>

#include "clap/ClapScene.h"
#include "host/shell/Construction.h"
#include "support/QuietGenerator.h"

namespace clap {
namespace {

/// Joins the stereo samples of two consecutive blocks.
Samples joined(const Samples& first, const Samples& second) {
  const auto middle = [](const Samples& both) { return both.begin() + static_cast<std::ptrdiff_t>(both.size() / 2); };
  Samples whole(first.begin(), middle(first));
  whole.insert(whole.end(), second.begin(), middle(second));
  whole.insert(whole.end(), middle(first), first.end());
  whole.insert(whole.end(), middle(second), second.end());
  return whole;
}

bool isSilent(const Samples& samples) {
  return std::ranges::all_of(samples, [](float sample) { return sample == 0.0F; });
}

TEST_F(Clap, ValuesAndNotesTakeForceAtTheirOwnFrames) {
  for (const double rate : {44100.0, 48000.0}) {
    Instance whole;
    Instance cut;
    whole.started(rate);
    cut.started(rate);
    whole.note(EventType::noteOn, 36, 10);
    whole.events.addValue(kLevelOfPad1, nullptr, 0.1, 200);
    whole.note(EventType::noteOn, 37, 250);
    cut.note(EventType::noteOn, 36, 10);
    const Samples first = cut.render(200);
    cut.events.addValue(kLevelOfPad1, nullptr, 0.1, 0);
    cut.note(EventType::noteOn, 37, 50);
    const Samples expected = joined(first, cut.render(312));
    EXPECT_FALSE(isSilent(expected));
    EXPECT_EQ(whole.render(512), expected) << rate;
    EXPECT_FLOAT_EQ(static_cast<float>(whole.value(kLevelOfPad1)), 0.1F);
  }
}

/// Records the frames, the tempo and the messages of each block.
struct TempoNotes final : tesh::vimo::QuietGenerator {
  explicit TempoNotes(Log& newLog) : log(newLog) {}
  void process(tesh::vimo::ProcessBlock& block) override {
    tesh::cofu::core::mayWait([&] {
      log.push_back(std::to_string(block.frames) + " at " + std::to_string(std::lround(tempo)));
      for (const auto& message : *block.midiIn) {
        log.push_back(std::to_string(message.status()) + "@" + std::to_string(message.frame));
      }
    });
  }
  void tempoChanged(double bpm) override { tempo = bpm; }
  Log& log;
  double tempo = 0.0;
};

TEST_F(Clap, TempoAndTransportTakeForceAtTheirOwnFrames) {
  Log log;
  const auto instrument = std::make_shared<tesh::bramel::vst::BramelInstrument>(
      std::make_unique<tesh::bramel::vst::BramelInstrument::Processor>("Sivray", std::make_unique<TempoNotes>(log)));
  const ClapParameters parameters(*instrument);
  const ClapHost host(nullptr);
  ClapReports reports(*instrument, parameters, host);
  ClapBlock block(*instrument, parameters, reports);
  std::array<float, 64> samples{};
  std::array<float*, 2> channels{samples.data(), samples.data()};
  AudioBuffer output{channels.data(), nullptr, 2, 0, 0};
  TransportEvent transport{};
  transport.header = {sizeof(transport), 0, kCoreSpace, EventType::transport, 0};
  transport.flags = TransportFlag::hasTempo | TransportFlag::isPlaying;
  transport.tempo = 90.0;
  TransportEvent later = transport;
  later.header.time = 40;
  later.flags = TransportFlag::hasTempo;
  later.tempo = 150.0;
  EventQueue events;
  events.add(later);
  block.process({0, 64, &transport, nullptr, &output, 0, 1, events.list(), nullptr});
  block.process({64, 64, nullptr, nullptr, &output, 0, 1, nullptr, nullptr});
  EXPECT_EQ(log, (Log{"40 at 90", "250@0", "24 at 150", "252@0", "64 at 150"}));
}

TEST_F(Clap, EventsOutOfOrderCountAtOnceAndForeignOnesNotAtAll) {
  Instance one;
  Instance other;
  one.started();
  other.started();
  one.events.addValue(kLevelOfPad1, nullptr, 0.2, 100);
  one.events.addValue(kMaster, nullptr, 0.5, 30);  // Late: applies at 100.
  other.events.addValue(kLevelOfPad1, nullptr, 0.2, 100);
  other.events.addValue(kMaster, nullptr, 0.5, 100);
  for (Instance* const each : {&one, &other}) {
    each->note(EventType::noteOn, 36, 120);
  }
  NoteEvent foreign{};
  foreign.key = 37;
  foreign.velocity = 1.0;
  foreign.header = {sizeof(foreign), 0, 7, EventType::noteOn, 0};  // Another event space.
  one.events.add(foreign);
  foreign.header = {sizeof(EventHeader), 0, kCoreSpace, EventType::noteOn, 0};  // Too short.
  one.events.add(foreign);
  foreign.header = {sizeof(foreign), 0, kCoreSpace, 999, 0};  // Unknown.
  one.events.add(foreign);
  one.events.addValue(12345, nullptr, 0.5, 0);
  one.events.addValue(kMaster, nullptr, std::numeric_limits<double>::quiet_NaN(), 0);
  one.note(EventType::noteOn, -1, 0);
  one.note(EventType::noteOn, 500, 0);
  EXPECT_EQ(one.render(512), other.render(512));
}

/// A list of random events, each in an allocation of exactly its size, and the plug-in's output events.
struct StrangeEvents {
  std::vector<std::vector<std::uint64_t>> all;
  InputEvents in{this, &size, &get};
  OutputEvents out{this, &push};
  std::uint32_t last = 0;
  bool isInOrder = true;

  explicit StrangeEvents(std::mt19937& random) {
    const auto below = [&](std::uint32_t count) { return static_cast<std::uint32_t>(random()) % count; };
    all.resize(below(40));
    for (auto& words : all) {
      constexpr std::array<std::uint32_t, 8> kSizes{0, 8, 16, 20, 24, 40, 56, 104};
      const std::uint32_t bytes = kSizes[below(kSizes.size())];
      words.resize(std::max<std::size_t>(2, (bytes + 7) / 8));
      std::ranges::generate(words, [&] { return (std::uint64_t{random()} << 32U) | random(); });
      const auto type = static_cast<std::uint16_t>(below(14));
      const auto space = static_cast<std::uint16_t>(below(8) == 0 ? 1 : kCoreSpace);
      const EventHeader header{bytes, below(4) == 0 ? below(0xFFFFFFFF) : below(64), space, type, 0};
      std::memcpy(words.data(), &header, sizeof(header));
      if (bytes == sizeof(NoteEvent)) {
        auto& note = *reinterpret_cast<NoteEvent*>(words.data());
        note.key = static_cast<std::int16_t>(34 + below(12));
        note.noteId = static_cast<std::int32_t>(below(3)) - 1;
        note.velocity = below(8) == 0 ? note.velocity : 0.9;
      } else if (bytes == sizeof(ParamEvent)) {
        auto& value = *reinterpret_cast<ParamEvent*>(words.data());
        value.paramId = below(60);
        value.value = below(8) == 0 ? value.value : 0.01 * below(100);
      }
    }
  }
  StrangeEvents(const StrangeEvents&) = delete;
  StrangeEvents& operator=(const StrangeEvents&) = delete;

  /// Returns one more than the number of events; the surplus one is null.
  static std::uint32_t size(const InputEvents* list) {
    return static_cast<std::uint32_t>(static_cast<StrangeEvents*>(list->context)->all.size()) + 1;
  }
  static const EventHeader* get(const InputEvents* list, std::uint32_t index) {
    const auto& all = static_cast<StrangeEvents*>(list->context)->all;
    return index < all.size() ? reinterpret_cast<const EventHeader*>(all[index].data()) : nullptr;
  }
  static bool push(const OutputEvents* list, const EventHeader* event) {
    auto& own = *static_cast<StrangeEvents*>(list->context);
    own.isInOrder = own.isInOrder && event->time >= own.last && event->time < 64;
    own.last = event->time;
    return true;
  }
};

TEST_F(Clap, StrangeEventsHarmNothing) {
  std::mt19937 random(21);
  for (const double rate : {44100.0, 1234.5678, 48000.0, 768000.0}) {
    Instance plugin;
    plugin.started(rate);
    for (int block = 0; block < 500; ++block) {
      Samples left(64, -7.0F);
      Samples right(64, -7.0F);
      std::array<float*, 2> channels{left.data(), right.data()};
      AudioBuffer output{channels.data(), nullptr, 2, 0, 0};
      StrangeEvents events(random);
      const Process given{0, 64, nullptr, nullptr, &output, 0, 1, &events.in, &events.out};
      ASSERT_EQ(plugin.plugin->process(plugin.plugin, &given), ProcessStatus::proceed);
      ASSERT_TRUE(events.isInOrder);
      for (const Samples* const channel : {&left, &right}) {
        ASSERT_TRUE(std::ranges::all_of(*channel, [](float sample) { return std::abs(sample) < 2.0F; })) << rate;
      }
    }
    plugin.plugin->reset(plugin.plugin);
    for (const std::uint32_t id : {kLevelOfPad1, kMaster}) {
      plugin.events.addValue(id, nullptr, 1.0, 0);
      plugin.events.addValue(id, nullptr, 0.0, 0, EventType::paramModulation);
    }
    plugin.note(EventType::noteOn, 36, 0);
    EXPECT_FALSE(isSilent(plugin.render(4096))) << rate;
  }
}

TEST_F(Clap, ANotesEndIsToldWithItsId) {
  Instance plugin;
  plugin.started();
  plugin.note(EventType::noteOn, 36, 5, 11);
  plugin.note(EventType::noteOn, 38, 6, 12);
  plugin.note(EventType::noteOn, 36, 7, 13);   // The key has one voice.
  plugin.note(EventType::noteOff, 36, 8, 99);  // Ends a note that is not playing.
  plugin.note(EventType::noteChoke, 36, 9, 13);
  plugin.note(EventType::noteOff, -1, 20);  // All that are held.
  plugin.render(64);
  EXPECT_EQ(plugin.log, (Log{"end 36 id 11@7", "end 36 id 13@9", "end 38 id 12@20"}));
}

TEST_F(Clap, TheHostHearsInTheOrderOfTimeEvenWhereItsOwnEventsAreNot) {
  Instance plugin;
  plugin.started();
  plugin.note(EventType::noteOn, 36, 40, 1);
  plugin.note(EventType::noteOn, 37, 41, 2);
  plugin.note(EventType::noteOn, 38, 42, 3);
  plugin.note(EventType::noteOff, 36, 50);
  plugin.note(EventType::noteOff, 37, 20);
  plugin.note(EventType::noteOff, 38, 4000);  // After the block's end.
  plugin.render(64);
  EXPECT_EQ(plugin.log, (Log{"end 36 id 1@50", "end 37 id 2@50", "end 38 id 3@63"}));
}

TEST_F(Clap, ABlockWithoutTwoChannelsIsRefusedButItsValuesCount) {
  Instance plugin;
  plugin.started();
  Samples samples(64, 7.0F);
  std::array<double, 64> wide{};
  std::array<float*, 2> channels{samples.data(), samples.data()};
  std::array<float*, 2> lacking{samples.data(), nullptr};
  std::array<double*, 2> wideChannels{wide.data(), wide.data()};
  double level = 0.1;
  for (const AudioBuffer& output :
       {AudioBuffer{channels.data(), nullptr, 1, 0, 0}, AudioBuffer{lacking.data(), nullptr, 2, 0, 0},
        AudioBuffer{nullptr, wideChannels.data(), 2, 0, 0}, AudioBuffer{}}) {
    level += 0.1;
    plugin.note(EventType::noteOn, 36, 0);
    plugin.events.addValue(kMaster, nullptr, level, 30);
    plugin.process(output, 64);
    EXPECT_EQ(plugin.status, ProcessStatus::error);
    EXPECT_FLOAT_EQ(static_cast<float>(plugin.value(kMaster)), static_cast<float>(level));
  }
  EXPECT_EQ(samples, Samples(64, 7.0F));
  plugin.process({channels.data(), nullptr, 2, 0, 0}, 0);
  EXPECT_EQ(plugin.status, ProcessStatus::proceed) << "a block of no frames is one";
}

TEST_F(Clap, TheMainThreadReadsAndLoadsWhileBlocksRun) {
  Instance plugin;
  plugin.started();
  std::atomic<bool> isOver = false;
  std::thread audio([&] {
    for (int block = 0; block < 400; ++block) {
      plugin.events.addValue(kMaster, nullptr, 0.75, 0);
      plugin.events.addValue(kMaster, nullptr, -0.01 * (block % 50), 0, EventType::paramModulation);
      plugin.render(64);
    }
    isOver = true;
  });
  const Bytes state = plugin.state();
  for (int round = 0; !isOver || round < 10; ++round) {
    const auto& presets = plugin.extension<PresetLoad>(kPresetLoad);
    EXPECT_TRUE(presets.fromLocation(plugin.plugin, LocationKind::plugin, nullptr, round % 2 == 0 ? "0" : "1"));
    plugin.value(kMaster);
    EXPECT_FALSE(plugin.state().empty());
    EXPECT_TRUE(plugin.load(state));
    plugin.answerCallback();
  }
  audio.join();
  plugin.events.addValue(kMaster, nullptr, 0.75, 0);
  plugin.render(64);
  EXPECT_EQ(plugin.value(kMaster), 0.75);
}

TEST_F(Clap, StatesComeInPiecesAndBrokenOnesChangeNothing) {
  Instance first;
  Instance second;
  first.started();
  second.started();
  first.events.addValue(kLevelOfPad1, nullptr, 0.3, 0);
  first.render(64);
  const Bytes state = first.state();
  EXPECT_TRUE(second.load(state));
  EXPECT_EQ(second.value(kLevelOfPad1), first.value(kLevelOfPad1));
  const Bytes own = second.state();
  EXPECT_TRUE(second.load(own));
  EXPECT_TRUE(second.state() == own);
  EXPECT_TRUE(second.wantsCallback);
  second.answerCallback();
  EXPECT_EQ(second.log, (Log{"rescan", "names"})) << "what the host loads is no change of its song";
  for (Bytes broken : {Bytes(), Bytes(state.begin(), state.begin() + 100), Bytes(1000, 0xC1)}) {
    EXPECT_FALSE(second.load(broken));
    EXPECT_TRUE(second.state() == own);
  }
}

TEST_F(Clap, NamesTheKeyOfEachPadByItsSound) {
  Instance plugin;
  plugin.started();
  const auto& names = plugin.extension<NoteName>(kNoteName);
  ASSERT_EQ(names.count(plugin.plugin), 8U);
  NoteNameInfo info{};
  Log told;
  for (std::uint32_t pad = 0; pad < 8; ++pad) {
    ASSERT_TRUE(names.get(plugin.plugin, pad, &info));
    EXPECT_EQ(info.port, -1);
    EXPECT_EQ(info.channel, -1);
    EXPECT_EQ(info.key, 36 + static_cast<int>(pad));
    told.emplace_back(info.name);
  }
  // The panel's index of a pad's sample is another parameter of this instrument, hence the repeated names.
  EXPECT_EQ(told, (Log{"wave0", "wave2", "wave4", "wave6", "wave0", "wave0", "wave0", "wave0"}));
  EXPECT_FALSE(names.get(plugin.plugin, 8, &info));
  EXPECT_FALSE(names.get(plugin.plugin, 0, nullptr));
}

TEST_F(Clap, WhatChangesWhileTheHostReadsIsToldAfterwards) {
  Instance plugin;
  plugin.started();
  const auto loadKit = [&plugin](const char* key) {
    plugin.extension<PresetLoad>(kPresetLoad).fromLocation(plugin.plugin, LocationKind::plugin, nullptr, key);
  };
  plugin.duringRescan = [&] { loadKit("0"); };
  loadKit("1");
  plugin.answerCallback();
  plugin.answerCallback();
  EXPECT_EQ(std::ranges::count(plugin.log, "rescan"), 2);
  EXPECT_EQ(plugin.log.back(), "names");
}

TEST_F(Clap, ANewLatencyIsToldWhileTheHostActivates) {
  Instance plugin;
  plugin.started();
  const auto& latency = plugin.extension<Latency>(kLatency);
  std::uint32_t before = latency.get(plugin.plugin);
  for (const double rate : {96000.0, 96000.0, 44100.0}) {
    plugin.log.clear();
    plugin.deactivate();
    EXPECT_TRUE(plugin.activate(rate));
    const std::uint32_t now = latency.get(plugin.plugin);
    EXPECT_EQ(plugin.log, now == before ? Log() : Log{"latency"}) << rate;
    EXPECT_TRUE(now != before || rate == 96000.0);
    before = now;
  }
}

TEST_F(Clap, ReportsOfThePanelWaitForABlockAndNotesForAnActiveOne) {
  Instance asHost;
  tesh::bramel::vst::BramelInstrument instrument(tesh::bramel::vst::makeProcessor());
  instrument.currentProgram();  // Applies the first program.
  const ClapParameters parameters(instrument);
  ClapHost host(&asHost.hostRecord);
  host.findExtensions();
  ClapReports reports(instrument, parameters, host);
  using Kind = ClapReports::Report::Kind;
  const std::array<std::uint8_t, 3> key{0x90, 36, 100};
  reports.sendMidi(key.data(), key.size(), 0);
  reports.setTakesMidi(true);
  reports.sendMidi(key.data(), key.size(), 0);
  EXPECT_TRUE(asHost.log.empty()) << "a message may come from the audio thread, which may not ask for a flush";
  reports.beginEdit(2);
  reports.automate(2, 0.25F);
  reports.endEdit(2);
  EXPECT_EQ(asHost.log, Log(3, "flush"));
  for (const Kind expected : {Kind::midi, Kind::gestureBegin, Kind::value, Kind::gestureEnd}) {
    const auto report = reports.take();
    ASSERT_TRUE(report);
    EXPECT_EQ(report->kind, expected);
  }
  EXPECT_FALSE(reports.take());
  EXPECT_EQ(instrument.parameterValue(parameters.idAt(2)), 0.25F);
}

TEST_F(Clap, DebugBuildsEndAtACallOnTheWrongThread) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  Instance plugin;
  plugin.started();
  plugin.isOnMainThread = false;
  EXPECT_DEBUG_DEATH(plugin.state(), "main thread");
  plugin.note(EventType::noteOn, 36, 0);
  EXPECT_FALSE(isSilent(plugin.render(64))) << "a block belongs to another thread";
  plugin.isOnMainThread = true;
}

TEST_F(Clap, CallsAtTheWrongTimeChangeNothing) {
  Instance plugin;
  EXPECT_EQ(plugin.plugin->process(plugin.plugin, nullptr), ProcessStatus::error);
  EXPECT_FALSE(plugin.plugin->activate(plugin.plugin, 44100.0, 1, 64));
  EXPECT_EQ(plugin.extension<Params>(kParams).count(plugin.plugin), 0U);
  EXPECT_TRUE(plugin.plugin->init(plugin.plugin));
  EXPECT_FALSE(plugin.plugin->init(plugin.plugin));
  plugin.note(EventType::noteOn, 36, 0);
  EXPECT_TRUE(isSilent(plugin.render(64)));
  EXPECT_EQ(plugin.status, ProcessStatus::error);
  for (const double rate : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN(), 1e300}) {
    EXPECT_FALSE(plugin.plugin->activate(plugin.plugin, rate, 1, 64));
  }
  EXPECT_EQ(plugin.plugin->getExtension(plugin.plugin, "clap.of.another"), nullptr);
  EXPECT_EQ(plugin.plugin->getExtension(plugin.plugin, nullptr), nullptr);
}

TEST_F(Clap, AResetEndsAllSound) {
  Instance plugin;
  plugin.started();
  plugin.note(EventType::noteOn, 36, 0, 4);
  EXPECT_FALSE(isSilent(plugin.render(512)));
  plugin.plugin->reset(plugin.plugin);
  EXPECT_TRUE(isSilent(plugin.render(512)));
  plugin.log.clear();
  plugin.note(EventType::noteOff, -1, 0);
  plugin.render(64);
  EXPECT_TRUE(plugin.log.empty()) << "the key is held no more";
}

TEST_F(Clap, EveryTextLeadsBackToItsValue) {
  Instance plugin;
  plugin.started();
  const auto& params = plugin.extension<Params>(kParams);
  const std::uint32_t count = params.count(plugin.plugin);
  ASSERT_GT(count, 0U);
  for (std::uint32_t index = 0; index < count; ++index) {
    ParamInfo info{};
    ASSERT_TRUE(params.getInfo(plugin.plugin, index, &info));
    EXPECT_LE(info.minimum, info.defaultValue);
    EXPECT_LE(info.defaultValue, info.maximum);
    for (const double share : {0.0, 0.4, 1.0}) {
      const double value = std::round(share * info.maximum * 127.0) / 127.0;
      std::array<char, 64> text{};
      std::array<char, 64> again{};
      double back = -1.0;
      ASSERT_TRUE(params.valueToText(plugin.plugin, info.id, value, text.data(), text.size()));
      ASSERT_TRUE(params.textToValue(plugin.plugin, info.id, text.data(), &back)) << text.data();
      ASSERT_TRUE(params.valueToText(plugin.plugin, info.id, back, again.data(), again.size()));
      EXPECT_STREQ(again.data(), text.data()) << info.name;
    }
    EXPECT_FALSE(params.textToValue(plugin.plugin, info.id, "no such text", &info.minimum));
  }
  ParamInfo info{};
  EXPECT_FALSE(params.getInfo(plugin.plugin, count, &info));
}

TEST_F(Clap, AFlushTakesValuesWithoutSound) {
  Instance plugin;
  EXPECT_TRUE(plugin.plugin->init(plugin.plugin));
  plugin.events.addValue(kMaster, nullptr, 0.5, 0);
  plugin.flush();
  EXPECT_EQ(plugin.value(kMaster), 0.5);
}

TEST_F(Clap, KitsAreChosenByTheirNumbers) {
  Instance plugin;
  plugin.started();
  const auto& presets = plugin.extension<PresetLoad>(kPresetLoad);
  EXPECT_TRUE(presets.fromLocation(plugin.plugin, LocationKind::plugin, nullptr, "1"));
  plugin.answerCallback();
  EXPECT_EQ(plugin.log, (Log{"loaded 1", "rescan", "dirty", "names"}));
  plugin.log.clear();
  for (const char* const key : {"2", "-1", "x", ""}) {
    EXPECT_FALSE(presets.fromLocation(plugin.plugin, LocationKind::plugin, nullptr, key)) << key;
  }
  EXPECT_FALSE(presets.fromLocation(plugin.plugin, LocationKind::file, "/etc/passwd", "0"));
  EXPECT_FALSE(presets.fromLocation(plugin.plugin, LocationKind::plugin, nullptr, nullptr));
  EXPECT_EQ(plugin.log, Log(6, "failed"));
}

TEST_F(Clap, WhileThereIsAWindowATimerTellsHostsThatAnswerNoCallback) {
  Instance plugin;
  plugin.started();
  const auto& gui = plugin.extension<Gui>(kGui);
  const char* api = nullptr;
  bool isFloating = true;
  ASSERT_TRUE(gui.getPreferredApi(plugin.plugin, &api, &isFloating));
  EXPECT_TRUE(gui.create(plugin.plugin, api, isFloating));
  plugin.extension<PresetLoad>(kPresetLoad).fromLocation(plugin.plugin, LocationKind::plugin, nullptr, "1");
  const auto& timers = plugin.extension<TimerSupport>(kTimerSupport);
  timers.onTimer(plugin.plugin, 0);
  timers.onTimer(plugin.plugin, 0);
  gui.destroy(plugin.plugin);
  EXPECT_EQ(plugin.log, (Log{"timer", "loaded 1", "rescan", "dirty", "names", "no timer"}));
}

}  // namespace
}  // namespace clap
