// What a factory of instruments gives out: the caller casts it to the instrument that it knows.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tesh::bramel::vst {

class BramelInstrumentBase {
 public:
  virtual ~BramelInstrumentBase() = default;
};

}  // namespace tesh::bramel::vst
