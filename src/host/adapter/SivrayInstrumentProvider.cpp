// Puts the drum module together: the instrument and its editor.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/adapter/SivrayInstrumentProvider.h"

#include "host/adapter/EditorDoor.h"
#include "host/shell/BramelInstrument.h"
#include "host/shell/Construction.h"

namespace tesh::bramel::vst {

std::shared_ptr<BramelInstrumentBase> SivrayInstrumentProvider::createInstrument() { return makeInstrument(); }

cofu::core::boxed::Box SivrayInstrumentProvider::createViewModel(
    const std::shared_ptr<BramelInstrumentBase>& instrument) {
  const auto shell = std::dynamic_pointer_cast<BramelInstrument>(instrument);
  return shell == nullptr ? nullptr : makeInstrumentViewModel(shell);
}

std::shared_ptr<BramelInstrumentEditor> SivrayInstrumentProvider::createEditor(
    const std::shared_ptr<BramelInstrumentBase>& instrument) {
  const auto shell = std::dynamic_pointer_cast<BramelInstrument>(instrument);
  return shell == nullptr ? nullptr : makeInstrumentEditor(shell);
}

}  // namespace tesh::bramel::vst
