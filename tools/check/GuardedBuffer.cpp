// Pages from the operating system, with a protected page at each end of the samples.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/GuardedBuffer.h"

#include <new>

#ifdef _WIN32
#include <windows.h>
#else
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace sivray::check {
namespace {

#ifdef _WIN32
constexpr std::size_t kPage = 4096;

void* reserve(std::size_t bytes) { return VirtualAlloc(nullptr, bytes, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE); }

void forbid(void* page) {
  DWORD old = 0;
  VirtualProtect(page, kPage, PAGE_NOACCESS, &old);
}

void giveBack(void* pages, std::size_t) { VirtualFree(pages, 0, MEM_RELEASE); }
#else
const std::size_t kPage = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));

void* reserve(std::size_t bytes) {
  void* const pages = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  return pages == MAP_FAILED ? nullptr : pages;
}

void forbid(void* page) { mprotect(page, kPage, PROT_NONE); }

void giveBack(void* pages, std::size_t bytes) { munmap(pages, bytes); }
#endif

}  // namespace

GuardedBuffer::GuardedBuffer(std::size_t samples, GuardedEnd end) {
  const std::size_t inside = (samples * sizeof(float) + kPage - 1) / kPage * kPage;
  bytes = inside + 2 * kPage;
  pages = reserve(bytes);
  if (pages == nullptr) {
    throw std::bad_alloc();
  }
  char* const start = static_cast<char*>(pages);
  forbid(start);
  forbid(start + kPage + inside);
  const std::size_t offset = end == GuardedEnd::front ? kPage : kPage + inside - samples * sizeof(float);
  first = reinterpret_cast<float*>(start + offset);
}

GuardedBuffer::~GuardedBuffer() { giveBack(pages, bytes); }

}  // namespace sivray::check
