// The threads on which a host renders blocks.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <thread>

#include "core/RealTime.h"

namespace tesh::bramel::vst {

/// Remembers who has rendered the latest blocks. Many hosts share them out among a few threads; one that renders to a
/// file may do so on the thread of its windows, which is forgotten after as many blocks as kRemembered says.
class AudioThreads {
 public:
  static constexpr std::uint32_t kRemembered = 1024;

  /// The calling thread renders a block. With the shell's main lock held.
  void note() SIVRAY_NONBLOCKING {
    const std::uint32_t block = blocks.load(std::memory_order_relaxed) + 1;
    const std::thread::id self = callingThread();
    const auto known = std::find_if(threads.begin(), threads.end(), [self](const Thread& thread) {
      return thread.id.load(std::memory_order_relaxed) == self;
    });
    Thread& thread = known != threads.end() ? *known : oldest(block);
    thread.lastBlock.store(block, std::memory_order_relaxed);
    thread.id.store(self, std::memory_order_relaxed);
    blocks.store(block, std::memory_order_relaxed);
  }

  /// Whether the calling thread has rendered one of the latest blocks. Any thread.
  bool include() const SIVRAY_NONBLOCKING {
    const std::uint32_t block = blocks.load(std::memory_order_relaxed);
    const std::thread::id self = callingThread();
    return std::any_of(threads.begin(), threads.end(), [block, self](const Thread& thread) {
      return thread.id.load(std::memory_order_relaxed) == self &&
             block - thread.lastBlock.load(std::memory_order_relaxed) < kRemembered;
    });
  }

 private:
  struct Thread {
    std::atomic<std::thread::id> id;
    std::atomic<std::uint32_t> lastBlock{0};
  };

  /// Waits for nothing: the C library stores the number in the thread's own memory.
  static std::thread::id callingThread() SIVRAY_NONBLOCKING {
    return cofu::core::vouchFor([] { return std::this_thread::get_id(); });
  }

  Thread& oldest(std::uint32_t block) {
    return *std::max_element(threads.begin(), threads.end(), [block](const Thread& a, const Thread& b) {
      return block - a.lastBlock.load(std::memory_order_relaxed) < block - b.lastBlock.load(std::memory_order_relaxed);
    });
  }

  std::array<Thread, 8> threads{};
  std::atomic<std::uint32_t> blocks{0};
};

}  // namespace tesh::bramel::vst
