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

  /// Makes a complete instrument, ready for its adapter. Throws std::runtime_error if its files are missing or broken.
  virtual std::shared_ptr<BramelInstrumentBase> createInstrument() = 0;

  /// Reserved; null.
  virtual std::shared_ptr<void> createReserved() { return nullptr; }

  /// Makes a view model without a view, boxed as makeInstrumentViewModel says; null in a build without an editor.
  virtual cofu::core::boxed::Box createViewModel(const std::shared_ptr<BramelInstrumentBase>& instrument) = 0;

  /// Makes the editor of an instrument; null in a build without an editor.
  virtual std::shared_ptr<BramelInstrumentEditor> createEditor(
      const std::shared_ptr<BramelInstrumentBase>& instrument) = 0;
};

}  // namespace tesh::bramel::vst
