// Spreads independent work over all cores.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstddef>
#include <thread>
#include <vector>

namespace sivray::content {

/// Calls a worker for each index below `count`, in no particular order. Every thread has a worker of its own, which
/// `makeWorker` returns, so that a worker may keep buffers. Nothing may throw.
template <typename MakeWorker>
void onAllCores(std::size_t count, MakeWorker makeWorker) {
  std::atomic<std::size_t> next{0};
  const auto work = [&] {
    auto worker = makeWorker();
    for (std::size_t i = next++; i < count; i = next++) {
      worker(i);
    }
  };
  std::vector<std::jthread> threads;
  for (unsigned i = 1; i < std::thread::hardware_concurrency(); ++i) {
    threads.emplace_back(work);
  }
  work();
}

}  // namespace sivray::content
