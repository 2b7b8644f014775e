// The libraries and the program that users get: loading and unloading, and the properties that Windows shows.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include "SivrayVersion.h"
#include "platform/EmbeddedResources.h"
#include "platform/Module.h"
#include "platform/SpecialFolders.h"
#include "platform/WideText.h"
#include "platform/WindowsApi.h"

namespace {

using namespace tesh::bramel::platform;

/// This program is in build/<preset>/bin.
std::wstring built(const wchar_t* name) { return toWide(moduleFolder()) + L"\\..\\Sivray\\" + name; }

constexpr int kGroupIcon = 14;
constexpr int kManifest = 24;

/// Returns the name or type of a resource that has a number.
const wchar_t* numbered(int number) { return MAKEINTRESOURCEW(number); }

struct Library {
  const wchar_t* file;
  const char* entry;
};
constexpr std::array<Library, 3> kLibraries{{{L"Sivray.dll", "VSTPluginMain"},
                                             {L"Sivray.vst3\\Contents\\x86_64-win\\Sivray.vst3", "GetPluginFactory"},
                                             {L"Sivray.clap", "clap_entry"}}};

TEST(WindowsBinaries, AreLoadedAndUnloadedAgainAndAgain) {
  for (const auto& [file, entry] : kLibraries) {
    for (int round = 0; round < 20; ++round) {
      HMODULE library = LoadLibraryW(built(file).c_str());
      ASSERT_NE(library, nullptr) << entry;
      EXPECT_NE(GetProcAddress(library, entry), nullptr) << entry;
      FreeLibrary(library);
      EXPECT_EQ(GetModuleHandleW(built(file).c_str()), nullptr) << entry;
    }
  }
}

TEST(WindowsBinaries, HaveVersionIconAndManifest) {
  std::vector<std::pair<const wchar_t*, int>> files{{L"sivray.exe", 1}};
  for (const Library& library : kLibraries) {
    files.emplace_back(library.file, 2);
  }
  for (const auto& [file, manifest] : files) {
    const std::wstring path = built(file);
    DWORD unused = 0;
    std::vector<unsigned char> data(GetFileVersionInfoSizeW(path.c_str(), &unused));
    ASSERT_NE(GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(data.size()), data.data()), FALSE)
        << toUtf8(path);
    for (const auto& [name, wanted] :
         {std::pair(L"ProductVersion", SIVRAY_VERSION), std::pair(L"ProductName", "Sivray")}) {
      void* text = nullptr;
      UINT length = 0;
      VerQueryValueW(data.data(), (std::wstring(L"\\StringFileInfo\\040904B0\\") + name).c_str(), &text, &length);
      ASSERT_NE(text, nullptr) << toUtf8(path);
      EXPECT_EQ(toUtf8(static_cast<const wchar_t*>(text)), wanted);
    }
    HMODULE library = LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    EXPECT_NE(FindResourceW(library, numbered(1), numbered(kGroupIcon)), nullptr) << toUtf8(path);
    EXPECT_NE(FindResourceW(library, numbered(manifest), numbered(kManifest)), nullptr) << toUtf8(path);
    FreeLibrary(library);
  }
}

TEST(WindowsResources, AreFoundByTypeAndName) {
  const auto picture = findEmbeddedResource("PNG", "collection_kits");
  constexpr std::array<std::uint8_t, 4> kPng{0x89, 'P', 'N', 'G'};
  ASSERT_GT(picture.size(), kPng.size());
  EXPECT_TRUE(std::equal(kPng.begin(), kPng.end(), picture.begin()));
  EXPECT_FALSE(findEmbeddedResource("TTF", "OPEN_SANS_REGULAR").empty());
  EXPECT_TRUE(findEmbeddedResource("png", "collection_kits").empty()) << "a type has one spelling";
  EXPECT_TRUE(findEmbeddedResource("PNG", "nothing").empty());
}

}  // namespace
