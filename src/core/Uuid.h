// Random identifiers of sixteen bytes, for programs and for the senders of parameter changes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

namespace tesh::cofu::core {

/// The bytes of a UUID in the order in which they are written.
using Uuid = std::array<std::uint8_t, 16>;

/// A new UUID of version 4. Any thread but the audio thread: it takes a lock.
Uuid makeUuid();

/// The UUID of version 4 from four 32-bit random numbers. Each gives four bytes: its bits 0 to 7, 4 to 11, 8 to 15 and
/// 12 to 19. Version and variant then replace six bits (RFC 4122).
Uuid uuidFromDraws(const std::array<std::uint32_t, 4>& draws);

}  // namespace tesh::cofu::core
