// The processor's vector instructions, the choice between kernels for several instruction sets, and a limit to it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>

namespace tesh::bramel::platform {

/// Instruction sets in ascending order; each includes those before it.
enum class VectorSet { none, baseline, sse41, avx2 };

/// The widest set that `bestVectorSet` may return. VectorLimit sets it.
inline std::atomic<VectorSet> widestVectorSet{VectorSet::avx2};

/// While it exists, new objects use no wider instructions than `widest`: effects, voices, output stage and resampler.
/// With VectorSet::none effects compute sample by sample, and everything else uses the baseline. For tests and
/// benchmarks.
class VectorLimit {
 public:
  explicit VectorLimit(VectorSet widest) : before(widestVectorSet.exchange(widest)) {}
  VectorLimit(const VectorLimit&) = delete;
  VectorLimit& operator=(const VectorLimit&) = delete;
  ~VectorLimit() { widestVectorSet = before; }

 private:
  VectorSet before;
};

/// The highest of these sets that this processor has. Any thread.
inline VectorSet processorVectorSet() {
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

/// The processor's best set within the limit. Any thread.
inline VectorSet bestVectorSet() { return std::min(processorVectorSet(), widestVectorSet.load()); }

/// Whether this processor can run code compiled for `set`, and the limit allows it.
inline bool supports(VectorSet set) { return set <= bestVectorSet(); }

/// The last of `kernels` whose `needs` is supported. The kernels must be in ascending order of `needs`, and the first
/// must need only the baseline.
template <typename Kernel, std::size_t Count>
const Kernel& bestKernel(const std::array<Kernel, Count>& kernels) {
  std::size_t best = Count - 1;
  while (best > 0 && !supports(kernels[best].needs)) {
    --best;
  }
  return kernels[best];
}

}  // namespace tesh::bramel::platform
