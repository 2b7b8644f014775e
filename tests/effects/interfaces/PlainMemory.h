// The simplest delay memory: each request clears all memory of its user, without tracking writes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "effects/interfaces/SivrayFxMemoryUser.h"

namespace scene {

namespace fx = tesh::bramel::plugin::sivray::effects;

struct PlainMemory : fx::SivrayFxMemoryAssigner {
  std::int16_t* acquire(fx::SivrayFxMemoryUser& user) override {
    bank = 1 - bank;
    std::fill_n(banks[bank].begin(), user.requiredSamples(), std::int16_t{0});
    return banks[bank].data();
  }
  bool noteWrites(const fx::SivrayFxMemoryUser&, std::size_t, std::size_t) override { return false; }
  void add(fx::SivrayFxMemoryUser* user) override {
    user->assigner = this;
    for (auto& samples : banks) samples.resize(std::max(samples.size(), user->requiredSamples()));
  }

  std::array<std::vector<std::int16_t>, 2> banks;
  std::size_t bank = 0;
};

}  // namespace scene
