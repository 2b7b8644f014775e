// Replaces the C library's function that starts a thread, and records the caller.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/ThreadOwners.h"

#include "check/Check.h"

#if defined(__linux__) && defined(__GLIBC__) && !SIVRAY_SANITIZED

#include <dlfcn.h>
#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <mutex>

namespace sivray::check {
namespace {

using Routine = void* (*)(void*);

struct RunningThread {
  int number = 0;
  Routine routine = nullptr;
  void* argument = nullptr;
};

struct RunningThreads {
  std::mutex mutex;
  std::vector<RunningThread> all;
};

RunningThreads& running() {
  static auto* const threads = new RunningThreads;  // Threads may outlive the program's static objects.
  return *threads;
}

void* runListed(void* start) {
  RunningThread thread = *std::unique_ptr<RunningThread>(static_cast<RunningThread*>(start));
  thread.number = gettid();
  {
    const std::lock_guard lock(running().mutex);
    running().all.push_back(thread);
  }
  void* const result = thread.routine(thread.argument);
  const std::lock_guard lock(running().mutex);
  std::erase_if(running().all, [&](const RunningThread& other) { return other.number == thread.number; });
  return result;
}

/// std::thread starts all threads by a function of the C++ library, with an object whose class belongs to the caller.
bool isOf(const RunningThread& thread, const ModuleRange& module, const ModuleRange& standardLibrary) {
  const auto* const routine = reinterpret_cast<const void*>(thread.routine);
  return module.holds(routine) ||
         (standardLibrary.holds(routine) && module.holds(*static_cast<void* const*>(thread.argument)));
}

}  // namespace

std::vector<int> threadsOf(const ModuleRange& module) {
  const ModuleRange standardLibrary = ModuleRange::of("libstdc++");
  std::vector<int> found;
  const std::lock_guard lock(running().mutex);
  for (const RunningThread& thread : running().all) {
    if (isOf(thread, module, standardLibrary)) {
      found.push_back(thread.number);
    }
  }
  return found;
}

}  // namespace sivray::check

extern "C" [[gnu::visibility("default")]] int pthread_create(pthread_t* thread, const pthread_attr_t* attributes,
                                                             sivray::check::Routine routine, void* argument) {
  static auto* const systems = reinterpret_cast<decltype(&pthread_create)>(dlsym(RTLD_NEXT, "pthread_create"));
  auto start = std::make_unique<sivray::check::RunningThread>(sivray::check::RunningThread{0, routine, argument});
  const int result = systems(thread, attributes, &sivray::check::runListed, start.get());
  if (result == 0) {
    [[maybe_unused]] auto* const ownedByThread = start.release();
  }
  return result;
}

#else

namespace sivray::check {

std::vector<int> threadsOf(const ModuleRange& /*module*/) { return {}; }

}  // namespace sivray::check

#endif
