// Stands in for the editor in builds without one: the host is told that the plug-in has no window.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/adapter/EditorDoor.h"

namespace tesh::bramel::vst {

std::shared_ptr<BramelInstrumentEditor> makeInstrumentEditor(const std::shared_ptr<BramelInstrument>& /*instrument*/) {
  return nullptr;
}

cofu::core::boxed::Box makeInstrumentViewModel(const std::shared_ptr<BramelInstrument>& /*instrument*/) {
  return nullptr;
}

std::unique_ptr<AEffEditor> makeVstEditor(AudioEffect& /*effect*/, std::shared_ptr<BramelInstrumentEditor> editor) {
  editor.reset();
  return nullptr;
}

}  // namespace tesh::bramel::vst
