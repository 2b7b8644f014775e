// The mark of operations that run on the audio thread, and the exemption for the few places where that thread may wait.
// Compilers that know the mark check that what bears it never allocates, waits or calls what may; the RealtimeSanitizer
// build watches while it runs.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#if defined(__clang__) && defined(__has_cpp_attribute)
#if __has_cpp_attribute(clang::nonblocking)
#define SIVRAY_NONBLOCKING [[clang::nonblocking]]
#endif
#endif

#ifndef SIVRAY_NONBLOCKING
/// Stands behind the parameter list: void process(...) SIVRAY_NONBLOCKING;
#define SIVRAY_NONBLOCKING
#endif

#if defined(__has_feature)
#if __has_feature(realtime_sanitizer)
#define SIVRAY_REALTIME_SANITIZER 1
extern "C" void __rtsan_disable();  // NOLINT(bugprone-reserved-identifier): the sanitizer's own interface.
extern "C" void __rtsan_enable();   // NOLINT(bugprone-reserved-identifier)
#endif
#endif

namespace tesh::cofu::core {

/// While one of these lives its thread may wait, and the RealtimeSanitizer says nothing. For a lock that others hold
/// for a few stores, for the main lock of a block, and for reading a wave: each use says which.
class MayWait {
 public:
  MayWait(const MayWait&) = delete;
  MayWait& operator=(const MayWait&) = delete;
#if defined(SIVRAY_REALTIME_SANITIZER)
  MayWait() { __rtsan_disable(); }
  ~MayWait() { __rtsan_enable(); }
#else
  MayWait() noexcept {}   // NOLINT(modernize-use-equals-default): a trivial one would count as an unused variable.
  ~MayWait() noexcept {}  // NOLINT(modernize-use-equals-default)
#endif
};

}  // namespace tesh::cofu::core
