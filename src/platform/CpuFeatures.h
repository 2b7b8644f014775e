// What this processor can do that not every one can, for kernels that are chosen at run time.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tesh::bramel::platform {

/// Instruction sets in ascending order; each holds those before it.
enum class VectorSet { baseline, sse41, avx2 };

/// The best set of this processor that our kernels know.
inline VectorSet bestVectorSet() {
#if defined(__x86_64__) || defined(__i386__)
  if (__builtin_cpu_supports("avx2")) {
    return VectorSet::avx2;
  }
  if (__builtin_cpu_supports("sse4.1")) {
    return VectorSet::sse41;
  }
#endif
  return VectorSet::baseline;
}

}  // namespace tesh::bramel::platform
