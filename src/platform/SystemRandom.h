// Random numbers of the operating system.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel::platform {

/// 32 bits that nobody can foresee. Throws std::system_error where the system has none. Any thread.
std::uint32_t systemRandom();

}  // namespace tesh::bramel::platform
