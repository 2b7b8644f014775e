// Process figures from Linux's /proc and from the Windows API.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/Process.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#ifdef _WIN32
#include <windows.h>
// Behind windows.h, which it needs.
#include <psapi.h>
#else
#include <malloc.h>
#include <unistd.h>

#include <ctime>
#include <filesystem>
#include <fstream>
#include <string_view>
#endif

namespace sivray::check {

void GrowthWatch::look() { uses.push_back(processUse()); }

const ProcessUse& GrowthWatch::warm() const { return uses[std::min<std::size_t>(kWarmCycles, uses.size()) - 1]; }

std::int64_t GrowthWatch::heapKiB() const { return uses.back().heapKiB - warm().heapKiB; }

template <typename Figure>
Figure GrowthWatch::grown(Figure ProcessUse::*figure) const {
  const auto cycles = std::min<std::ptrdiff_t>(kWarmCycles, std::ssize(uses));
  const auto less = [figure](const ProcessUse& a, const ProcessUse& b) { return a.*figure < b.*figure; };
  return (*std::min_element(uses.end() - cycles, uses.end(), less)).*figure -
         (*std::max_element(uses.begin(), uses.begin() + cycles, less)).*figure;
}

std::int64_t GrowthWatch::pagesKiB() const { return grown(&ProcessUse::ownKiB); }

int GrowthWatch::threads() const { return grown(&ProcessUse::threads); }

int GrowthWatch::files() const { return grown(&ProcessUse::files); }

#ifdef _WIN32

ProcessUse processUse() {
  ProcessUse use;
  PROCESS_MEMORY_COUNTERS counters{};
  if (GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters) != 0) {
    use.residentKiB = static_cast<std::int64_t>(counters.WorkingSetSize / 1024);
    use.ownKiB = static_cast<std::int64_t>(counters.PagefileUsage / 1024);
  }
  DWORD handles = 0;
  GetProcessHandleCount(GetCurrentProcess(), &handles);
  use.files = static_cast<int>(handles);
  return use;
}

double threadSeconds() {
  FILETIME made{}, ended{}, kernel{}, user{};
  GetThreadTimes(GetCurrentThread(), &made, &ended, &kernel, &user);
  const auto ticks = (static_cast<std::uint64_t>(user.dwHighDateTime) << 32) | user.dwLowDateTime;
  return static_cast<double>(ticks) * 1e-7;
}

double processSeconds() { return 0.0; }

std::vector<int> threadsOfProcess() { return {}; }

std::int64_t wakeUpsOf(const std::vector<int>&) { return 0; }

double secondsOf(const std::vector<int>&) { return 0.0; }

bool isMapped(const std::string&) { return false; }

#else

namespace {

double secondsOn(clockid_t clock) {
  timespec time{};
  return clock_gettime(clock, &time) == 0 ? static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec)
                                          : 0.0;
}

int entriesOf(const char* folder) {
  int count = 0;
  std::error_code error;
  for (auto entry = std::filesystem::directory_iterator(folder, error); entry != std::filesystem::directory_iterator();
       entry.increment(error)) {
    ++count;
  }
  return count;
}

}  // namespace

ProcessUse processUse() {
  ProcessUse use;
#ifdef __GLIBC__
  malloc_trim(0);
#endif
  std::ifstream statm("/proc/self/statm");
  std::int64_t pages = 0;
  std::int64_t sharedPages = 0;
  statm >> pages >> pages >> sharedPages;
  statm.close();
  const std::int64_t pageKiB = sysconf(_SC_PAGESIZE) / 1024;
  use.residentKiB = pages * pageKiB;
  use.ownKiB = (pages - sharedPages) * pageKiB;
#ifdef __GLIBC__
  const struct mallinfo2 heap = mallinfo2();
  use.heapKiB = static_cast<std::int64_t>((heap.uordblks + heap.hblkhd) / 1024);
#endif
  use.threads = entriesOf("/proc/self/task");
  use.files = entriesOf("/proc/self/fd");
  return use;
}

bool isMapped(const std::string& text) {
  std::ifstream maps("/proc/self/maps");
  const std::string all((std::istreambuf_iterator<char>(maps)), std::istreambuf_iterator<char>());
  return all.find(text) != std::string::npos;
}

double threadSeconds() { return secondsOn(CLOCK_THREAD_CPUTIME_ID); }

double processSeconds() { return secondsOn(CLOCK_PROCESS_CPUTIME_ID); }

std::vector<int> threadsOfProcess() {
  std::vector<int> threads;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/task")) {
    threads.push_back(std::stoi(entry.path().filename().string()));
  }
  std::sort(threads.begin(), threads.end());
  return threads;
}

std::int64_t wakeUpsOf(const std::vector<int>& threads) {
  constexpr std::string_view kSwitches = "voluntary_ctxt_switches:";
  std::int64_t wakeUps = 0;
  for (const int thread : threads) {
    std::ifstream status("/proc/self/task/" + std::to_string(thread) + "/status");
    for (std::string line; std::getline(status, line);) {
      wakeUps += line.starts_with(kSwitches) ? std::stoll(line.substr(kSwitches.size())) : 0;
    }
  }
  return wakeUps;
}

double secondsOf(const std::vector<int>& threads) {
  constexpr unsigned int kOfOneThread = 6;  // The kernel's encoding of a thread's processor time, beside its number.
  double seconds = 0.0;
  for (const int thread : threads) {
    seconds += secondsOn(static_cast<clockid_t>((~static_cast<unsigned int>(thread) << 3U) | kOfOneThread));
  }
  return seconds;
}

#endif

}  // namespace sivray::check
