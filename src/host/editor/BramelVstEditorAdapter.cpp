// The editor's calls of the plug-in interface: size, open, close and keys.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/editor/BramelVstEditorAdapter.h"

#include <utility>

#include "host/vst/AudioEffectX.h"

namespace tesh::bramel::vst {

BramelVstEditorAdapter::BramelVstEditorAdapter(AudioEffect* owner, std::shared_ptr<BramelInstrumentEditor> editor)
    : AEffEditor(owner), session(std::move(editor)) {}

bool BramelVstEditorAdapter::getRect(ERect** rect) {
  if (rect == nullptr) {
    return false;
  }
  const auto size = session.size();
  rectangle.bottom = static_cast<std::int16_t>(size.height);
  rectangle.right = static_cast<std::int16_t>(size.width);
  *rect = &rectangle;
  return true;
}

bool BramelVstEditorAdapter::open(void* window) {
  if (!isOpen()) {
    AEffEditor::open(window);
    const float scale = session.scale();
    session.open(window);
    if (scale != session.scale()) {
      tellSize();
    }
  }
  return true;
}

void BramelVstEditorAdapter::close() {
  if (isOpen()) {
    AEffEditor::close();
    session.close();
  }
}

bool BramelVstEditorAdapter::onKeyDown(VstKeyCode& keyCode) { return isOpen() && session.keyDown(keyCode); }

bool BramelVstEditorAdapter::onKeyUp(VstKeyCode& keyCode) { return isOpen() && session.keyUp(keyCode); }

bool BramelVstEditorAdapter::setContentScale(float scale) {
  const bool isNew = scale != session.scale();
  if (!session.setScale(scale)) {
    return false;
  }
  if (isNew) {
    tellSize();
  }
  return true;
}

void BramelVstEditorAdapter::tellSize() {
  if (auto* const host = dynamic_cast<AudioEffectX*>(effect)) {
    const auto size = session.size();
    host->sizeWindow(size.width, size.height);
  }
}

}  // namespace tesh::bramel::vst
