// The output loop for SSE4.1.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/OutputStage.h"

// Only what is defined between these marks is compiled for SSE4.1: shared inline functions must run everywhere.
#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("sse4.1"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("sse4.1")
#endif

namespace tesh::bramel::plugin::sivray {

#include "engine/OutputKernel.inl"

}  // namespace tesh::bramel::plugin::sivray

#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif

namespace tesh::bramel::plugin::sivray {

OutputKernel sse41OutputKernel() { return renderOutput; }

}  // namespace tesh::bramel::plugin::sivray
