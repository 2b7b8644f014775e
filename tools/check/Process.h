// This process's memory, threads and open files, and the CPU time of a thread.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace sivray::check {

struct ProcessUse {
  std::int64_t residentKiB = 0;
  std::int64_t ownKiB = 0;   ///< Without the pages of mapped files, which come and go with the system's cache.
  std::int64_t heapKiB = 0;  ///< What the allocator has handed out; 0 where it does not tell.
  int threads = 0;
  int files = 0;
};

ProcessUse processUse();

/// What repeated cycles leave behind, from the end of the tenth on. All but the heap counts only if the last ten cycles
/// all have more than each of the first ten: the allocator takes and returns pages by where its free blocks happen to
/// lie, up to a MiB in either direction; a thread may start and open its files after the look, and one that has been
/// waited for is counted until the system has cleaned up behind it.
class GrowthWatch {
 public:
  static constexpr int kWarmCycles = 10;

  /// Must be called in each cycle, at the same point.
  void look();

  std::int64_t heapKiB() const;
  std::int64_t pagesKiB() const;
  int threads() const;
  int files() const;

 private:
  const ProcessUse& warm() const;
  /// The least of the last ten cycles over the most of the first ten.
  template <typename Figure>
  Figure grown(Figure ProcessUse::*figure) const;

  std::vector<ProcessUse> uses;
};

/// Whether a file with this text in its path is mapped into this process, as libraries are. False on Windows.
bool isMapped(const std::string& text);

/// Returns the CPU seconds that the calling thread has used.
double threadSeconds();

/// Seconds that all threads of this process have run, those that have ended included.
double processSeconds();

/// The system's numbers of this process's threads, in rising order; empty on Windows.
std::vector<int> threadsOfProcess();

/// How often some threads have woken from waiting, together. One that has ended counts as 0; 0 on Windows.
std::int64_t wakeUpsOf(const std::vector<int>& threads);

/// Seconds that some threads have run together. One that has ended counts as 0.
double secondsOf(const std::vector<int>& threads);

}  // namespace sivray::check
