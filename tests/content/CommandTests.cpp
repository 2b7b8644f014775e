// Commands of sivray-content as typed by a user: output, exit status, and files.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <cstdlib>

#include "host/shell/BramelInstrument.h"
#include "host/shell/Construction.h"
#include "support/Scratch.h"

namespace sivray::content {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

class Command : public testing::Test {
 protected:
  Command() {
    ::setenv("BRAMEL_COMMON_FILES", SIVRAY_CONTENT_FOLDER, 1);
    ::setenv("BRAMEL_DOCUMENTS", scratch.path().c_str(), 1);
  }

  /// Runs a command and returns standard output and standard error.
  std::string run(const std::string& words, int expectedStatus = 0) const {
    std::string output;
    std::FILE* const pipe = ::popen((std::string(SIVRAY_CONTENT_PROGRAM " ") + words + " 2>&1").c_str(), "r");
    std::array<char, 4096> piece{};
    while (const std::size_t count = std::fread(piece.data(), 1, piece.size(), pipe)) {
      output.append(piece.data(), count);
    }
    const int status = ::pclose(pipe);
    EXPECT_EQ(WIFEXITED(status) ? WEXITSTATUS(status) : -1, expectedStatus) << words << "\n" << output;
    return output;
  }

  support::Scratch scratch;
};

TEST_F(Command, ControllersShowsChangesAndResetsTheMap) {
  EXPECT_THAT(run("controllers"), testing::AllOf(HasSubstr("the factory's"), HasSubstr("   20  P1 Level\n"),
                                                 HasSubstr(" bend  P6 Pitch\n")));
  const std::string changed = run("controllers --set 20='p3 pan' --remove 21");
  EXPECT_THAT(changed, testing::AllOf(HasSubstr("yours"), HasSubstr("   20  P3 Pan\n"), Not(HasSubstr("   21  "))));
  EXPECT_EQ(run("controllers"), changed);
  EXPECT_THAT(run("controllers --set bend=99"), HasSubstr(" bend  Master"));
  EXPECT_THAT(run("controllers --set 127=1", 2), HasSubstr("'127' is no controller"));
  EXPECT_THAT(run("controllers --set 32=1", 2), HasSubstr("controller 32 is bank select"));
  EXPECT_THAT(run("controllers --set 1=Nothing", 2), HasSubstr("no macro 'Nothing'"));
  EXPECT_THAT(run("controllers --set 1", 2), HasSubstr("controllers [--set"));
  EXPECT_THAT(run("controllers --reset"), HasSubstr("   20  P1 Level\n"));
}

TEST_F(Command, KitsListsTheCopiesAndBringsOneBack) {
  EXPECT_THAT(run("kits"), testing::AllOf(HasSubstr("no kits"), HasSubstr("There are no copies")));
  {
    const auto instrument = tesh::bramel::vst::makeInstrument();
    constexpr std::uint64_t kUser = 3;
    instrument->saveProgramAs(kUser, "Oak");
    instrument->saveProgramAs(kUser, "Night");
    instrument->deleteProgram(kUser, 0);
  }
  EXPECT_THAT(run("kits"), testing::AllOf(HasSubstr("1 kit: Night"), HasSubstr("2 kits: Oak, Night"),
                                          HasSubstr("--restore NUMBER")));
  EXPECT_THAT(run("kits --restore 2", 2), HasSubstr("there is no copy '2'"));
  EXPECT_THAT(run("kits --restore x", 2), HasSubstr("there is no copy 'x'"));
  EXPECT_THAT(run("kits --restore 1"), HasSubstr("2 kits: Oak, Night"));
  EXPECT_THAT(run("kits"),
              testing::AllOf(HasSubstr("  now "), HasSubstr("2 kits: Oak, Night"), HasSubstr("1 kit: Night")));
}

}  // namespace
}  // namespace sivray::content
