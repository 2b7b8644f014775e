// Programs by the mouse: a kit, a long list, a folder that cannot be written, and a menu or a file dialog left open at
// close.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef __linux__

#include <filesystem>
#include <fstream>

#include "check/EditorScene.h"
#include "check/Process.h"
#include "storage/paths/Paths.h"
#include "storage/programs/UserProgramFile.h"
#include "views/PanelTable.h"

namespace sivray::check {
namespace {

using hosting::WindowPoint;

constexpr WindowPoint kProgramName{117, 92};
// On the program list.
constexpr WindowPoint kUserTab{415, 72};
constexpr WindowPoint kImport{311, 32};  ///< While the current program is the factory's.
constexpr WindowPoint kSaveAs{462, 32};  ///< On the factory's tab.
constexpr WindowPoint kSave{432, 32};    ///< On the page for the name, aside, as no double click reaches it.
constexpr WindowPoint kFirstRow{340, 110};
constexpr unsigned int kRight = 3;  ///< The button of the mouse.
constexpr hosting::WindowArea kRows{220, 100, 240, 320};
constexpr hosting::WindowArea kBesideList{100, 150, 90, 200};  ///< Where a file dialog lies, but the list does not.

/// A bank of alike programs.
struct Bank final : tesh::vimo::MacroProgramDatabaseDelegate {
  std::uint64_t macroCount() const override { return 133; }
  float macroValue(std::uint64_t /*index*/) const override { return 0.5F; }
  std::uint64_t macroObject(std::uint64_t /*index*/) const override { return 0; }
  const std::string& programName() const override { return name; }
  const std::string& programComment() const override { return comment; }
  std::uint32_t programTime() const override { return 0; }

