// Large zeroed memory, whose pages the system provides one by one when they are first written. Unused pages take
// neither memory nor time.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <type_traits>

namespace tesh::bramel::platform {

/// Takes zeroed pages from the system. Throws std::bad_alloc.
void* takePages(std::size_t byteCount);
/// Releases the result of takePages for the same number of bytes.
void returnPages(void* start, std::size_t byteCount);

/// Allocates a container's memory from the system, for containers that reserve far more than they usually fill. The C
/// library's allocator may reuse pages, all of which then take memory.
template <typename Element>
struct PageAllocator {
  using value_type = Element;

  PageAllocator() = default;
  template <typename Other>
  PageAllocator(const PageAllocator<Other>&) {}  // NOLINT(google-explicit-constructor): containers rebind allocators.

  Element* allocate(std::size_t count) { return static_cast<Element*>(takePages(count * sizeof(Element))); }
  void deallocate(Element* start, std::size_t count) { returnPages(start, count * sizeof(Element)); }

  friend bool operator==(const PageAllocator&, const PageAllocator&) { return true; }
};

/// A stretch of zeroed pages.
class ZeroedPages {
 public:
  /// Throws std::bad_alloc. With 0 bytes, `data` returns null.
  explicit ZeroedPages(std::size_t byteCount);
  ~ZeroedPages();
  ZeroedPages(ZeroedPages&& other) noexcept;
  ZeroedPages& operator=(ZeroedPages&& other) noexcept;

  void* data() const { return start; }

  /// Provides the pages of a stretch in one call, so that later writes need not enter the system for each page. Changes
  /// no byte. Any thread, also while others use the memory. On a system that cannot do this, pages are provided when
  /// they are written.
  void makePresent(std::size_t firstByte, std::size_t byteCount) const;

 private:
  void* start = nullptr;
  std::size_t size = 0;
};

/// An array of plain numbers or plain records on such pages.
template <typename Element>
class ZeroedArray {
  static_assert(std::is_trivially_copyable_v<Element>);

 public:
  ZeroedArray() : pages(0) {}
  /// Throws std::bad_alloc.
  explicit ZeroedArray(std::size_t elementCount) : pages(elementCount * sizeof(Element)), count(elementCount) {}

  Element* data() const { return static_cast<Element*>(pages.data()); }
  std::size_t size() const { return count; }
  bool empty() const { return count == 0; }

  /// See ZeroedPages; for elements instead of bytes.
  void makePresent(std::size_t first, std::size_t elementCount) const {
    pages.makePresent(first * sizeof(Element), elementCount * sizeof(Element));
  }

 private:
  ZeroedPages pages;
  std::size_t count = 0;
};

}  // namespace tesh::bramel::platform
