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
  std::int64_t ownKiB = 0;   ///< Without pages of mapped files, which the system's cache brings and drops.
  std::int64_t heapKiB = 0;  ///< Memory that the allocator has handed out; 0 if it does not tell.
  int threads = 0;
  int files = 0;
};

ProcessUse processUse();

/// Detects resources that repeated cycles leave behind, from the end of the tenth cycle on. Except for the heap, a
/// growth counts only if each of the last ten cycles has more than each of the first ten: the allocator takes and
/// returns pages depending on its free blocks, up to a MiB in either direction; a thread may start and open its files
/// after the measurement; and a joined thread is counted until the system has cleaned up.
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
  /// The minimum of the last ten cycles less the maximum of the first ten.
  template <typename Figure>
  Figure grown(Figure ProcessUse::*figure) const;

  std::vector<ProcessUse> uses;
};

/// Whether a file with this text in its path is mapped into this process, as libraries are. False on Windows.
bool isMapped(const std::string& text);

/// Returns the CPU seconds of the calling thread.
double threadSeconds();

/// CPU seconds of all threads of this process, ended ones included.
double processSeconds();

/// The system's numbers of this process's threads, in rising order; empty on Windows.
std::vector<int> threadsOfProcess();

/// How often these threads have woken from waiting, in total. An ended thread counts as 0. 0 on Windows.
std::int64_t wakeUpsOf(const std::vector<int>& threads);

/// CPU seconds of these threads in total. An ended thread counts as 0.
double secondsOf(const std::vector<int>& threads);

}  // namespace sivray::check
