// The threads on which a host renders blocks.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <thread>

#include "core/RealTime.h"
#include "host/shell/MainLock.h"

namespace tesh::bramel::vst {

/// Remembers the threads that rendered the latest blocks; a host may use many. A host may also render a file on its
/// window thread, which is forgotten after kRemembered further blocks.
class AudioThreads {
 public:
  static constexpr std::uint32_t kRemembered = 1024;

  /// Notes that the calling thread renders a block.
  void note(const MainLock& /*lock*/) SIVRAY_NONBLOCKING {
    const std::uint32_t block = blocks.load(std::memory_order_relaxed) + 1;
    const Caller self;
    Thread* place = &placeAt(self.first);
    for (std::size_t step = 0; step < kReach && !place->is(self); ++step) {
      Thread& next = placeAt(self.first + step);
      place = next.is(self) || next.age(block) > place->age(block) ? &next : place;
    }
    place->lastBlock.store(block, std::memory_order_relaxed);
    place->id.store(self.id, std::memory_order_relaxed);
    blocks.store(block, std::memory_order_relaxed);
  }

  /// Whether the calling thread has rendered one of the latest blocks. Any thread.
  bool include() const SIVRAY_NONBLOCKING {
    const std::uint32_t block = blocks.load(std::memory_order_relaxed);
    const Caller self;
    for (std::size_t step = 0; step < kReach; ++step) {
      const Thread& place = threads[(self.first + step) % kPlaces];
      if (place.is(self)) {
        return place.age(block) < kRemembered;
      }
    }
    return false;
  }

 private:
  /// A thread is stored in one of the kReach places that follow its number's hash. A machine has far fewer such
  /// threads, so none displaces another.
  static constexpr std::size_t kPlaces = 512;
  static constexpr std::size_t kReach = 32;

  struct Caller {
    Caller() SIVRAY_NONBLOCKING {
      // Does not wait: the C library stores the number in the thread's own memory.
      cofu::core::vouchFor([this] {
        id = std::this_thread::get_id();
        // A thread's number is an address, whose lowest bits are always alike. The library's hash would take five times
        // as long.
        first = static_cast<std::size_t>(std::bit_cast<std::uintptr_t>(id) * 0x9E3779B97F4A7C15 >> 32);
      });
    }
    std::thread::id id;
    std::size_t first = 0;
  };

  struct Thread {
    bool is(const Caller& caller) const { return id.load(std::memory_order_relaxed) == caller.id; }
    /// Blocks since the thread's last one; for a place that was never taken, more than kRemembered.
    std::uint32_t age(std::uint32_t block) const { return block - lastBlock.load(std::memory_order_relaxed); }

    std::atomic<std::thread::id> id;
    std::atomic<std::uint32_t> lastBlock{0};
  };

  Thread& placeAt(std::size_t number) { return threads[number % kPlaces]; }

  std::array<Thread, kPlaces> threads{};
  std::atomic<std::uint32_t> blocks{kRemembered};
};

}  // namespace tesh::bramel::vst
