// Interposes the C library's allocation, file and lock functions. A thread's calls are counted while a CallCounter
// lives on it.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/CallCounter.h"

#include "check/Check.h"

#if defined(__linux__) && defined(__GLIBC__)
#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/types.h>
#include <sys/uio.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <ctime>
#include <string_view>
#endif

namespace sivray::check {
namespace {

thread_local CallCounts* counting = nullptr;

}  // namespace

CallCounter::CallCounter(CallCounts& counts) { counting = &counts; }
CallCounter::~CallCounter() { counting = nullptr; }

}  // namespace sivray::check

#if defined(__linux__) && defined(__GLIBC__) && !SIVRAY_SANITIZED

// The linker's names for the ends of the section that holds the replaced functions.
extern "C" const char __start_sivray_taken[];  // NOLINT
extern "C" const char __stop_sivray_taken[];   // NOLINT

namespace sivray::check {
namespace {

ModuleRange countedModule;
ModuleRange thisProgram;

/// Looks for the innermost caller that is in the module or in this program, beyond the system's libraries.
bool comesFromModule(const void* caller) {
  constexpr int kDeepest = 48;
  std::array<void*, kDeepest> frames{};
  const int depth = backtrace(frames.data(), kDeepest);
  const auto end = frames.begin() + depth;
  for (auto frame = std::find(frames.begin(), end, caller); frame != end; ++frame) {
    if (countedModule.holds(*frame)) {
      return true;
    }
    if (thisProgram.holds(*frame)) {
      return false;
    }
  }
  return false;
}

/// `caller` is the return address of the replaced function.
void count(std::int64_t CallCounts::*field, const void* caller) {
  if (counting == nullptr) {
    return;
  }
  CallCounts* const counts = counting;
  counting = nullptr;  // Calls made for looking at the stack are not the library's.
  if (countedModule.to == 0 || field == &CallCounts::locks || comesFromModule(caller)) {
    ++(counts->*field);
  }
  counting = counts;
}

/// Returns the system's own version of a function that this file replaces.
template <typename Function>
Function* systems(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

bool CallCounter::works() { return true; }

ModuleRange CallCounter::replacements() {
  return {reinterpret_cast<std::uintptr_t>(__start_sivray_taken),
          reinterpret_cast<std::uintptr_t>(__stop_sivray_taken)};
}

CountedModule::CountedModule(const std::string& text) {
  std::array<void*, 1> warmed{};
  backtrace(warmed.data(), 1);  // The first call loads the unwinder.
  thisProgram = ModuleRange::of({});
  countedModule = ModuleRange::of(text);
}

CountedModule::~CountedModule() { countedModule = {}; }

}  // namespace sivray::check

#define SIVRAY_TAKEN extern "C" [[gnu::visibility("default"), gnu::section("sivray_taken")]]

// NOLINTBEGIN(bugprone-reserved-identifier,readability-redundant-declaration): the C library's own names.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);
}

using sivray::check::CallCounts;
using sivray::check::count;
using sivray::check::systems;

SIVRAY_TAKEN void* malloc(std::size_t size) {
  count(&CallCounts::allocations, __builtin_return_address(0));
  return __libc_malloc(size);
}

SIVRAY_TAKEN void* calloc(std::size_t number, std::size_t size) {
  count(&CallCounts::allocations, __builtin_return_address(0));
  return __libc_calloc(number, size);
}

SIVRAY_TAKEN void* realloc(void* block, std::size_t size) {
  count(&CallCounts::allocations, __builtin_return_address(0));
  return __libc_realloc(block, size);
}

SIVRAY_TAKEN void* memalign(std::size_t alignment, std::size_t size) {
  count(&CallCounts::allocations, __builtin_return_address(0));
  return __libc_memalign(alignment, size);
}

SIVRAY_TAKEN void* aligned_alloc(std::size_t alignment, std::size_t size) {
  count(&CallCounts::allocations, __builtin_return_address(0));
  return __libc_memalign(alignment, size);
}

SIVRAY_TAKEN int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
  count(&CallCounts::allocations, __builtin_return_address(0));
  *block = __libc_memalign(alignment, size);
  return *block == nullptr ? ENOMEM : 0;
}

SIVRAY_TAKEN void free(void* block) {
  if (block != nullptr) {
    count(&CallCounts::frees, __builtin_return_address(0));
  }
  __libc_free(block);
}

