// The type that factories of instruments return. The caller casts it to the instrument that it expects.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tesh::bramel::vst {

class BramelInstrumentBase {
 public:
  virtual ~BramelInstrumentBase() = default;
};

}  // namespace tesh::bramel::vst
