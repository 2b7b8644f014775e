// The order in which the effects are constructed.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/EffectSet.h"

#include "effects/EffectClasses.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

constexpr std::array<int, kEffectTypeCount> kConstructionOrder{
    0, 1, 2, 3, 12, 13, 11, 14, 15, 4, 22, 21, 23, 17, 25, 26, 27, 29, 24, 6, 7, 5, 18, 20, 19, 16, 8, 28, 9, 10};

using Maker = std::unique_ptr<SivrayFx> (*)();

template <typename Effect>
std::unique_ptr<SivrayFx> make() {
  return std::make_unique<Effect>();
}

template <typename... Effects>
constexpr std::array<Maker, sizeof...(Effects)> makersOf(EffectList<Effects...>) {
  return {make<Effects>...};
}

/// By type id.
constexpr std::array<Maker, kEffectTypeCount> kMakers = makersOf(EffectClasses{});

}  // namespace

EffectSet makeEffects(SivrayFxMemoryAssigner& memory) {
  EffectSet effects;
  for (const int type : kConstructionOrder) {
    std::unique_ptr<SivrayFx>& effect = effects[static_cast<std::size_t>(type)];
    effect = kMakers[static_cast<std::size_t>(type)]();
    if (auto* const user = dynamic_cast<SivrayFxMemoryUser*>(effect.get())) {
      memory.add(user);
    }
  }
  for (const int type : kConstructionOrder) {
    SivrayFx& effect = *effects[static_cast<std::size_t>(type)];
    effect.wake();
    effect.reset();
    effect.sleep();
  }
  return effects;
}

}  // namespace tesh::bramel::plugin::sivray::effects
