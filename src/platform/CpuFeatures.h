// The processor's vector instructions, and the choice between kernels that are compiled for several sets.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>

namespace tesh::bramel::platform {

/// Instruction sets in ascending order; each includes those before it.
enum class VectorSet { baseline, sse41, avx2 };

/// The highest of these sets that this processor has. Any thread.
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

/// True if this processor can run code that is compiled for `set`.
inline bool supports(VectorSet set) { return set <= bestVectorSet(); }

/// The last of `kernels` whose member `needs` this processor supports. The kernels must be in ascending order of
/// `needs`, and the first must need only the baseline.
template <typename Kernel, std::size_t Count>
const Kernel& bestKernel(const std::array<Kernel, Count>& kernels) {
  std::size_t best = Count - 1;
  while (best > 0 && !supports(kernels[best].needs)) {
    --best;
  }
  return kernels[best];
}

}  // namespace tesh::bramel::platform
