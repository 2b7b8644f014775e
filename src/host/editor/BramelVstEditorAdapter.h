// The editor as a host of this plug-in interface sees it: it opens in the host's window and takes the keys that the
// host passes on.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <memory>

#include "host/editor/BramelInstrumentEditor.h"
#include "host/vst/AEffEditor.h"

namespace tesh::bramel::vst {

class MessageThread;

/// Any thread of the host may call, one at a time; all that is shown happens on the message thread. A host may hold a
/// lock in these calls that the message thread waits for in a call to the host: none but the destructor waits for long.
/// What has not happened by then happens as soon as it can.
class BramelVstEditorAdapter final : public AEffEditor {
 public:
  /// `owner` outlives this object; `editor` is not null.
  BramelVstEditorAdapter(AudioEffect* owner, std::shared_ptr<BramelInstrumentEditor> editor);

  /// Closes the editor, and waits until it is closed. Not on a message thread of our own.
  ~BramelVstEditorAdapter() override;

  /// 768 by 468 pixels of the panel at the scale of the screen, also while closed.
  bool getRect(ERect** rect) override;

  bool open(void* window) override;
  void close() override;

  // Keys go to the text field that has the focus; false where there is none.

  bool onKeyDown(VstKeyCode& keyCode) override;
  bool onKeyUp(VstKeyCode& keyCode) override;

  /// The screen shows a pixel of the panel as `scale` pixels each way. False for a scale that no screen has. Tells the
  /// host the new size.
  bool setContentScale(float scale) override;

 private:
  struct Shown;

  void settle(std::chrono::milliseconds longest);
  template <typename Use>
  bool passOn(const VstKeyCode& keyCode, Use use);

  std::shared_ptr<BramelInstrumentEditor> editor;
  std::shared_ptr<MessageThread> thread;  ///< Null until the first opening.
  void* lastWindow = nullptr;             ///< Of the host, that an editor stood in.
  std::shared_ptr<Shown> shown;
  ERect rectangle{};
};

}  // namespace tesh::bramel::vst
