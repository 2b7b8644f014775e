// An instance of the plug-in with its panel in a host's window on a real X server, and what a user does there.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "check/Check.h"
#include "check/Scene.h"
#include "hosting/HostWindow.h"
#include "hosting/HostedPlugin.h"

namespace sivray::check {

inline constexpr hosting::WindowSize kPanelSize{768, 468};
/// Beside every control, and outside the box of every pop-up.
inline constexpr hosting::WindowPoint kNowhere{4, 464};

/// The checks of the editor by what they protect. Only where HostWindow::findServer gives true.
std::vector<Check> editorLifeChecks();
std::vector<Check> editorRealTimeChecks();
std::vector<Check> editorMouseChecks();
std::vector<Check> editorProgramChecks();
std::vector<Check> editorResourceChecks();

/// Waits for what another thread brings about, 30 s at most and 100 s under a sanitizer: it takes milliseconds, unless
/// other programs have the cores. Whether it came true.
bool comesTrue(const std::function<bool()>& condition);

class EditorScene {
  std::unique_ptr<hosting::HostedPlugin> instance;

 public:
  explicit EditorScene(const hosting::PluginFile& file) : instance(file.makeInstance()) {}
  ~EditorScene() { host.leaveWindow(); }
  EditorScene(const EditorScene&) = delete;
  EditorScene& operator=(const EditorScene&) = delete;

  void open() { host.openEditor(window.handle()); }
  void close() { host.closeEditor(); }
  /// Opens, and waits until the panel is there and painted: clicks before would go to the host's window.
  void show();
  /// Waits until a panel that `show` has shown has another view in its place.
  void awaitNewView();

  /// Renders a block of silence or of what sounds, without an event.
  void render(int frames = kPlainBlock);

  /// Waits until the message thread has nothing more to do for what the host and the user did, and has painted what
  /// came of it.
  void letSettle();
  /// The picture of the panel once it no longer changes.
  std::uint64_t settledPicture();
  /// As a user who looks whether the click has done something before going on.
  void click(hosting::WindowPoint point, unsigned int button = 1);
  /// Clicks on the control that shows a page: 0 sound, 1 character, 2 mix.
  void showPage(std::size_t page);

  /// The calls to the host since the last time, after all that was done has had its effect.
  std::vector<hosting::HostCall> settledCalls();

  hosting::HostedPlugin& host = *instance;
  hosting::HostWindow window;

 private:
  void awaitPainting();

  hosting::WindowView shown;
  std::vector<float> left = std::vector<float>(kLongestBlock);
  std::vector<float> right = std::vector<float>(kLongestBlock);
  static constexpr std::size_t kLongestBlock = 16384;
};

/// An environment variable of this process that has another value for as long as this object lives.
class ScopedVariable {
 public:
  ScopedVariable(const char* name, const std::string& value);
  ~ScopedVariable();
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;

 private:
  const char* name;
  bool wasSet;
  std::string before;
};

/// Keeps clicks away from the user's files and programs. Holds a documents folder of its own, and removes it at the
/// end. Puts a browser that shows nothing in the place of the user's, and hides programs that open pages or file
/// dialogs.
class Sandbox {
 public:
  Sandbox();
  ~Sandbox();
  Sandbox(const Sandbox&) = delete;
  Sandbox& operator=(const Sandbox&) = delete;

  const std::string& documents() const { return folder; }

 private:
  std::string folder;
  ScopedVariable documentsVariable;
  ScopedVariable pathVariable;
};

}  // namespace sivray::check
