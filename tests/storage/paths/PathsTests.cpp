// Path keys and the two folder trees on disk, and atomic writing.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/paths/Paths.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "platform/Files.h"
#include "support/Scratch.h"

namespace tesh::bramel {
namespace {

namespace fs = std::filesystem;

class Paths : public testing::Test {
 protected:
  void SetUp() override {
    ::setenv("BRAMEL_COMMON_FILES", (root / "common").c_str(), 1);
    ::setenv("BRAMEL_DOCUMENTS", (root / "docs").c_str(), 1);
  }

  std::string in(const std::string& rest) const { return root.string() + rest; }

  const support::Scratch scratch;
  const fs::path root = scratch.path();
};

TEST_F(Paths, LeadKeysIntoTheSharedAndTheUserTree) {
  const std::vector<std::pair<std::string, std::string>> directories{
      {"kBramelDirectory_Documents", in("/docs\\Tesh Bramel")},
      {"kBramelDirectory_Resource", in("/common\\Tesh\\Bramel\\Resource")},
      {"kBramelDirectory_UserSample", in("/docs\\Tesh Bramel\\User Samples")},
      {"kBramelDirectory_Library", ""},
      {"anything", ""}};
  for (const auto& [key, expected] : directories) {
    EXPECT_EQ(directoryFor(key), expected) << key;
  }
  EXPECT_EQ(pathFor("kBramelPath_FactoryTwoProgram", "Sivray"),
            in("/common\\Tesh\\Bramel\\Macro\\Sivray\\Factory2.prog"));
  EXPECT_EQ(pathFor("kBramelPath_FactoryNativeMap", "Sivray"),
            in("/common\\Tesh\\Bramel\\Macro\\Sivray\\Sivray.native_mode_map"));
  EXPECT_EQ(pathFor("no key", "Sivray"), "");
}

TEST_F(Paths, MakeTheFolderOfUserProgramsOnceAndForAll) {
  const std::string expected = in("/docs\\Tesh Bramel\\User Programs\\Sivray_User.prog");
  EXPECT_EQ(pathFor("kBramelPath_UserProgram", "Sivray"), expected);
  EXPECT_TRUE(fs::is_directory(root / "docs" / "Tesh Bramel" / "User Programs"));
  EXPECT_EQ(pathFor("kBramelPath_UserProgram", "Sivray"), expected);
}

TEST_F(Paths, PreferTheUsersControllerMapWhereThereIsOne) {
  const std::string factory = in("/common\\Tesh\\Bramel\\Macro\\Sivray\\Sivray.ccmap");
  EXPECT_EQ(pathFor("kBramelPath_ActiveCCMap", "Sivray"), factory);
  const std::string user = pathFor("kBramelPath_UserCCMap", "Sivray");
  fs::create_directories(root / "docs" / "Tesh Bramel" / "CC Maps" / "User Programs");
  ASSERT_TRUE(writeFile(user, "{}", 2));
  EXPECT_EQ(pathFor("kBramelPath_ActiveCCMap", "Sivray"), user);
}

TEST_F(Paths, JoinWithExactlyOneSeparator) {
  EXPECT_EQ(joinPath("a", "\\b"), "a\\b");
  EXPECT_EQ(joinPath("a/", "/b"), "a/b");
  EXPECT_EQ(joinPath("", "b"), "b");
}

TEST_F(Paths, LeaveTheOldFileWhenANewOneCannotBeWritten) {
  const std::string path = in("/file");
  ASSERT_TRUE(writeFile(path, "old", 3));
  ASSERT_TRUE(writeFile(path, "newer", 5));
  EXPECT_EQ(readFile(path).size(), 5U);
  EXPECT_FALSE(writeFile(in("/no folder/file"), "x", 1));
  EXPECT_FALSE(writeFile("", "x", 1));
  EXPECT_EQ(std::distance(fs::directory_iterator(root), fs::directory_iterator()), 1);
  EXPECT_TRUE(readFile(in("/absent")).empty());
  EXPECT_FALSE(platform::InputFile::open(root.string()).has_value());
}

TEST_F(Paths, StayEmptyWhereTheSystemHasNoPlaceForThem) {
  ::unsetenv("BRAMEL_COMMON_FILES");
  ::setenv("XDG_DATA_HOME", root.c_str(), 1);
  ::setenv("XDG_DATA_DIRS", root.c_str(), 1);
  EXPECT_EQ(directoryFor("kBramelDirectory_Resource"), "");
  fs::create_directories(root / "Tesh" / "Bramel");
  EXPECT_EQ(directoryFor("kBramelDirectory_Resource"), root.string() + "\\Tesh\\Bramel\\Resource");
}

}  // namespace
}  // namespace tesh::bramel
