// A host's window on a real X server, as a host sees it: by a connection of its own.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

namespace editor {

struct WindowSize {
  int width = 0;
  int height = 0;
  bool operator==(const WindowSize&) const = default;
};

class HostWindow {
 public:
  /// Sees to it that there is an X server, and starts Xvfb if there is none. False where that cannot be started.
  static bool findServer();

  HostWindow();
  ~HostWindow();

  void* handle() const;
  void destroy();
  /// Of the editor's window inside this one; 0 by 0 while there is none.
  WindowSize childSize() const;
  bool doesChildTakeKeys() const;
  /// Gives the focus to a window of the host's own, as toolkits keep one beside the editor's.
  void focusOwnChild();
  bool hasFocus() const;
  bool hasOwnChildFocus() const;
  /// Over the editor, from wherever the pointer is.
  void movePointerTo(int x, int y);

 private:
  struct Connection;
  std::unique_ptr<Connection> connection;
};

}  // namespace editor
