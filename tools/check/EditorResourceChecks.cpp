// The editor with copies of the library in which pictures and fonts are damaged.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef __linux__

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

#include "check/EditorScene.h"
#include "vsthost/PluginLibrary.h"

namespace sivray::check {
namespace {

using namespace std::string_view_literals;

/// Damages the signature of each picture, by which JUCE recognises the format. Returns the number of pictures.
int damagePictures(std::string& library) {
  constexpr auto kMark = "\x89PNG\r\n\x1a\n\0\0\0\rIHDR"sv;
  int found = 0;
  for (std::size_t at = library.find(kMark); at != std::string::npos; at = library.find(kMark, at + 1)) {
    library[at + 1] = '?';
    ++found;
  }
  return found;
}

/// Damages each font's name in the table of resources. Returns the number of fonts.
int damageFontNames(std::string& library) {
  int found = 0;
  for (const std::string name :
       {"OPEN_SANS_BOLD", "OPEN_SANS_REGULAR", "OPEN_SANS_SEMIBOLD", "OSWALD_MEDIUM", "PF_ARMA_FIVE", "ROBOTO"}) {
    const std::size_t at = library.find('\0' + name + '\0');
    if (at != std::string::npos) {
      library[at + 1] = '?';
      ++found;
    }
  }
  return found;
}

std::string bytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// Opens the panel of a library, uses each page and a pop-up, and returns the hash of the first page's picture; 0 if
/// the panel did not open, or did not open again.
std::uint64_t pictureOf(const std::string& path) {
  const vsthost::PluginLibrary library(path);
  EditorScene scene(library);
  scene.open();
  scene.window.moveTo({4, 464});
  const std::uint64_t picture = scene.settledPicture();
  const bool isOpen = scene.window.childSize() == kPanelSize;
  for (const std::size_t page : {1U, 2U, 0U}) {
    scene.showPage(page);
  }
  scene.window.click({117, 92});  // The program list.
  scene.letSettle();
  scene.window.click({4, 464});
  scene.letSettle();
  scene.close();
  scene.open();
  return isOpen && scene.window.childSize() == kPanelSize ? picture : 0;
}

Verdict missingResources(const CheckSettings& settings) {
  const Sandbox sandbox;
  const std::string whole = bytesOf(settings.libraryPath);
  const std::string copy = sandbox.documents() + "/Sivray.so";
  const std::uint64_t usual = pictureOf(settings.libraryPath);
  int pictures = 0;
  int fonts = 0;
  int opened = 0;
  int changed = 0;
  for (const auto& [withPictures, withFonts] :
       {std::pair(false, true), std::pair(true, false), std::pair(false, false)}) {
    std::string damaged = whole;
    pictures = withPictures ? pictures : damagePictures(damaged);
    fonts = withFonts ? fonts : damageFontNames(damaged);
    std::ofstream(copy, std::ios::binary) << damaged;
    const std::uint64_t picture = pictureOf(copy);
    opened += picture != 0 ? 1 : 0;
    changed += picture != usual ? 1 : 0;
    std::filesystem::remove(copy);
  }
  return verdict(opened == 3 && changed == 3 && pictures > 0 && fonts > 0,
                 "without its %d pictures, its %d fonts and both: %d of 3 opened, %d of 3 look otherwise", pictures,
                 fonts, opened, changed);
}

/// The panel must use its own fonts only: it does not even look at the system's, of which there may be thousands.
Verdict installedFonts(const CheckSettings& settings) {
  const Sandbox sandbox;
  const std::string folder = sandbox.documents() + "/fonts";
  std::filesystem::create_directories(folder);
  std::ofstream(folder + "/installed.ttf") << "no font, but to know that it must be opened";
  const ScopedVariable fonts("JUCE_FONT_PATH", folder);  // In place of the system's folders.
  const int watch = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  ::inotify_add_watch(watch, folder.c_str(), IN_OPEN);
  const bool isOpen = pictureOf(settings.libraryPath) != 0;
  std::array<char, 4096> events{};
  const bool isLookedAt = ::read(watch, events.data(), events.size()) > 0;
  ::close(watch);
  return verdict(isOpen && !isLookedAt, "the panel %s, the folder of fonts %s", isOpen ? "opens" : "does not open",
                 isLookedAt ? "was looked at" : "was left alone");
}

}  // namespace

std::vector<Check> editorResourceChecks() {
  return {{"missing resources", missingResources, CheckedForms::vst2},
          {"installed fonts", installedFonts, CheckedForms::vst2}};
}

}  // namespace sivray::check

#endif
