// Builds of the sample library: a repeated build renders only changed waves, and the installed library matches its
// tables.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "content/Files.h"
#include "content/factory/WaveBuild.h"
#include "content/library/LibraryReader.h"
#include "content/library/LibraryWriter.h"
#include "content/waves/FactoryWaves.h"
#include "support/Scratch.h"

namespace sivray::content {
namespace {

class SecondBuild : public testing::Test {
 protected:
  SecondBuild() {
    for (const char* file : {"snare", "clap", "close-hh", "open-hh", "tom", "cymbal", "perc", "fx", "hit"}) {
      scratch.write(std::string(file) + ".txt", "");
    }
    scratch.write("kick.txt", kKicks);
    scratch.write("snare.txt", "Snare | snare | length=30\n");
    scratch.write("numbers.txt", "One\nTwo\nSnare\n");
    scratch.write("code", "first");
  }

  /// Builds the library. Returns the number of rendered waves, and checks that the result equals that of a full build.
  std::size_t rendered() const {
    const std::string library = scratch.path("library");
    const WaveBuild build = buildWaves(scratch.path(), {library, scratch.path("notes"), scratch.path("code")});
    writeLibrary(library, build.waves);
    writeText(scratch.path("notes"), build.notes);
    const std::vector<Wave> fresh = makeFactoryWaves(scratch.path());
    EXPECT_EQ(build.waves.size(), fresh.size());
    for (std::size_t i = 0; i < fresh.size(); ++i) {
      const Wave& wave = build.waves[i];
      EXPECT_TRUE(wave.name == fresh[i].name && wave.category == fresh[i].category && wave.left == fresh[i].left &&
                  wave.right == fresh[i].right)
          << fresh[i].name;
    }
    return build.rendered;
  }

  static constexpr const char* kKicks = "One | kick | length=30\nTwo | kick | length=30 width=0.5 hz=60\n";
  const support::Scratch scratch;
};

TEST_F(SecondBuild, RendersOnlyRowsThatHaveChanged) {
  EXPECT_EQ(rendered(), 3U);
  EXPECT_EQ(rendered(), 0U);
  scratch.write("kick.txt", std::string("# A comment.\n") + kKicks);
  scratch.write("numbers.txt", "Snare\nTwo\nOne\n");
  EXPECT_EQ(rendered(), 0U);
  scratch.write("kick.txt", std::string(kKicks) + "Three | kick | length=30\n");
  scratch.write("numbers.txt", "Snare\nTwo\nOne\nThree\n");
  EXPECT_EQ(rendered(), 1U);
  scratch.write("kick.txt", std::string("* | kick | click=0.5\n") + kKicks);
  scratch.write("numbers.txt", "Snare\nTwo\nOne\n");
  EXPECT_EQ(rendered(), 2U);
  scratch.write("kick.txt",
                "One | kick | length=30 click=0.5000001\nTwo | kick | length=30 width=0.5 hz=60 click=0.5\n");
  EXPECT_EQ(rendered(), 1U);
  scratch.write("snare.txt", "One | kick | length=30 click=0.5000001\n");
  scratch.write("kick.txt", "Snare | snare | length=30\nTwo | kick | length=30 width=0.5 hz=60 click=0.5\n");
  EXPECT_EQ(rendered(), 2U);  // Another category has another target loudness.
}

TEST_F(SecondBuild, RendersAllWithOtherCodeAndWhatIsNotAsItWasLeft) {
  rendered();
  scratch.write("code", "second");
  EXPECT_EQ(rendered(), 3U);
  const std::string data = scratch.path("library/drumdata.bin");
  std::vector<std::uint8_t> bytes = readFile(data);
  bytes[200] ^= 1U;
  writeFile(data, bytes);
  EXPECT_EQ(rendered(), 1U);
  bytes.resize(bytes.size() / 2);
  writeFile(data, bytes);
  EXPECT_EQ(rendered(), 3U);
  std::filesystem::remove(scratch.path("library/drumparam.bin"));
  EXPECT_EQ(rendered(), 3U);
  scratch.write("notes", "no notes\n\n0123456789abcdef\n");
  EXPECT_EQ(rendered(), 3U);
  std::filesystem::remove(scratch.path("notes"));
  EXPECT_EQ(rendered(), 3U);
  std::filesystem::remove(scratch.path("code"));
  EXPECT_THROW(rendered(), std::runtime_error);
}

/// The release build renders the installed library with GCC; the sanitizer builds run this test with Clang.
TEST(InstalledLibrary, HoldsWhatThisCompilerRenders) {
  const std::vector<FactoryRow> rows = readFactoryRows(SIVRAY_WAVE_TABLES);
  const std::vector<Wave> waves = readLibrary(SIVRAY_CONTENT_FOLDER "/Tesh/Bramel/Resource/SivrayPCM");
  ASSERT_EQ(waves.size(), rows.size()) << "build the target 'content' of the release preset first";
  std::set<std::pair<std::string, int>> seen;  // One short wave of each model in each category.
  std::set<std::string> models;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    ASSERT_EQ(waves[i].name, rows[i].row.name);
    if (waves[i].left.size() < 60000 && seen.emplace(rows[i].row.model->name, rows[i].category).second) {
      models.insert(rows[i].row.model->name);
      const Wave wave = makeWave(rows[i]);
      EXPECT_TRUE(wave.left == waves[i].left && wave.right == waves[i].right) << wave.name;
    }
  }
  EXPECT_EQ(models.size(), 18U);
}

}  // namespace
}  // namespace sivray::content
