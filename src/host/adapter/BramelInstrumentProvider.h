// The factory of one instrument of the family.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "host/shell/BramelInstrumentBase.h"

namespace tesh::bramel::vst {

class BramelInstrumentProvider {
 public:
  virtual ~BramelInstrumentProvider() = default;

  /// A complete instrument, ready for its adapter. Throws where the instrument's files are missing or wrong.
  virtual std::shared_ptr<BramelInstrumentBase> createInstrument() = 0;
};

}  // namespace tesh::bramel::vst
