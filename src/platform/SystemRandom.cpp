// Random numbers of each operating system.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/SystemRandom.h"

#ifdef _WIN32
#include <random>
#else
#include <unistd.h>

#include <cerrno>
#include <system_error>
#endif

namespace tesh::bramel::platform {

#ifdef _WIN32

std::uint32_t systemRandom() { return std::random_device{}(); }

#else

// Not std::random_device, which, linked statically, would need a newer C library than everything else here.
std::uint32_t systemRandom() {
  std::uint32_t bits = 0;
  if (getentropy(&bits, sizeof(bits)) != 0) {
    throw std::system_error(errno, std::generic_category(), "getentropy");
  }
  return bits;
}

#endif

}  // namespace tesh::bramel::platform
