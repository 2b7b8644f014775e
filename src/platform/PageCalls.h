// The system's operations on memory pages, for ZeroedPages and AddressRange.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

namespace tesh::bramel::platform {

std::uintptr_t pageSize();

/// Zeroed memory, provided page by page when it is first written. Null if the system refuses.
void* newPages(std::size_t bytes);
/// Reserves addresses without memory. Null if the system refuses.
void* newAddresses(std::size_t bytes);
/// Releases the result of newPages or newAddresses.
void freePages(void* start, std::size_t bytes);

/// Make whole pages of reserved addresses usable, and take their memory away again.
bool openPages(void* start, std::size_t bytes);
void closePages(void* start, std::size_t bytes);

/// Provides the pages from the address `first` to `end`, if the system can.
void touchPages(std::uintptr_t first, std::uintptr_t end);

}  // namespace tesh::bramel::platform
