// The panel in a host's window, for forms whose host may call from any of its threads. The message thread opens, closes
// and scales the panel as soon as it can.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <memory>

#include "host/editor/BramelInstrumentEditor.h"
#include "host/vst/VstRecords.h"

namespace tesh::bramel::vst {

class MessageThread;

/// The host may call on any thread, one call at a time; the panel itself lives on the message thread. A host may call
/// with a lock held for which the message thread waits inside a call to the host. Therefore only the destructor waits
/// without a limit: other calls return after 0.5 s (close) or 5 s, and the work follows later.
class EditorSession {
 public:
  /// `editor` is not null.
  explicit EditorSession(std::shared_ptr<BramelInstrumentEditor> editor);

  /// Closes the panel, and waits until it is closed. Not on a message thread of our own.
  ~EditorSession();
  EditorSession(const EditorSession&) = delete;
  EditorSession& operator=(const EditorSession&) = delete;

  /// Shows the panel inside the host's window, a handle of the system's own type. Does nothing while it is open. Takes
  /// the window's scale if none was set.
  void open(void* window);
  void close();
  bool isOpen() const;

  /// Pixels of the screen that the panel takes, also while it is closed.
  BramelInstrumentEditor::Size size() const;

  /// The screen shows a pixel of the panel as `scale` pixels each way, 1 until the panel is open. False for a scale
  /// that no screen has.
  bool setScale(float scale);
  float scale() const;

  // Keys go to the text field that has the focus; false where there is none.

  bool keyDown(const VstKeyCode& keyCode);
  bool keyUp(const VstKeyCode& keyCode);

 private:
  struct Shown;

  void settle(std::chrono::milliseconds longest);
  template <typename Use>
  bool passOn(const VstKeyCode& keyCode, Use use);

  std::shared_ptr<BramelInstrumentEditor> editor;
  std::shared_ptr<MessageThread> thread;  ///< Null until the first opening.
  void* lastWindow = nullptr;             ///< The host's window that held the panel last.
  bool isScaleGiven = false;              ///< The host has set a scale.
  std::shared_ptr<Shown> shown;
};

}  // namespace tesh::bramel::vst
