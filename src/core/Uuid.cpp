// The random generator behind all identifiers of the process.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Uuid.h"

#include <cstddef>
#include <mutex>
#include <random>

#include "platform/SystemRandom.h"

namespace tesh::cofu::core {
namespace {

std::mt19937 seededTwister() {
  using bramel::platform::systemRandom;
  std::seed_seq seed{systemRandom(), systemRandom(), systemRandom(), systemRandom()};
  return std::mt19937(seed);
}

}  // namespace

Uuid uuidFromDraws(const std::array<std::uint32_t, 4>& draws) {
  Uuid id{};
  for (std::size_t i = 0; i < id.size(); ++i) {
    id[i] = static_cast<std::uint8_t>(draws[i / 4] >> (4 * (i % 4)));
  }
  id[6] = static_cast<std::uint8_t>((id[6] & 0x0F) | 0x40);
  id[8] = static_cast<std::uint8_t>((id[8] & 0x3F) | 0x80);
  return id;
}

Uuid makeUuid() {
  static std::mutex mutex;
  static std::mt19937 twister = seededTwister();
  const std::lock_guard lock(mutex);
  std::array<std::uint32_t, 4> draws{};
  for (auto& draw : draws) {
    draw = static_cast<std::uint32_t>(twister());
  }
  return uuidFromDraws(draws);
}

}  // namespace tesh::cofu::core
