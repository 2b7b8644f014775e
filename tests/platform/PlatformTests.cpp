// The platform layer's guarantees on every system, and its folders on this one.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <new>
#include <optional>
#include <thread>

#include "platform/AddressRange.h"
#include "platform/Clock.h"
#include "platform/Files.h"
#include "platform/FolderLock.h"
#include "platform/Locale.h"
#include "platform/PluginBundle.h"
#include "platform/SpecialFolders.h"
#include "platform/ZeroedPages.h"
#include "support/Sanitized.h"
#include "support/Scratch.h"

namespace tesh::bramel::platform {
namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<std::uint8_t>;

/// The content of `path` at the time when a file was flushed.
struct FlushedFile {
  static inline std::string path;
  static inline std::optional<Bytes> targetAtFlush;
};

}  // namespace

// Replaces the C library's function.
extern "C" int fsync(int file) {
  if (!FlushedFile::path.empty()) {
    FlushedFile::targetAtFlush = readWhole(FlushedFile::path);
  }
  return static_cast<int>(::syscall(SYS_fsync, file));
}

namespace {

class Platform : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : {"BRAMEL_COMMON_FILES", "BRAMEL_DOCUMENTS", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "LC_ALL",
                             "LC_MESSAGES", "LANG"}) {
      ::unsetenv(name);
    }
    ::setenv("HOME", home.c_str(), 1);
    ::setenv("XDG_DATA_DIRS", ("/nowhere:" + home + "/shared").c_str(), 1);
  }

  const support::Scratch scratch;
  const std::string home = scratch.path();
};

TEST_F(Platform, LooksForTheCommonFilesInOrder) {
  EXPECT_EQ(commonFilesFolder(), "");
  fs::create_directories(home + "/shared/Tesh/Bramel");
  EXPECT_EQ(commonFilesFolder(), home + "/shared");
  fs::create_directories(home + "/.local/share/Tesh/Bramel");
  EXPECT_EQ(commonFilesFolder(), home + "/.local/share");
  const std::string own = home + "/.local/share/sivray/content";
  EXPECT_EQ(ownContentFolder(), own);
  fs::create_directories(own + "/Tesh/Bramel");
  EXPECT_EQ(commonFilesFolder(), own);
  EXPECT_EQ(installedFilesFolder(), home + "/.local/share");
  ::setenv("BRAMEL_COMMON_FILES", "/chosen", 1);
  EXPECT_EQ(commonFilesFolder(), "/chosen");
  EXPECT_EQ(installedFilesFolder(), "/chosen");
  EXPECT_TRUE(fs::exists(moduleFolder()));
}

