// The factory of one instrument of the family, and of its editor.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "core/Boxed.h"
#include "host/shell/BramelInstrumentBase.h"

namespace tesh::bramel::vst {

class BramelInstrumentEditor;

class BramelInstrumentProvider {
 public:
  virtual ~BramelInstrumentProvider() = default;

  /// A complete instrument, ready for its adapter. Throws where the instrument's files are missing or wrong.
  virtual std::shared_ptr<BramelInstrumentBase> createInstrument() = 0;

  /// Reserved; null.
  virtual std::shared_ptr<void> createReserved() { return nullptr; }

  /// The boxed view model of an instrument without a view, as makeInstrumentViewModel gives it; null where there is
  /// none.
  virtual cofu::core::boxed::Box createViewModel(const std::shared_ptr<BramelInstrumentBase>& instrument) = 0;

  /// The editor of an instrument; null where there is none.
  virtual std::shared_ptr<BramelInstrumentEditor> createEditor(
      const std::shared_ptr<BramelInstrumentBase>& instrument) = 0;
};

}  // namespace tesh::bramel::vst
