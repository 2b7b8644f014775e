// The functions that the audio thread calls neither allocate nor free memory, even in blocks with many events.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/CountedMemory.h"

#if !defined(SIVRAY_FIXED_OPERATORS)

#include "clap/ClapScene.h"

namespace clap {
namespace {

TEST_F(Clap, BlocksFlushesAndResetsTakeNoMemory) {
  Instance plugin;
  plugin.started(48000.0);
  std::array<float, 256> left{};
  std::array<float, 256> right{};
  std::array<float*, 2> channels{left.data(), right.data()};
  const OutputEvents out{nullptr, [](const OutputEvents*, const EventHeader*) { return true; }};
  AudioBuffer output{channels.data(), nullptr, 2, 0, 0};
  const auto& params = plugin.extension<Params>(kParams);
  EventQueue few;
  for (std::uint32_t id = 0; id <= kMaster; ++id) {
    few.addValue(id, nullptr, 0.5, 0);
  }
  int calls = 0;
  for (int round = 0; round < 20; ++round) {
    for (std::uint32_t frame = 0; frame < 256; ++frame) {
      plugin.note(frame % 3 == 2 ? EventType::noteOff : EventType::noteOn, static_cast<std::int16_t>(36 + frame % 8),
                  frame);
      plugin.events.addValue(kLevelOfPad1, nullptr, 0.001 * frame, static_cast<int>(frame));
      plugin.events.addValue(kMaster, nullptr, 0.001 * frame, static_cast<int>(frame), EventType::paramModulation);
    }
    const Process block{0, 256, nullptr, nullptr, &output, 0, 1, plugin.events.list(), &out};
    const int before = support::memoryCalls();
    plugin.plugin->process(plugin.plugin, &block);
    params.flush(plugin.plugin, few.list(), &out);
    plugin.plugin->reset(plugin.plugin);
    calls += support::memoryCalls() - before;
    plugin.events.clear();
  }
  EXPECT_EQ(calls, 0);
}

}  // namespace
}  // namespace clap

#endif
