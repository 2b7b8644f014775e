// The output loop for every processor.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/OutputStage.h"

namespace tesh::bramel::plugin::sivray {

#include "engine/OutputKernel.inl"

OutputKernel baselineOutputKernel() { return renderOutput; }

}  // namespace tesh::bramel::plugin::sivray
