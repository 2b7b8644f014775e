// Dated copies of a program file: which ones are kept, and how one is restored.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <filesystem>

#include "storage/programs/ProgramFileCopies.h"
#include "support/Scratch.h"

namespace tesh::vimo {
namespace {

namespace fs = std::filesystem;

class ProgramFileCopies : public testing::Test {
 protected:
  ProgramFileCopies() { fs::create_directories(folder); }

  void write(const std::string& text, const std::string& end = "") const { support::writeFile(file + end, text); }
  /// Returns the contents of all copies, newest first.
  std::string copies() const {
    std::string all;
    for (const ProgramFileCopy& copy : programFileCopies(file)) {
      all += support::textIn(copy.path);
    }
    return all;
  }

  static constexpr CopyTime kNoon = 1'936'786'200'250;  ///< 2031-05-17, 12:10:00.250.
  const support::Scratch scratch;
  const fs::path folder = scratch / "the copies";
  const std::string file = scratch.path("the copies/Kit_User.prog");
};

TEST_F(ProgramFileCopies, AreNamedByTheirTimeAndHoldTheLastTenStates) {
  EXPECT_TRUE(keepProgramFileCopy(file, kNoon)) << "no file, no copy";
  EXPECT_EQ(copies(), "");
  for (char state = 'a'; state <= 'm'; ++state) {
    write({state});
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_TRUE(keepProgramFileCopy(file, kNoon + (state - 'a') * 1000));
    EXPECT_TRUE(keepProgramFileCopy(file, kNoon + (state - 'a') * 1000 + 1)) << "the same bytes once";
  }
  EXPECT_EQ(copies(), "mlkjihgfed");
  EXPECT_EQ(programFileCopies(file).back().path, file + ".2031-05-17T12-10-03.250Z");
  EXPECT_EQ(programFileCopies(file).back().time, kNoon + 3000);
  EXPECT_EQ(fs::status(programFileCopies(file).front().path).permissions(),
            fs::perms::owner_read | fs::perms::owner_write);
  write("n");
  EXPECT_TRUE(keepProgramFileCopy(file, kNoon - 5000)) << "the clock was set back";
  EXPECT_EQ(copies(), "nmlkjihgfe");
}

TEST_F(ProgramFileCopies, AreOnlyFilesOfTheirForm) {
  for (const char* const end :
       {".123.0", ".2031-13-14T18-30-00.250Z", ".2031-05-14T25-30-00.250Z", ".2031-05-14 18-30-00.250Z",
        ".2031-05-14T18-30-00.250Z.1", ".2031-05-14T18-3a-00.250Z"}) {
    write("x", end);
  }
  EXPECT_EQ(copies(), "");
  write("y", ".2031-05-14T18-30-00.250Z");
  EXPECT_EQ(copies(), "y");
}

TEST_F(ProgramFileCopies, ComeBackAlsoTheOldestAndKeepWhatTheyReplace) {
  for (char state = 'a'; state <= 'j'; ++state) {
    write({state});
    keepProgramFileCopy(file, kNoon + state);
  }
  write("now");
  ASSERT_TRUE(restoreProgramFileCopy(file, programFileCopies(file).back(), kNoon + 1000));
  EXPECT_EQ(support::textIn(file), "a");
  EXPECT_EQ(copies(), "nowjihgfedcb");
  EXPECT_FALSE(restoreProgramFileCopy(file, {file + ".gone", 0}, kNoon + 2000));
  EXPECT_EQ(support::textIn(file), "a");
}

}  // namespace
}  // namespace tesh::vimo