TEST_F(Platform, LocksAFolderForOneHolderAtATime) {
  using std::chrono::milliseconds;
  std::optional<FolderLock> first(std::in_place, home);
  EXPECT_TRUE(first->isHeld());
  std::thread([&] { EXPECT_FALSE(FolderLock(home, milliseconds(20)).isHeld()) << "it gives up"; }).join();
  std::thread second([&] { EXPECT_TRUE(FolderLock(home, milliseconds(10'000)).isHeld()) << "it waits"; });
  std::this_thread::sleep_for(milliseconds(50));
  const int child = ::fork();
  if (child == 0) {
    ::pause();
  }
  first.reset();
  second.join();
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
  EXPECT_TRUE(fs::is_empty(home));
  EXPECT_FALSE(FolderLock(home + "/absent").isHeld());
}

/// Returns the number of resident pages.
std::ptrdiff_t presentPages(void* start, std::size_t bytes) {
  const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
  std::vector<unsigned char> present((bytes + page - 1) / page);
  EXPECT_EQ(::mincore(start, bytes, present.data()), 0);
  return std::count_if(present.begin(), present.end(), [](unsigned char bits) { return (bits & 1U) != 0; });
}

template <typename Element>
std::ptrdiff_t presentPages(const ZeroedArray<Element>& array) {
  return presentPages(array.data(), array.size() * sizeof(Element));
}

/// Returns the number of resident pages of a file after `warm`. The file has `bytes` bytes, nearly all of them a hole.
std::ptrdiff_t pagesWarmedBy(const std::function<void(const std::string&)>& warm, const std::string& path,
                             std::size_t bytes) {
  std::ofstream(path).put('x');
  fs::resize_file(path, bytes);
  warm(path);
  const int file = ::open(path.c_str(), O_RDONLY);
  void* const mapped = ::mmap(nullptr, bytes, PROT_READ, MAP_SHARED, file, 0);
  const std::ptrdiff_t present = presentPages(mapped, bytes);
  ::munmap(mapped, bytes);
  ::close(file);
  return present;
}

void readThrough(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::vector<char> bytes(fs::file_size(path));
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

/// Expects as many pages as reading the file brings in. File systems that keep files in memory bring in none.
TEST_F(Platform, WarmsALargeFileToItsEnd) {
  constexpr std::size_t kBytes = std::size_t{32} << 20U;
  const auto warm = [](const std::string& path) { warmPages(path); };
  EXPECT_EQ(pagesWarmedBy(warm, home + "/large", kBytes), pagesWarmedBy(readThrough, home + "/read", kBytes));
}

/// Old systems and emulators of other processors do not provide pages on request.
bool providesPagesThatAreAskedFor() {
  void* const start = ::mmap(nullptr, 1, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  ::madvise(start, static_cast<std::size_t>(::sysconf(_SC_PAGESIZE)), MADV_POPULATE_WRITE);
  const bool provides = presentPages(start, 1) == 1;
  ::munmap(start, 1);
  return provides;
}

TEST(ZeroedPages, AreProvidedWhereTheyAreWrittenOrAskedFor) {
  constexpr std::size_t kPage = 4096 / sizeof(std::int16_t);
  ZeroedArray<std::int16_t> array(100 * kPage);
  EXPECT_EQ(presentPages(array), 0);
  array.data()[50 * kPage] = 7;
  EXPECT_EQ(presentPages(array), 1);
  if (!providesPagesThatAreAskedFor()) {
    GTEST_SKIP() << "this system provides no pages that are asked for";
  }
  array.makePresent(50 * kPage + 1, 2 * kPage);
  EXPECT_EQ(presentPages(array), 3);
  array.makePresent(99 * kPage, 50 * kPage);
  array.makePresent(200 * kPage, 1);
  EXPECT_EQ(presentPages(array), 4) << "what lies past the end is left out";
  EXPECT_EQ(std::count(array.data(), array.data() + array.size(), 0), 100 * static_cast<std::ptrdiff_t>(kPage) - 1);
  EXPECT_EQ(array.data()[50 * kPage], 7);
}

TEST(AddressRange, GivesPagesBackAndOpensThemAgainAsZeros) {
  const std::size_t page = AddressRange::pageBytes();
  constexpr std::size_t kTooMuch = std::size_t{1} << 62;
  EXPECT_THROW(AddressRange(kTooMuch, kTooMuch), std::bad_alloc);
  if (!support::kIsSanitized && !support::kIsEmulated) {  // Sanitizers shadow reserved memory.
    const AddressRange large(kTooMuch, page);
    EXPECT_LT(large.size(), kTooMuch);
    EXPECT_NO_THROW(AddressRange(large.size(), large.size())) << "as much is left to others";
  }
  const AddressRange range(100 * page, page);
  EXPECT_EQ(range.size(), 100 * page);
  const auto expectPresent = [&](std::ptrdiff_t pages) {
    if (!support::kIsEmulated) {  // An emulator does not report pages without access.
      EXPECT_EQ(presentPages(range.data(), 40 * page), pages);
    }
  };
  expectPresent(0);
  ASSERT_TRUE(range.open(10 * page, 20 * page));
  std::fill_n(range.data() + 10 * page, 20 * page, std::uint8_t{5});
  range.close(12 * page, 10 * page);
  expectPresent(10);
  ASSERT_TRUE(range.open(12 * page, 10 * page));
  EXPECT_EQ(std::count(range.data() + 10 * page, range.data() + 30 * page, 5), 10 * static_cast<std::ptrdiff_t>(page));
  EXPECT_EQ(range.data()[12 * page - 1], 5);
  EXPECT_EQ(range.data()[22 * page], 5);
}

TEST_F(Platform, TellsVersionsOfAFileApart) {
  const std::string path = home + "/data";
  const auto put = [&path](char last) { std::ofstream(path, std::ios::binary) << "dat" << last; };
  const auto version = [&path] { return InputFile::open(path)->version(); };
  put('a');
  const auto first = version();
  ASSERT_TRUE(first);
  EXPECT_EQ(version(), first);
  const auto time = fs::last_write_time(path);
  // The system's clock for file times has a coarse resolution.
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  put('b');
  fs::last_write_time(path, time);
  EXPECT_NE(version(), first) << "written in place, with the old size and time";
  const auto second = version();
  fs::copy_file(path, path + "2");
  fs::last_write_time(path + "2", time);
  fs::rename(path + "2", path);
  EXPECT_NE(version(), second) << "another file in its place, with the same bytes and time";
}

TEST(PluginBundle, IsKnownByItsNameFromTheLibrarysFolder) {
  EXPECT_EQ(folderAroundBundle("/plug-ins/Sivray.vst3/Contents/x86_64-linux"), "/plug-ins");
  EXPECT_EQ(folderAroundBundle("/plug-ins/Sivray.lv2"), "/plug-ins");
  EXPECT_EQ(folderAroundBundle("/a.lv2/b/c/d"), "");
  EXPECT_EQ(folderAroundBundle("/usr/lib/vst"), "");
  EXPECT_EQ(folderAroundBundle(""), "");
}

TEST_F(Platform, TakesTheDocumentsFolderFromTheDesktop) {
  EXPECT_EQ(documentsFolder(), home + "/Documents");
  fs::create_directories(home + "/.config");
  std::ofstream(home + "/.config/user-dirs.dirs") << "# folders\nXDG_DOCUMENTS_DIR=\"$HOME/Dokumente\"\n";
  EXPECT_EQ(documentsFolder(), home + "/Dokumente");
  std::ofstream(home + "/.config/user-dirs.dirs") << "XDG_DOCUMENTS_DIR=\"\n";
  EXPECT_EQ(documentsFolder(), home + "/Documents");
  ::setenv("BRAMEL_DOCUMENTS", "/chosen", 1);
  EXPECT_EQ(documentsFolder(), "/chosen");
}

TEST_F(Platform, ReadsJapaneseFromTheFirstSettingThatIsThere) {
  EXPECT_EQ(userInterfaceLanguage(), kLanguageEnglish);
  ::setenv("LANG", "ja_JP.UTF-8", 1);
  EXPECT_EQ(userInterfaceLanguage(), kLanguageJapanese);
  ::setenv("LC_ALL", "de_DE.UTF-8", 1);
  EXPECT_EQ(userInterfaceLanguage(), kLanguageEnglish);
}

TEST_F(Platform, ReadsAndReplacesFilesWhole) {
  const std::string path = home + "\\deep\\folder\\file";
  const Bytes bytes{1, 2, 3};
  EXPECT_FALSE(writeAtomically(path, bytes));
  EXPECT_TRUE(createFolders(home + "\\deep\\folder"));
  EXPECT_TRUE(writeAtomically(path, Bytes(5000)));
  EXPECT_TRUE(writeAtomically(path, bytes));
  EXPECT_EQ(readWhole(path), bytes);
  EXPECT_EQ(std::distance(fs::directory_iterator(home + "/deep/folder"), {}), 1);
  EXPECT_EQ(readWhole(home + "\\deep"), std::nullopt);
  EXPECT_EQ(readWhole(path, 2), std::nullopt) << "longer than the caller wants to read";
  EXPECT_FALSE(createFolders(path));

  std::optional<InputFile> file = InputFile::open(path);
  ASSERT_TRUE(file);
  InputFile moved = std::move(*file);
  std::array<std::uint8_t, 8> read{};
  EXPECT_FALSE(moved.seek(-1));
  EXPECT_TRUE(moved.seek(2));
  EXPECT_EQ(moved.read(read.data(), read.size()), 1U);
  EXPECT_EQ(read[0], 3);
  moved.expect(0, 3);
  EXPECT_TRUE(moved.seek(1));
  EXPECT_EQ(moved.readCached(read.data(), read.size()), 2U) << "what was written a moment ago is in the cache";
  EXPECT_EQ(read[0], 2);
}

TEST_F(Platform, ReadsAndReplacesRegularFilesOnly) {
  const std::string pipe = home + "/pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_FALSE(InputFile::open(pipe)) << "and without waiting for a writer";
  warmPages(pipe);
  EXPECT_EQ(readWhole(std::string("/dev/zero")), std::nullopt);
  EXPECT_FALSE(writeAtomically(pipe, Bytes{1}));
  EXPECT_FALSE(writeAtomically(home, Bytes{1}));
  EXPECT_TRUE(fs::is_fifo(pipe));
}

TEST_F(Platform, WritesThroughLinksAndKeepsPermissions) {
  const std::string target = home + "/target";
  fs::create_symlink("middle", home + "/link");
  fs::create_symlink(target, home + "/middle");
  EXPECT_TRUE(writeAtomically(home + "/link", Bytes{1})) << "the target need not exist";
  ASSERT_EQ(::chmod(target.c_str(), 0640), 0);
  EXPECT_TRUE(writeAtomically(home + "/link", Bytes{1, 2}));
  EXPECT_EQ(readWhole(target), (Bytes{1, 2}));
  EXPECT_TRUE(fs::is_symlink(home + "/link"));
  EXPECT_EQ(fs::status(target).permissions(), fs::perms(0640));
  fs::create_symlink("circle", home + "/circle");
  EXPECT_FALSE(writeAtomically(home + "/circle", Bytes{1}));
}

TEST_F(Platform, WritesBesideWhatACrashHasLeftAndFlushesBeforeItReplaces) {
  const std::string path = home + "/kept";
  ASSERT_TRUE(writeAtomically(path, Bytes{7}));
  for (int number = 0; number < 300; ++number) {
    std::ofstream(path + '.' + std::to_string(::getpid()) + '.' + std::to_string(number)) << "left over";
  }
  FlushedFile::path = path;
  ASSERT_TRUE(writeAtomically(path, Bytes{8}));
  FlushedFile::path.clear();
  EXPECT_EQ(FlushedFile::targetAtFlush, Bytes{7}) << "flushed once it is in place would be too late";
  EXPECT_EQ(readWhole(path), Bytes{8});
}

TEST_F(Platform, LeavesNothingBesideAFileThatItCannotWrite) {
  const std::string path = home + "/kept";
  ASSERT_TRUE(writeAtomically(path, Bytes{7}));
  rlimit limit{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
  const rlimit tight{16, limit.rlim_max};
  const auto previous = std::signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &tight), 0);
  const bool written = writeAtomically(path, Bytes(100));
  ::setrlimit(RLIMIT_FSIZE, &limit);
  std::signal(SIGXFSZ, previous);
  EXPECT_FALSE(written);
  EXPECT_EQ(readWhole(path), Bytes{7});
  EXPECT_EQ(std::distance(fs::directory_iterator(home), {}), 1);
}

TEST_F(Platform, TakesABackslashInAChosenPathForPartOfANameWhereItLeadsNowhereElse) {
  const std::string path = home + "/a\\b";
  EXPECT_TRUE(writeAtomically(NativePath::chosen(path), Bytes{1}));
  EXPECT_TRUE(fs::exists(path));
  fs::create_directory(home + "/a");
  EXPECT_EQ(readWhole(NativePath::chosen(path)), Bytes{1});
  fs::remove(path);
  EXPECT_TRUE(writeAtomically(NativePath::chosen(path), Bytes{2}));
  EXPECT_EQ(readWhole(home + "/a/b"), Bytes{2});
}

TEST_F(Platform, HasAClockThatOnlyGoesForward) {
  std::int64_t last = monotonicNanoseconds();
  for (int i = 0; i < 1000; ++i) {
    const std::int64_t now = monotonicNanoseconds();
    ASSERT_GE(now, last);
    last = now;
  }
  EXPECT_NEAR(static_cast<double>(monotonicTicks()), static_cast<double>(last) / 100.0, 1e7);
}

}  // namespace
}  // namespace tesh::bramel::platform
