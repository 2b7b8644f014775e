// Modulation, which a CLAP host adds to a parameter's value.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <cstdint>
#include <functional>
#include <utility>

#include "clap/ClapScene.h"

namespace clap {
namespace {

TEST_F(Clap, ModulationIsHeardButNeitherKeptNorShown) {
  Instance modulated;
  Instance plain;
  modulated.started();
  plain.started();
  modulated.events.addValue(kLevelOfPad1, nullptr, 0.75, 0);
  modulated.events.addValue(kLevelOfPad1, nullptr, -0.5, 0, EventType::paramModulation);
  // A parameter with discrete states, which modulation leaves unchanged.
  modulated.events.addValue(kWaveOfPad1, nullptr, 1.0, 0, EventType::paramModulation);
  plain.events.addValue(kLevelOfPad1, nullptr, 0.25, 0);
  for (Instance* const each : {&modulated, &plain}) {
    each->note(EventType::noteOn, 36, 0);
  }
  EXPECT_EQ(modulated.render(512), plain.render(512));
  EXPECT_EQ(modulated.value(kLevelOfPad1), 0.75);
  Instance reader;
  reader.started();
  EXPECT_TRUE(reader.load(modulated.state()));
  EXPECT_EQ(reader.value(kLevelOfPad1), 0.75);
  modulated.events.addValue(kLevelOfPad1, nullptr, 0.0, 0, EventType::paramModulation);
  plain.events.addValue(kLevelOfPad1, nullptr, 0.75, 0);
  EXPECT_EQ(modulated.render(64), plain.render(64));
}

TEST_F(Clap, ModulationStaysWhenAKitComes) {
  Instance modulated;
  Instance plain;
  modulated.started();
  plain.started();
  modulated.events.addValue(kMaster, nullptr, -0.25, 0, EventType::paramModulation);
  modulated.render(64);
  for (Instance* const each : {&modulated, &plain}) {
    const auto& presets = each->extension<PresetLoad>(kPresetLoad);
    EXPECT_TRUE(presets.fromLocation(each->plugin, LocationKind::plugin, nullptr, "1"));
  }
  modulated.render(64);
  plain.render(64);
  EXPECT_EQ(modulated.value(kMaster), plain.value(kMaster));
  plain.events.addValue(kMaster, nullptr, plain.value(kMaster) - 0.25, 0);
  plain.render(2048);
  modulated.render(2048);
  for (Instance* const each : {&modulated, &plain}) {
    each->note(EventType::noteOn, 36, 0);
  }
  EXPECT_EQ(modulated.render(512), plain.render(512));
}

/// A list of events. The plug-in asks for each event once; when it asks for the one with the index `interrupted`,
/// `meanwhile` is called.
struct InterruptedEvents {
  const InputEvents* events;
  std::uint32_t interrupted;
  std::function<void()> meanwhile;
  InputEvents list{this, &size, &get};

  static InterruptedEvents& of(const InputEvents* list) { return *static_cast<InterruptedEvents*>(list->context); }
  static std::uint32_t size(const InputEvents* list) { return of(list).events->size(of(list).events); }
  static const EventHeader* get(const InputEvents* list, std::uint32_t index) {
    if (index == of(list).interrupted) {
      of(list).meanwhile();
    }
    return of(list).events->get(of(list).events, index);
  }
};

TEST_F(Clap, AStateOutranksTheValuesThatModulationWasAddedTo) {
  Instance plugin;
  plugin.started();
  const double value = plugin.value(kMaster);
  const Bytes song = plugin.state();
  const auto modulate = [&plugin](double offset, int frame) {
    plugin.events.addValue(kMaster, nullptr, offset, frame, EventType::paramModulation);
  };
  plugin.events.addValue(kMaster, nullptr, value / 2, 0);
  modulate(-0.125, 0);
  plugin.render(64);
  EXPECT_TRUE(plugin.load(song));
  EXPECT_EQ(plugin.value(kMaster), value) << "the host asks before the next block";
  Instance reader;
  reader.started();
  EXPECT_TRUE(reader.load(plugin.state()));
  EXPECT_EQ(reader.value(kMaster), value);
  plugin.render(64);
  EXPECT_EQ(plugin.value(kMaster), value);
  EXPECT_TRUE(plugin.load(song));
  plugin.events.addValue(kMaster, nullptr, value / 4, 0);
  plugin.render(64);
  EXPECT_EQ(plugin.value(kMaster), value / 4) << "what the host writes later counts";

  for (const std::uint32_t interrupted : {0U, 1U, 2U, 3U}) {
    plugin.events.addValue(kMaster, nullptr, value / 2, 0);
    plugin.render(64);
    modulate(-0.25, 0);
    plugin.events.addValue(kLevelOfPad1, nullptr, 0.5, 20);  // Splits the block.
    modulate(-0.125, 40);
    plugin.note(EventType::noteOn, 36, 50);
    InterruptedEvents events{plugin.events.list(), interrupted, [&] { EXPECT_TRUE(plugin.load(song)); }};
    std::array<float, 64> samples{};
    std::array<float*, 2> channels{samples.data(), samples.data()};
    AudioBuffer output{channels.data(), nullptr, 2, 0, 0};
    const Process block{0, samples.size(), nullptr, nullptr, &output, 0, 1, &events.list, nullptr};
    EXPECT_EQ(plugin.plugin->process(plugin.plugin, &block), ProcessStatus::proceed);
    plugin.events.clear();
    plugin.render(64);
    EXPECT_EQ(plugin.value(kMaster), value) << interrupted;
  }
}

}  // namespace
}  // namespace clap