  std::string name = "Long List";
  std::string comment;
};

void writeUserPrograms(int count) {
  using namespace tesh::bramel;
  const Bank bank;
  tesh::vimo::ProgramDatabase database(bank);
  database.setMacroCount(static_cast<std::size_t>(bank.macroCount()));
  for (int i = 0; i < count; ++i) {
    database.appendFromDelegate();
  }
  const auto file = tesh::vimo::makeUserProgramFile(database);
  writeFile(pathFor(kBramelPath_UserProgram, "Sivray"), file.data(), file.size());
}

/// Opens the editor with the mouse away from its controls, and returns its picture once that no longer changes.
std::uint64_t openPlain(EditorScene& scene) {
  scene.show();
  scene.render();
  scene.window.moveTo(kNowhere);
  return scene.settledPicture();
}

/// Clicks, and returns whether a part of the screen comes to look otherwise.
bool changes(EditorScene& scene, hosting::WindowArea area, WindowPoint point, unsigned int button = 1) {
  const std::uint64_t before = scene.window.picture(area);
  scene.click(point, button);
  return comesTrue([&] { return scene.window.picture(area) != before; });
}

Verdict longList(const CheckSettings& settings) {
  constexpr int kPrograms = 2000;
  constexpr double kMostMilliseconds = 100.0;
  const Sandbox sandbox;
  writeUserPrograms(kPrograms);
  const auto library = settings.load();
  EditorScene scene(*library);
  openPlain(scene);
  const double before = processSeconds();
  const bool isShown = changes(scene, kRows, kProgramName);
  const double milliseconds = 1000.0 * (processSeconds() - before);
  const bool hasTab = changes(scene, kRows, kUserTab);
  const std::vector<std::uint8_t> state = scene.host.chunk();
  scene.window.click(kFirstRow);
  const bool isChosen = comesTrue([&] {
    scene.render();
    return scene.host.chunk() != state;
  });
  return verdict(isShown && hasTab && isChosen && (isSanitized() || milliseconds <= kMostMilliseconds),
                 "%d user programs: the list opens in %.1f ms%s", kPrograms, milliseconds,
                 isChosen ? ", the first one chosen" : ", none could be chosen");
}

/// Save As while the documents folder cannot be created, because a file of that name exists. Works for any user.
Verdict unwritableFolder(const CheckSettings& settings) {
  const Sandbox sandbox;
  const std::string blocked = sandbox.documents() + "/blocked";
  std::ofstream(blocked) << "no folder";
  const ScopedVariable documents("BRAMEL_DOCUMENTS", blocked);
  const auto library = settings.load();
  EditorScene scene(*library);
  openPlain(scene);
  const std::uint64_t plain = scene.window.picture(kRows);
  const bool hasList = changes(scene, kRows, kProgramName);
  const bool hasPage = changes(scene, kRows, kSaveAs);
  const bool isSaved = changes(scene, kRows, kSave);
  scene.click(kNowhere);
  const bool isClosed = comesTrue([&] { return scene.window.picture(kRows) == plain; });
  const bool isHeard = playPlain(scene.host, 22050).isHeard();
  const bool untouched = std::filesystem::is_regular_file(blocked);
  return verdict(hasList && hasPage && isSaved && isClosed && isHeard && untouched,
                 "Save As into a folder that cannot be: the panel %s, the plug-in %s",
                 isClosed ? "goes on" : "is stuck", isHeard ? "plays" : "is silent");
}

/// Chooses a kit in the panel's list: the host must know all values and, in VST 3, show the kit in its own list.
Verdict kitOfThePanel(const CheckSettings& settings) {
  constexpr WindowPoint kAnotherRow{340, 190};
  const bool isLv2 = settings.form == hosting::Form::lv2;
  const Sandbox sandbox;
  const auto library = settings.load();
  const auto vst2 = settings.loadVst2();
  EditorScene scene(*library);
  openPlain(scene);
  const std::vector<std::uint8_t> before = scene.host.chunk();
  const int programBefore = scene.host.currentProgram();
  scene.click(kProgramName);
  scene.click(kAnotherRow);
  const bool isChosen = comesTrue([&] { return scene.host.chunk() != before; });
  const auto reader = vst2->makeInstance();
  reader->setChunk(scene.host.chunk());
  const bool isRead = comesTrue([&] {
    scene.render();
    scene.letSettle();
    bool isEqual = true;
    for (int index = 0; index < reader->parameterCount(); ++index) {
      isEqual = isEqual && scene.host.parameter(index) == reader->parameter(index);
    }
    return isEqual;
  });
  const bool isListed = isLv2 || comesTrue([&] {
                          scene.letSettle();
                          return scene.host.currentProgram() != programBefore;
                        });
  return verdict(isChosen && isRead && isListed, "a kit %s, its values %s, the host's list %s",
                 isChosen ? "chosen" : "not chosen", isRead ? "read" : "not read",
                 isListed ? "follows" : "does not follow");
}

/// The delete menu, in its own window, and the file dialog, inside the panel, are each open when the editor closes and
/// when the instance ends. The button that opened the menu is held until then, and later panels must react to clicks
/// nevertheless.
Verdict openAtClose(const CheckSettings& settings) {
  const Sandbox sandbox;
  writeUserPrograms(3);
  const auto library = settings.load();
  int opened = 0;
  int gone = 0;
  for (const bool isMenu : {true, false}) {
    for (const bool endsAtOnce : {false, true}) {
      EditorScene scene(*library);
      scene.window.release(kRight);  // As the scene before has left it.
      openPlain(scene);
      const bool isListed = changes(scene, kRows, kProgramName) && changes(scene, kRows, kUserTab);
      const int before = scene.window.otherWindows();
      if (isMenu) {
        scene.window.moveTo(kFirstRow);
        scene.window.press(kRight);
      }
      const bool isOpen = isMenu ? comesTrue([&] { return scene.window.otherWindows() > before; })
                                 : changes(scene, kBesideList, kImport);
      opened += isListed && isOpen ? 1 : 0;
      if (!endsAtOnce) {
        scene.close();
        scene.window.release(kRight);
        gone += comesTrue([&] { return scene.window.otherWindows() == before; }) ? 1 : 0;
        scene.show();
      }
    }
  }
  return verdict(opened == 4 && gone == 2, "menu and file dialog: %d of 4 opened, %d of 2 gone with the editor", opened,
                 gone);
}

}  // namespace

std::vector<Check> editorProgramChecks() {
  return {{"kit of the panel", kitOfThePanel, CheckedForms::others},
          {"long program list", longList},
          {"unwritable documents", unwritableFolder},
          {"menu and dialog at close", openAtClose}};
}

}  // namespace sivray::check

#endif
