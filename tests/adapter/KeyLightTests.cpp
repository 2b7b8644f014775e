// The key lights for one family of hosts: which hosts get them, when, and with what content.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <chrono>
#include <thread>

#include "adapter/AdapterScene.h"

namespace adapter {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t kSweep = 256;

class KeyLight : public Adapter {
 protected:
  void SetUp() override {
    host.vendor = "Native Instruments";
    load();
  }
  /// Waits until `count` calls of `opcode` have come, and then long enough to notice a surplus one.
  void await(std::size_t count, std::int32_t opcode) {
    for (int i = 0; i < 1500 && host.count(opcode) < count; ++i) {
      std::this_thread::sleep_for(20ms);
    }
    std::this_thread::sleep_for(250ms);
  }
  /// Returns all calls except queries, once they contain `count` vendor calls.
  std::vector<HostCall> settle(std::size_t count) {
    await(count, audioMasterVendorSpecific);
    auto calls = host.take();
    std::erase_if(calls, [](const HostCall& call) { return call.opcode == audioMasterCanDo; });
    return calls;
  }
};

TEST_F(KeyLight, ShowsAllKeysAfterTheFirstResumeAndAfterEachChange) {
  host.take();
  shell->setKeyState(60, 5);
  EXPECT_TRUE(settle(0).empty()) << "the host has not been resumed";
  const auto before = std::chrono::steady_clock::now();
  dispatch(effMainsChanged, 0, 1);
  EXPECT_GE(std::chrono::steady_clock::now() - before, 300ms);
  const auto first = settle(kSweep);
  ASSERT_EQ(first.size(), kSweep);
  EXPECT_GE(first.front().at - before, 300ms) << "the host is not ready earlier";
  for (std::uint8_t note = 0; note < 128; ++note) {
    const HostCall& reset = first[2U * note];
    const HostCall& state = first[2U * note + 1];
    EXPECT_EQ(reset.index, 0x4B49001B);
    EXPECT_EQ(reset.payload, (Bytes{note, 0}));
    EXPECT_EQ(state.index, 0x4B490014);
    EXPECT_EQ(state.payload, (Bytes{note, static_cast<std::uint8_t>(note == 60 ? 5 : 9)}));
  }
  shell->setKeyState(61, 0x1FE);
  const auto second = settle(kSweep);
  ASSERT_EQ(second.size(), kSweep);
  EXPECT_EQ(second[2 * 61 + 1].payload, (Bytes{61, 0xFE}));

  const std::uint8_t on[] = {0x93, 40, 100};
  const std::uint8_t off[] = {0x93, 40, 0};
  shell->sendKeyboardMidi(on, 3, 7);
  shell->sendKeyboardMidi(off, 3, 8);
  const auto notes = settle(2);
  ASSERT_EQ(notes.size(), 4U);
  EXPECT_EQ(notes[0].opcode, audioMasterProcessEvents);
  EXPECT_EQ(notes[0].index, 7);
  EXPECT_EQ(notes[0].payload, (Bytes{0x93, 40, 100, 0}));
  EXPECT_EQ(notes[1].index, 0x4B490013);
  EXPECT_EQ(notes[1].payload, (Bytes{40, 1}));
  EXPECT_EQ(notes[3].payload, (Bytes{40, 0}));

  shell->setKeyState(61, 9);
  plugin.reset();
  host.take();
  std::this_thread::sleep_for(150ms);
  EXPECT_TRUE(host.take().empty()) << "nothing comes from a plug-in that is gone";
}

TEST_F(KeyLight, GivesNothingToHostsThatDoNotAskForThem) {
  host.knowsKeyLights = 0;
  dispatch(effMainsChanged, 0, 1);
  await(kSweep, audioMasterCanDo);
  EXPECT_EQ(host.count(audioMasterCanDo), kSweep) << "it asks anew before each call";
  EXPECT_EQ(host.count(audioMasterVendorSpecific), 0U);
  plugin.reset();
  host.vendor = "Native Instruments GmbH";
  load();
  host.knowsKeyLights = 1;
  dispatch(effMainsChanged, 0, 1);
  shell->setKeyState(1, 1);
  std::this_thread::sleep_for(250ms);
  EXPECT_EQ(host.count(audioMasterVendorSpecific), 0U);
}

}  // namespace
}  // namespace adapter
