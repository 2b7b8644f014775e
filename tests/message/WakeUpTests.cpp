// Wake-ups with a bell that the test rings, and that may refuse to ring as the system's may.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <utility>

#include "host/message/WakeUps.h"

namespace tesh::bramel::vst {
namespace {

/// The calls of the bell, and its results.
struct Script {
  WakeUpBell::Call rung;
  WakeUpBell::Call rested;
  int rings = 0;
  bool takesRings = true;
  bool hasTimer = true;
};
Script script;

class Counter : public WakeUpListener {
 public:
  void wokenUp() override { ++looks; }
  int looks = 0;
};

}  // namespace

// Replaces the system's bell.
struct WakeUpBell::Impl {};
WakeUpBell::WakeUpBell() = default;
WakeUpBell::~WakeUpBell() = default;
void WakeUpBell::start(Call rung, Call rested) {
  script.rung = std::move(rung);
  script.rested = std::move(rested);
}
void WakeUpBell::stop() {}
bool WakeUpBell::ring() {
  ++script.rings;
  return script.takesRings;
}
bool WakeUpBell::startRest() { return script.hasTimer; }

namespace {

class WakeUpTest : public testing::Test {
 protected:
  void SetUp() override {
    script = {};
    wakeUps->addListener(listener);
    wakeUps->start();
  }

  const std::shared_ptr<WakeUps> wakeUps = std::make_shared<WakeUps>();
  const std::shared_ptr<Counter> listener = std::make_shared<Counter>();
};

TEST_F(WakeUpTest, RingsOnceForManyAndLooksAgainAfterTheRest) {
  wakeUps->wake();
  wakeUps->wake();
  EXPECT_EQ(script.rings, 1);
  script.rung();
  wakeUps->wake();
  EXPECT_EQ(script.rings, 1) << "in the rest";
  script.rested();
  EXPECT_EQ(listener->looks, 2);
  script.rested();
  wakeUps->wake();
  EXPECT_EQ(script.rings, 2);
}

TEST_F(WakeUpTest, RingsAgainAfterARingThatTheSystemRefused) {
  script.takesRings = false;
  wakeUps->wake();
  script.takesRings = true;
  wakeUps->wake();
  EXPECT_EQ(script.rings, 2);
}

TEST_F(WakeUpTest, NeedsNoTimer) {
  script.hasTimer = false;
  wakeUps->wake();
  script.rung();
  wakeUps->wake();
  EXPECT_EQ(script.rings, 2) << "no rest";
}

}  // namespace
}  // namespace tesh::bramel::vst