SIVRAY_TAKEN int open(const char* path, int flags, ...) {
  static const auto system = systems<int(const char*, int, ...)>("open");
  va_list arguments;
  va_start(arguments, flags);
  const int mode = (flags & O_CREAT) != 0 ? va_arg(arguments, int) : 0;
  va_end(arguments);
  count(&CallCounts::files, __builtin_return_address(0));
  return system(path, flags, mode);
}

SIVRAY_TAKEN int open64(const char* path, int flags, ...) {
  static const auto system = systems<int(const char*, int, ...)>("open64");
  va_list arguments;
  va_start(arguments, flags);
  const int mode = (flags & O_CREAT) != 0 ? va_arg(arguments, int) : 0;
  va_end(arguments);
  count(&CallCounts::files, __builtin_return_address(0));
  return system(path, flags, mode);
}

SIVRAY_TAKEN FILE* fopen(const char* path, const char* mode) {
  static const auto system = systems<FILE*(const char*, const char*)>("fopen");
  count(&CallCounts::files, __builtin_return_address(0));
  return system(path, mode);
}

SIVRAY_TAKEN FILE* fopen64(const char* path, const char* mode) {
  static const auto system = systems<FILE*(const char*, const char*)>("fopen64");
  count(&CallCounts::files, __builtin_return_address(0));
  return system(path, mode);
}

SIVRAY_TAKEN ssize_t read(int file, void* bytes, std::size_t size) {
  static const auto system = systems<ssize_t(int, void*, std::size_t)>("read");
  count(&CallCounts::files, __builtin_return_address(0));
  return system(file, bytes, size);
}

SIVRAY_TAKEN ssize_t write(int file, const void* bytes, std::size_t size) {
  using Write = ssize_t(int, const void*, std::size_t);
  // Kept without a guard, as below.
  static Write* system = nullptr;
  if (system == nullptr) {
    system = systems<Write>("write");
  }
  count(&CallCounts::writes, __builtin_return_address(0));
  return system(file, bytes, size);
}

SIVRAY_TAKEN ssize_t pread64(int file, void* bytes, std::size_t size, off64_t offset) {
  static const auto system = systems<ssize_t(int, void*, std::size_t, off64_t)>("pread64");
  count(&CallCounts::files, __builtin_return_address(0));
  return system(file, bytes, size, offset);
}

SIVRAY_TAKEN ssize_t pread(int file, void* bytes, std::size_t size, off_t offset) {
  static const auto system = systems<ssize_t(int, void*, std::size_t, off_t)>("pread");
  count(&CallCounts::files, __builtin_return_address(0));
  return system(file, bytes, size, offset);
}

SIVRAY_TAKEN ssize_t preadv2(int file, const iovec* pieces, int count, off_t offset, int flags) {
  static const auto system = systems<ssize_t(int, const iovec*, int, off_t, int)>("preadv2");
  sivray::check::count(&CallCounts::files, __builtin_return_address(0));
  return system(file, pieces, count, offset, flags);
}

SIVRAY_TAKEN int pthread_mutex_lock(pthread_mutex_t* mutex) noexcept {
  using Lock = int(pthread_mutex_t*);
  // A plain static: the guard of a function-local object would itself take a lock.
  static Lock* system = nullptr;
  if (system == nullptr) {
    system = systems<Lock>("pthread_mutex_lock");
  }
  if (sivray::check::counting == nullptr) {
    return system(mutex);
  }
  count(&CallCounts::locks, __builtin_return_address(0));
  if (pthread_mutex_trylock(mutex) == 0) {
    return 0;
  }
  count(&CallCounts::waits, __builtin_return_address(0));
  return system(mutex);
}

SIVRAY_TAKEN int nanosleep(const timespec* time, timespec* left) {
  static const auto system = systems<int(const timespec*, timespec*)>("nanosleep");
  count(&CallCounts::waits, __builtin_return_address(0));
  return system(time, left);
}

SIVRAY_TAKEN int clock_nanosleep(clockid_t clock, int flags, const timespec* time, timespec* left) {
  static const auto system = systems<int(clockid_t, int, const timespec*, timespec*)>("clock_nanosleep");
  count(&CallCounts::waits, __builtin_return_address(0));
  return system(clock, flags, time, left);
}
// NOLINTEND(bugprone-reserved-identifier,readability-redundant-declaration)

#else

namespace sivray::check {

bool CallCounter::works() { return false; }

ModuleRange CallCounter::replacements() { return {}; }

CountedModule::CountedModule(const std::string&) {}

CountedModule::~CountedModule() = default;

}  // namespace sivray::check

#endif
