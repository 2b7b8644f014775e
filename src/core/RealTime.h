// The mark of functions that may run on the audio thread, and two ways to exempt a call. A compiler that knows the mark
// checks that a marked function neither allocates nor waits, nor calls a function that may. An unmarked function passes
// if the compiler sees its body and finds none of these in it. The RealtimeSanitizer's build checks at run time.
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

/// Runs `call`, which is safe although the compiler cannot see why: for example a container that stays within its
/// capacity, or a reference count that does not reach zero. The RealtimeSanitizer still checks it. Each use states the
/// reason.
template <typename Call>
[[gnu::always_inline]] inline decltype(auto) vouchFor(Call&& call) SIVRAY_NONBLOCKING {
  return call();
}

/// Runs `call`, which may wait: for a lock that others hold for a few stores, for a block's main lock, for a wave to be
/// read, or for the host's code. The RealtimeSanitizer does not check it. Each use states which of these it is.
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
