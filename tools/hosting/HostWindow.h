// A host's window on a real X server, with a mouse and a keyboard of its own, as a host and its user see it: by a
// connection of its own.
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

/// The innermost window at the editor's top left corner: the editor's own, once it is there.
struct WindowView {
  unsigned long id = 0;  ///< 0 for none.
  int depth = 0;         ///< How many windows lie between it and the host's own, itself counted.
  bool operator==(const WindowView&) const = default;
};

/// 1600 by 960 pixels in the screen's top left corner, so that its points are the screen's too. One thread at a time.
class HostWindow {
 public:
  /// Whether there is an X server to play on. The first call starts Xvfb and lets DISPLAY name it for this process: a
  /// user's own pointer is never taken. Xvfb ends with this process. False where it is not installed, and on systems
  /// without X.
  static bool findServer();

  /// Makes the atoms that a window manager makes: a host built on JUCE opens no window without them. `findServer` must
  /// have given true.
  static void beWindowManager();

  /// `findServer` must have given true.
  HostWindow();
  ~HostWindow();
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;

  /// What a host hands to effEditOpen; null after `destroy`.
  void* handle() const;
  void destroy();

  /// Of the editor's window inside this one; 0 by 0 while there is none.
  WindowSize childSize() const;
  bool doesChildTakeKeys() const;
  bool hasFocus() const;
  /// Gives the focus to a window of the host's own, as toolkits keep one beside the editor's.
  void focusOwnChild();
  bool hasOwnChildFocus() const;

  /// Windows on the screen beside this one: menus and dialogs, which have their own.
  int otherWindows() const;

  /// The part of the screen that a panel takes.
  static constexpr WindowArea kWhole{0, 0, 768, 468};
  /// A number that differs when anything on that part of the screen differs.
  std::uint64_t picture(WindowArea area = kWhole) const;
  /// Whether a panel is there, by the number of colours: before, there are one or two.
  bool isPainted() const;

  WindowView view() const;
  /// Puts a mark on that window, if it is not the host's own, and asks for the place to be painted. The plug-in does so
  /// when it has taken all events that came before, and in one go with all that it has to paint by then.
  void mark();
  /// Until the place has been painted. False without a mark.
  bool isMarked() const;

  // Real events of the server's own mouse and keyboard.

  void moveTo(WindowPoint point);
  /// Buttons: 1 left, 2 middle, 3 right; 4 and 5 are the wheel.
  void press(unsigned int button = 1);
  void release(unsigned int button = 1);
  void click(WindowPoint point, unsigned int button = 1);
  /// Presses the left button at a point, moves in steps by `way`, and releases.
  void drag(WindowPoint point, WindowPoint way);
  /// Strikes the key of a keysym of X11, which is the character for Latin letters.
  void strike(unsigned long keysym);
  /// Lets such a key go down or come up.
  void setKey(unsigned long keysym, bool isDown);

 private:
  struct Connection;
  std::unique_ptr<Connection> connection;
};

}  // namespace sivray::hosting
