// Makes the panel of the drum module.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "views/BramelInstrumentEditorProvider.h"

namespace tesh::bramel::plugin::sivray {

class SivrayEditorProvider : public vst::BramelInstrumentEditorProvider {
 public:
  cofu::core::boxed::Box createViewModel(const std::shared_ptr<vst::BramelInstrumentBase>& instrument) override;
  vst::InstrumentEditorParts createEditor(const std::shared_ptr<vst::BramelInstrumentBase>& instrument,
                                          int imageScale) override;
};

}  // namespace tesh::bramel::plugin::sivray
