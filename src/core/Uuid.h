// Random identifiers of sixteen bytes: of program records, and of the places that mail comes from.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

namespace tesh::cofu::core {

/// The bytes of a UUID, comparable and free to copy.
using Uuid = std::array<std::uint8_t, 16>;

/// A new version-4 UUID. Any thread; may wait for another that makes one.
Uuid makeUuid();

/// The UUID that four draws of a random generator give. Of each draw the bits 0 to 7, 4 to 11, 8 to 15 and 12 to 19
/// make four bytes; then version and variant are put in.
Uuid uuidFromDraws(const std::array<std::uint32_t, 4>& draws);

}  // namespace tesh::cofu::core
