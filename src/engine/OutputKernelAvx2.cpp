// The output loop for AVX2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/OutputStage.h"

// Only what is defined between these marks is compiled for AVX2: shared inline functions must run everywhere.
#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx2"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx2")
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

OutputKernel avx2OutputKernel() { return renderOutput; }

}  // namespace tesh::bramel::plugin::sivray
