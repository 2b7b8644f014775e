// A host's window on a real X server, with its own connection and with a simulated mouse and keyboard.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>

#include "hosting/HostedPlugin.h"

namespace sivray::hosting {

struct WindowPoint {
  int x = 0;
  int y = 0;
};

/// A part of the screen, in pixels.
struct WindowArea {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};

/// The innermost window at the editor's top left corner; the editor's own once it exists.
struct WindowView {
  unsigned long id = 0;  ///< 0 for none.
  int depth = 0;         ///< Number of windows from the host's own, not counted, down to it.
  bool operator==(const WindowView&) const = default;
};

/// A window of 1600 by 960 pixels in the screen's top left corner, so that its coordinates are those of the screen. Not
/// thread-safe.
class HostWindow {
 public:
  /// Returns whether an X server is available. The first call starts Xvfb and sets DISPLAY for this process, so that
  /// the user's own pointer is never moved. Xvfb ends with this process. False where it is not installed, and on
  /// systems without X.
  static bool findServer();

  /// Creates the atoms that a window manager creates, without which a host built on JUCE opens no window. Requires that
  /// `findServer` has returned true.
  static void beWindowManager();

  /// Requires that `findServer` has returned true.
  HostWindow();
  ~HostWindow();
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;

  /// The window that a host passes to effEditOpen; null after `destroy`.
  void* handle() const;
  void destroy();

  /// Returns the size of the editor's window inside this one; 0 by 0 while there is none.
  WindowSize childSize() const;
  bool doesChildTakeKeys() const;
  bool hasFocus() const;
  /// Gives the focus to another child window, such as toolkits keep beside the editor.
  void focusOwnChild();
  bool hasOwnChildFocus() const;

  /// Returns the number of other windows on the screen, which are menus and dialogs.
  int otherWindows() const;

  /// The area of the screen that a panel covers.
  static constexpr WindowArea kWhole{0, 0, 768, 468};
  /// Returns a hash of the pixels in that area.
  std::uint64_t picture(WindowArea area = kWhole) const;
  /// Whether the panel is painted, judged by the number of colours: before, there are one or two.
  bool isPainted() const;

  WindowView view() const;
  /// Paints a mark on the innermost window, unless that is the host's own, and requests a repaint there. The plug-in
  /// repaints it after all earlier events, together with everything that it has to paint by then.
  void mark();
  /// Whether the mark has not been painted over yet. False without a mark.
  bool isMarked() const;

  // Real events of the X server's mouse and keyboard.

  void moveTo(WindowPoint point);
  /// Buttons: 1 left, 2 middle, 3 right; 4 and 5 are the wheel.
  void press(unsigned int button = 1);
  void release(unsigned int button = 1);
  void click(WindowPoint point, unsigned int button = 1);
  /// Presses the left button at a point, moves in steps by `way`, and releases.
  void drag(WindowPoint point, WindowPoint way);
  /// Presses and releases the key of an X11 keysym; for Latin letters that is the character.
  void strike(unsigned long keysym);
  /// Presses or releases that key.
  void setKey(unsigned long keysym, bool isDown);

 private:
  struct Connection;
  std::unique_ptr<Connection> connection;
};

}  // namespace sivray::hosting
