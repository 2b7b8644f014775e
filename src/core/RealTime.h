// The mark of operations that run on the audio thread, and the two ways out of it. Compilers that know the mark check
// that what bears it never allocates, waits or calls what may; they look into unmarked functions that they can see. The
// RealtimeSanitizer build watches while it runs.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#if defined(__clang__) && defined(__has_cpp_attribute)
#if __has_cpp_attribute(clang::nonblocking)
#define SIVRAY_NONBLOCKING [[clang::nonblocking]]
#endif
#endif

#ifndef SIVRAY_NONBLOCKING
/// Stands behind the parameter list of a declaration: void process(...) SIVRAY_NONBLOCKING; Definitions elsewhere and
/// overriding functions take it over.
#define SIVRAY_NONBLOCKING
#endif

#if defined(__has_feature)
#if __has_feature(realtime_sanitizer)
#define SIVRAY_REALTIME_SANITIZER 1
extern "C" void __rtsan_disable() SIVRAY_NONBLOCKING;  // NOLINT(bugprone-reserved-identifier): the sanitizer's own.
extern "C" void __rtsan_enable() SIVRAY_NONBLOCKING;   // NOLINT(bugprone-reserved-identifier)
#endif
#endif

// Here alone the compiler does not look into what marked functions call.
#if defined(__clang__) && defined(__has_warning)
#if __has_warning("-Wfunction-effects")
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wfunction-effects"
#define SIVRAY_EFFECTS_PUSHED
#endif
#endif

namespace tesh::cofu::core {

/// Runs `call`, of which the compiler cannot see that it keeps the rule: a container within its capacity, a
/// count of owners that does not reach zero. The RealtimeSanitizer goes on watching. Each use says why it is safe.
template <typename Call>
[[gnu::always_inline]] inline decltype(auto) vouchFor(Call&& call) SIVRAY_NONBLOCKING {
  return call();
}

/// Runs `call`, which may wait: a lock that others hold for a few stores, the main lock of a block, the reading of a
/// wave, code of the host. The RealtimeSanitizer looks away. Each use says which.
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
