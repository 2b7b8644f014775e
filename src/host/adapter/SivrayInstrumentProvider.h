// Makes the drum module.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/adapter/BramelInstrumentProvider.h"

namespace tesh::bramel::vst {

class SivrayInstrumentProvider : public BramelInstrumentProvider {
 public:
  std::shared_ptr<BramelInstrumentBase> createInstrument() override;
  cofu::core::boxed::Box createViewModel(const std::shared_ptr<BramelInstrumentBase>& instrument) override;
  std::shared_ptr<BramelInstrumentEditor> createEditor(
      const std::shared_ptr<BramelInstrumentBase>& instrument) override;
};

}  // namespace tesh::bramel::vst
