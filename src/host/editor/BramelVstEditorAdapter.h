// The editor as a host of this plug-in interface sees it: it opens in the host's window and takes the keys that the
// host passes on.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "host/editor/EditorSession.h"
#include "host/vst/AEffEditor.h"

namespace tesh::bramel::vst {

/// Which threads may call, and how long a call waits, EditorSession says.
class BramelVstEditorAdapter final : public AEffEditor {
 public:
  /// `owner` outlives this object; `editor` is not null.
  BramelVstEditorAdapter(AudioEffect* owner, std::shared_ptr<BramelInstrumentEditor> editor);

  /// 768 by 468 pixels of the panel at the scale of the screen, also while closed.
  bool getRect(ERect** rect) override;

  /// Tells the host the new size if the scale of its window makes one.
  bool open(void* window) override;
  void close() override;

  // Keys go to the text field that has the focus; false where there is none.

  bool onKeyDown(VstKeyCode& keyCode) override;
  bool onKeyUp(VstKeyCode& keyCode) override;

  /// The screen shows a pixel of the panel as `scale` pixels each way. False for a scale that no screen has. Tells the
  /// host the new size.
  bool setContentScale(float scale) override;

 private:
  void tellSize();

  EditorSession session;
  ERect rectangle{};
};

}  // namespace tesh::bramel::vst
