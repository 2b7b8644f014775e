// The panel in a host's window, for a form whose host may call from any of its threads: opened, closed and scaled as
// the host wishes, as soon as the message thread can.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <memory>

#include "host/editor/BramelInstrumentEditor.h"
#include "host/vst/VstRecords.h"

namespace tesh::bramel::vst {

class MessageThread;

/// Any thread of the host may call, one at a time; all that is shown happens on the message thread. A host may hold a
/// lock in these calls that the message thread waits for in a call to the host: none but the destructor waits for long.
/// Otherwise a call returns early and the work follows later.
class EditorSession {
 public:
  /// `editor` is not null.
  explicit EditorSession(std::shared_ptr<BramelInstrumentEditor> editor);

  /// Closes the panel, and waits until it is closed. Not on a message thread of our own.
  ~EditorSession();
  EditorSession(const EditorSession&) = delete;
  EditorSession& operator=(const EditorSession&) = delete;

  /// Shows the panel inside the host's window, in the system's own type. Nothing while it is open. Where no scale was
  /// set it takes that of the window.
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
  void* lastWindow = nullptr;             ///< Of the host, that the panel stood in.
  bool isScaleGiven = false;              ///< By the host.
  std::shared_ptr<Shown> shown;
};

}  // namespace tesh::bramel::vst
