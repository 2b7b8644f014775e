// What the plug-in adapter asks of the editor: this instrument's panel, in the host's window.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <utility>

#include "host/adapter/EditorDoor.h"
#include "host/editor/BramelInstrumentEditor.h"
#include "host/editor/BramelVstEditorAdapter.h"
#include "views/SivrayEditorProvider.h"

namespace tesh::bramel::vst {

using plugin::sivray::SivrayEditorProvider;

std::shared_ptr<BramelInstrumentEditor> makeInstrumentEditor(const std::shared_ptr<BramelInstrument>& instrument) {
  auto editor = std::make_shared<BramelInstrumentEditor>(instrument, std::make_shared<SivrayEditorProvider>(),
                                                         MessageThread::Kind::own);
  instrument->setUICallback(editor);
  return editor;
}

cofu::core::boxed::Box makeInstrumentViewModel(const std::shared_ptr<BramelInstrument>& instrument) {
  return SivrayEditorProvider().createViewModel(instrument);
}

std::unique_ptr<AEffEditor> makeVstEditor(AudioEffect& effect, std::shared_ptr<BramelInstrumentEditor> editor) {
  return std::make_unique<BramelVstEditorAdapter>(&effect, std::move(editor));
}

}  // namespace tesh::bramel::vst
