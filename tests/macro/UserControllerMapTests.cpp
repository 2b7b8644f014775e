// The user's controller map: the factory's map with the user's lines.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>

#include "macro/MacroControllerBase.h"
#include "macro/UserControllerMap.h"
#include "storage/paths/Paths.h"
#include "support/Scratch.h"

namespace {

namespace fs = std::filesystem;
using namespace tesh::vimo;

class UserControllers : public testing::Test {
 protected:
  UserControllers() {
    ::setenv("BRAMEL_COMMON_FILES", root.path().c_str(), 1);
    ::setenv("BRAMEL_DOCUMENTS", root.path("documents").c_str(), 1);
    support::writeFile(factory, R"({"cc_map": {"7": 99, "20": 1, "note": "volume"}, "pitch_bend": 64, "by": "us"})");
  }
  std::string userText() const { return support::textIn(user); }

  const support::Scratch root;
  const fs::path factory = root / "Tesh/Bramel/Macro/Drum/Drum.ccmap";
  const fs::path user = root / "documents/Tesh Bramel/CC Maps/User Programs/Drum_User.prog";
};

TEST_F(UserControllers, AreTheFactorysWithTheLinesThatWereChanged) {
  constexpr auto kBend = MacroControllerBase::kPitchBendKey;
  const ControllerMap before{{7, 99}, {20, 1}, {kBend, 64}};
  EXPECT_EQ(activeControllerMap("Drum"), before);
  EXPECT_TRUE(changeUserController("Drum", 20, 5));
  EXPECT_TRUE(changeUserController("Drum", 74, 5));
  EXPECT_TRUE(changeUserController("Drum", 7, std::nullopt));
  EXPECT_TRUE(changeUserController("Drum", kBend, 3));
  for (const std::uint8_t never : std::initializer_list<std::uint8_t>{0, 32, 127}) {
    EXPECT_FALSE(changeUserController("Drum", never, 3)) << int{never};
  }
  EXPECT_EQ(activeControllerMap("Drum"), (ControllerMap{{20, 5}, {74, 5}, {kBend, 3}}));
  EXPECT_THAT(userText(), testing::AllOf(testing::HasSubstr("volume"), testing::HasSubstr("\"by\"")))
      << "what nobody here knows stays";
  MacroControllerBase controller;
  controller.loadCcMap(tesh::bramel::pathFor(tesh::bramel::kBramelPath_ActiveCCMap, "Drum"));
  EXPECT_EQ(controller.ccMap, activeControllerMap("Drum")) << "an instrument reads it";
  const ControllerMap changed = activeControllerMap("Drum");
  support::writeFile(user, "\xEF\xBB\xBF" + userText());
  EXPECT_EQ(activeControllerMap("Drum"), changed) << "some editors begin a file like this";
  fs::remove(user);
  EXPECT_EQ(activeControllerMap("Drum"), before);
}

TEST_F(UserControllers, BeginAnewFromABrokenFileAndRefuseWhatNoMapHolds) {
  for (const char* const text : {"", "{", "[]", "{\"cc_map\": 7}", "{\"cc_map\": {\"1\": 1e999}}"}) {
    support::writeFile(user, text);
    EXPECT_EQ(activeControllerMap("Drum").size(), 3U) << text;
    EXPECT_TRUE(changeUserController("Drum", 1, 2));
    EXPECT_EQ(activeControllerMap("Drum").size(), 4U) << text;
  }
  for (const int number : {127, 128, 223, 225, 255}) {
    EXPECT_FALSE(changeUserController("Drum", static_cast<std::uint8_t>(number), 1)) << number;
  }
  fs::remove_all(root / "documents");
  support::writeFile(root / "documents", "a file where the folder should be");
  EXPECT_FALSE(changeUserController("Drum", 1, 2));
  EXPECT_EQ(activeControllerMap("Drum").size(), 3U);
  fs::remove(factory);
  EXPECT_TRUE(activeControllerMap("Drum").empty());
}

}  // namespace
