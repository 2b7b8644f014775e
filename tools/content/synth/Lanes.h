// Vectors of numbers in the processor's registers, for loops over several frames or modes at once. Each lane computes
// exactly like a single number, so samples have the same bits with any vector size.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstring>
#include <type_traits>

namespace sivray::content {

/// Two numbers fit into a register of every processor, four need AVX. Functions take and return vectors by reference,
/// because GCC warns of passing them by value without AVX.
using TwoLanes = double __attribute__((vector_size(2 * sizeof(double))));
using FourLanes = double __attribute__((vector_size(4 * sizeof(double))));

template <typename Lanes>
inline constexpr std::size_t kLanesOf = sizeof(Lanes) / sizeof(double);

template <typename Lanes>
void load(Lanes& to, const double* from) {
  std::memcpy(&to, from, sizeof to);
}

template <typename Lanes>
void store(double* to, const Lanes& from) {
  std::memcpy(to, &from, sizeof from);
}

#if defined(__linux__) && defined(__x86_64__)
template <typename Work>
[[gnu::target("avx2"), gnu::flatten]] void runInFourLanes(const Work& work) {
  work(std::type_identity<FourLanes>());
}
#endif

/// Calls `work` with the type identity of FourLanes if the processor has AVX2, else of TwoLanes. Functions of the same
/// file that `work` calls are compiled for both.
template <typename Work>
void runInLanes(const Work& work) {
#if defined(__linux__) && defined(__x86_64__)
  if (__builtin_cpu_supports("avx2")) {
    runInFourLanes(work);
    return;
  }
#endif
  work(std::type_identity<TwoLanes>());
}

}  // namespace sivray::content
