// The mark of functions that may run on the audio thread, and the two ways to exempt a call. A compiler that knows the
// mark checks that a marked function never allocates, waits, or calls a function that may; an unmarked function passes
// if the compiler sees its body and finds nothing of that kind in it. The RealtimeSanitizer build checks while it runs.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#if defined(__clang__) && defined(__has_cpp_attribute)
#if __has_cpp_attribute(clang::nonblocking)
#define SIVRAY_NONBLOCKING [[clang::nonblocking]]
#endif
#endif

#ifndef SIVRAY_NONBLOCKING
/// Goes behind the parameter list of a declaration: void process(...) SIVRAY_NONBLOCKING; Definitions elsewhere and
/// overriding functions inherit it.
#define SIVRAY_NONBLOCKING
#endif

#if defined(__has_feature)
#if __has_feature(realtime_sanitizer)
#define SIVRAY_REALTIME_SANITIZER 1
extern "C" void __rtsan_disable() SIVRAY_NONBLOCKING;  // NOLINT(bugprone-reserved-identifier): the sanitizer's own.
extern "C" void __rtsan_enable() SIVRAY_NONBLOCKING;   // NOLINT(bugprone-reserved-identifier)
#endif
#endif

// The two functions below are the only ones whose calls the compiler does not check.
#if defined(__clang__) && defined(__has_warning)
#if __has_warning("-Wfunction-effects")
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wfunction-effects"
#define SIVRAY_EFFECTS_PUSHED
#endif
#endif

namespace tesh::cofu::core {

/// Runs `call`, which is safe although the compiler cannot see it: a container that stays within its capacity, a
/// reference count that does not reach zero. The RealtimeSanitizer still checks it. Each use says why it is safe.
template <typename Call>
[[gnu::always_inline]] inline decltype(auto) vouchFor(Call&& call) SIVRAY_NONBLOCKING {
  return call();
}

/// Runs `call`, which may wait: for a lock that others hold for a few stores, for the main lock of a block, for a wave
/// to be read, for code of the host. The RealtimeSanitizer does not check it. Each use says which of these it is.
template <typename Call>
[[gnu::always_inline]] inline decltype(auto) mayWait(Call&& call) SIVRAY_NONBLOCKING {
#if defined(SIVRAY_REALTIME_SANITIZER)
  struct Pause {
    Pause() { __rtsan_disable(); }
    ~Pause() { __rtsan_enable(); }
  };
  const Pause pause;
#endif
  return call();
}

}  // namespace tesh::cofu::core

#if defined(SIVRAY_EFFECTS_PUSHED)
#pragma clang diagnostic pop
#undef SIVRAY_EFFECTS_PUSHED
#endif
