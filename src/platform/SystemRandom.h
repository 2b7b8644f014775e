// Random numbers of the operating system.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel::platform {

/// 32 unpredictable bits. Throws std::system_error if the system has none. Any thread.
std::uint32_t systemRandom();

}  // namespace tesh::bramel::platform
