// Files and folders on Windows.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/Files.h"
#include "platform/FolderLock.h"
#include "platform/SpecialFolders.h"
#include "platform/WideText.h"
#include "platform/WindowsApi.h"

namespace {

namespace fs = std::filesystem;
using namespace tesh::bramel::platform;

std::vector<std::uint8_t> bytesOf(const char* text) { return {text, text + std::strlen(text)}; }

/// A folder whose name has blanks, an umlaut and Japanese letters.
class WindowsFiles : public testing::Test {
 protected:
  void SetUp() override {
    fs::remove_all(folder);
    fs::create_directories(folder);
  }
  void TearDown() override {
    SetFileAttributesW(toWide(file).c_str(), FILE_ATTRIBUTE_NORMAL);
    fs::remove_all(folder);
  }
  /// Counts the file and the entries whose names begin with its name. Wine may leave a file of its own name, too.
  std::ptrdiff_t entries() const {
    return std::count_if(fs::directory_iterator(folder), fs::directory_iterator(),
                         [](const auto& entry) { return entry.path().filename().wstring().starts_with(L"kits.prog"); });
  }

  const fs::path folder = fs::temp_directory_path() / L"Sivray \u00fc \u592a\u9f13";
  const std::string file = toUtf8(folder.wstring()) + "\\kits.prog";
};

TEST_F(WindowsFiles, KeepTheirAttributesWhereTheyAreOverwritten) {
  ASSERT_TRUE(writeAtomically(file, bytesOf("old")));
  ASSERT_NE(SetFileAttributesW(toWide(file).c_str(), FILE_ATTRIBUTE_HIDDEN), FALSE);
  ASSERT_TRUE(writeAtomically(file, bytesOf("newer")));
  EXPECT_EQ(readWhole(file), bytesOf("newer"));
  EXPECT_NE(GetFileAttributesW(toWide(file).c_str()) & FILE_ATTRIBUTE_HIDDEN, 0U);
  EXPECT_EQ(entries(), 1) << "no temporary file stays";
}

TEST_F(WindowsFiles, AreLeftAloneWhereTheyMayNotBeWritten) {
  ASSERT_TRUE(writeAtomically(file, bytesOf("old")));
  ASSERT_NE(SetFileAttributesW(toWide(file).c_str(), FILE_ATTRIBUTE_READONLY), FALSE);
  EXPECT_FALSE(writeAtomically(file, bytesOf("new")));
  EXPECT_EQ(readWhole(file), bytesOf("old"));
  EXPECT_FALSE(writeAtomically(toUtf8(folder.wstring()), bytesOf("new"))) << "a folder";
  EXPECT_EQ(entries(), 1);
}

TEST_F(WindowsFiles, AreNotWaitedForWhileAnotherProgramHoldsThem) {
  ASSERT_TRUE(writeAtomically(file, bytesOf("old")));
  HANDLE held = CreateFileW(toWide(file).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  const ULONGLONG begun = GetTickCount64();
  EXPECT_FALSE(writeAtomically(file, bytesOf("new")));
  constexpr ULONGLONG kMilliseconds = 100;
  EXPECT_LT(GetTickCount64() - begun, kMilliseconds);
  CloseHandle(held);
  EXPECT_EQ(readWhole(file), bytesOf("old"));
  EXPECT_TRUE(writeAtomically(file, bytesOf("new")));
  EXPECT_EQ(entries(), 1);
}

/// In a separate working folder, where an empty path would create a file and delete it again.
TEST_F(WindowsFiles, AreNotMadeForAnEmptyPath) {
  const fs::path before = fs::current_path();
  fs::current_path(folder);
  HANDLE changes = FindFirstChangeNotificationW(folder.c_str(), FALSE, FILE_NOTIFY_CHANGE_FILE_NAME);
  EXPECT_FALSE(writeAtomically("", bytesOf("new")));
  constexpr DWORD kMilliseconds = 100;
  EXPECT_EQ(WaitForSingleObject(changes, kMilliseconds), WAIT_TIMEOUT);
  FindCloseChangeNotification(changes);
  fs::current_path(before);
}

TEST(WindowsFolders, HoldTheContentOfOneUserOrOfAll) {
  SetEnvironmentVariableW(L"BRAMEL_COMMON_FILES", nullptr);
  const std::vector<std::string> places = commonFilesPlaces();
  ASSERT_EQ(places.size(), 4U);
  EXPECT_EQ(places.front(), ownContentFolder());
  EXPECT_TRUE(places[0].ends_with("\\AppData\\Local\\sivray\\content")) << places[0];
  EXPECT_EQ(places[1], moduleFolder());
  EXPECT_TRUE(places[2].ends_with("\\AppData\\Local\\Programs\\Common")) << places[2];
  EXPECT_EQ(commonFilesFolder(), places.back()) << "where nothing is installed";
  const fs::path users = toWide(places[2]);
  fs::create_directories(users / "Tesh" / "Bramel");
  EXPECT_EQ(commonFilesFolder(), places[2]);
  fs::remove_all(users / "Tesh");
  SetEnvironmentVariableW(L"BRAMEL_COMMON_FILES", L"C:\\chosen");
  EXPECT_EQ(commonFilesPlaces(), std::vector<std::string>{"C:\\chosen"});
}

TEST_F(WindowsFiles, LieInAFolderThatHasOneHolderAtATime) {
  using std::chrono::milliseconds;
  const std::string path = toUtf8(folder.wstring());
  std::optional<FolderLock> first(std::in_place, path);
  EXPECT_TRUE(first->isHeld());
  std::thread([&] { EXPECT_FALSE(FolderLock(path, milliseconds(20)).isHeld()) << "it gives up"; }).join();
  std::thread second([&] { EXPECT_TRUE(FolderLock(path, milliseconds(10'000)).isHeld()) << "it waits"; });
  std::this_thread::sleep_for(milliseconds(50));
  first.reset();
  second.join();
}

}  // namespace
