// Large memory that starts as zeros and whose pages the system provides one by one, when they are first written. What
// an instance never uses takes no memory and no time.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <type_traits>

namespace tesh::bramel::platform {

/// Takes zeroed pages from the system. Throws std::bad_alloc.
void* takePages(std::size_t byteCount);
/// Gives back what takePages has returned for this number of bytes.
void returnPages(void* start, std::size_t byteCount);

/// Takes the memory of a container from the system, for one that reserves far more than it usually fills. The C
/// library's allocator may hand out pages that it has used before, all of which count.
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

  /// Provides the pages of a stretch in one call, so that whoever writes them later does not enter the system for each.
  /// Changes no byte; any thread, also while others use the memory. A system that cannot do this provides them later,
  /// as usual.
  void makePresent(std::size_t firstByte, std::size_t byteCount) const;

 private:
  void* start = nullptr;
  std::size_t size = 0;
};

/// An array on such pages, of plain numbers or records of such.
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
