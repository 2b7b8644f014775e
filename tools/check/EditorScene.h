// An instance of the plug-in with its panel in a host's window on a real X server, and a user's actions there.
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
/// A point outside every control and every pop-up's box.
inline constexpr hosting::WindowPoint kNowhere{4, 464};

/// The checks of the editor by subject. Only if HostWindow::findServer returns true.
std::vector<Check> editorLifeChecks();
std::vector<Check> editorRealTimeChecks();
std::vector<Check> editorMouseChecks();
std::vector<Check> editorProgramChecks();
std::vector<Check> editorResourceChecks();

/// Waits for the result of another thread, at most 30 s, under a sanitizer 100 s. It usually takes milliseconds, unless
/// other programs use the cores. Returns whether the condition became true.
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
  /// Opens the panel and waits until it has been painted: earlier clicks would go to the host's window.
  void show();
  /// After `show`, waits until the panel has replaced its view.
  void awaitNewView();

  /// Renders a block without events.
  void render(int frames = kPlainBlock);

  /// Waits until the message thread has handled everything that host and user did, and has painted the result.
  void letSettle();
  /// The picture of the panel once it no longer changes.
  std::uint64_t settledPicture();
  /// Clicks like a user who waits for the effect of one click before the next.
  void click(hosting::WindowPoint point, unsigned int button = 1);
  /// Clicks on the control that shows a page: 0 sound, 1 character, 2 mix.
  void showPage(std::size_t page);

  /// The calls to the host since the last time, including the effects of everything done so far.
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

/// Sets an environment variable of this process for as long as this object lives.
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

/// Protects the user's files and programs from the clicks: sets a temporary documents folder, which it removes at the
/// end, a browser that shows nothing, and hides programs that open pages or file dialogs.
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
