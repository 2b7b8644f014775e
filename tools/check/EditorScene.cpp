// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef __linux__

#include "check/EditorScene.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>

#include "formhost/FormFile.h"
#include "views/PanelTable.h"

namespace sivray::check {
namespace {

constexpr std::chrono::milliseconds kBetweenLooks{2};

std::string newFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "sivray-check-XXXXXX").string();
  return ::mkdtemp(pattern.data()) == nullptr ? std::string("/nowhere") : pattern;
}

}  // namespace

bool comesTrue(const std::function<bool()>& condition) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(isSanitized() ? 100 : 30);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) {
      return condition();
    }
    formhost::rest(kBetweenLooks);
  }
  return true;
}

void EditorScene::render(int frames) { host.process(left.data(), right.data(), frames); }

void EditorScene::show() {
  open();
  comesTrue([this] {
    shown = window.view();
    awaitPainting();
    return window.isPainted() && window.view() == shown;
  });
}

void EditorScene::awaitNewView() {
  const hosting::WindowView before = shown;
  comesTrue([&] {
    shown = window.view();
    return shown.id != before.id && shown.depth == before.depth;
  });
  awaitPainting();
}

void EditorScene::awaitPainting() {
  window.mark();
  comesTrue([this] { return !window.isMarked(); });
}

void EditorScene::letSettle() {
  constexpr int kRounds = 2;  // A message may post another one.
  for (int round = 0; round < kRounds; ++round) {
    host.settleEditor();
    awaitPainting();
  }
}

std::uint64_t EditorScene::settledPicture() {
  constexpr int kEqualLooks = 5;
  constexpr std::chrono::milliseconds kBetweenPictures{20};
  letSettle();
  std::uint64_t picture = window.picture();
  int equal = 0;
  comesTrue([&] {
    formhost::rest(kBetweenPictures);
    awaitPainting();  // If the thread has not run since, it has not painted anything new either.
    const std::uint64_t before = picture;
    picture = window.picture();
    equal = picture == before ? equal + 1 : 0;
    return equal == kEqualLooks;
  });
  return picture;
}

void EditorScene::click(hosting::WindowPoint point, unsigned int button) {
  window.click(point, button);
  letSettle();
}

void EditorScene::showPage(std::size_t page) {
  const auto& bounds = tesh::bramel::panel::kPageButtons[page].bounds;
  click({bounds.x + bounds.width / 2, bounds.y + bounds.height / 2});
}

std::vector<hosting::HostCall> EditorScene::settledCalls() {
  letSettle();
  return host.takeCalls();
}

ScopedVariable::ScopedVariable(const char* variable, const std::string& value)
    : name(variable), wasSet(std::getenv(variable) != nullptr), before(wasSet ? std::getenv(variable) : std::string()) {
  ::setenv(name, value.c_str(), 1);
}

ScopedVariable::~ScopedVariable() { wasSet ? ::setenv(name, before.c_str(), 1) : ::unsetenv(name); }

Sandbox::Sandbox()
    : folder(newFolder()), documentsVariable("BRAMEL_DOCUMENTS", folder), pathVariable("PATH", folder + "/programs") {
  // JUCE tries one browser after another; this one comes first.
  std::error_code ignored;
  std::filesystem::create_directory(folder + "/programs", ignored);
  std::filesystem::create_symlink("/bin/true", folder + "/programs/xdg-open", ignored);
}

Sandbox::~Sandbox() {
  std::error_code ignored;
  std::filesystem::remove_all(folder, ignored);
}

}  // namespace sivray::check

#endif
