// The vector form of the stereo lanes against the plain form, and the short leak against the long one.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/interfaces/StereoLanes.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <random>

#include "effects/interfaces/ShortLeak.h"

namespace {

using namespace tesh::bramel::plugin::sivray::effects;

template <typename Lanes>
std::array<Lanes, 10> everyOperation(Lanes a, Lanes b) {
  return {a + b,
          a - b,
          a * b,
          a ^ b,
          a.template shiftedRight<13>(),
          a.template shiftedRightUnsigned<16>(),
          a.notBelowZero(),
          a.saturated(),
          mul15(a, b),
          withSign(a, signOf(b))};
}

TEST(StereoLanes, BothFormsGiveTheSameForEveryOperation) {
  std::mt19937 random(1);
  const auto draw = [&] { return static_cast<std::int32_t>(random()) >> (random() % 32); };
  for (int i = 0; i < 20000; ++i) {
    const std::array<std::int32_t, 4> v{draw(), draw(), i == 0 ? INT32_MIN : draw(), draw()};
    const auto plain = everyOperation(PlainLanes::of(v[0], v[1]), PlainLanes::of(v[2], v[3]));
    const auto fast = everyOperation(StereoLanes::of(v[0], v[1]), StereoLanes::of(v[2], v[3]));
    for (std::size_t op = 0; op < plain.size(); ++op) {
      ASSERT_EQ(fast[op].left(), plain[op].left()) << op;
      ASSERT_EQ(fast[op].right(), plain[op].right()) << op;
      std::int16_t stored[4]{};
      fast[op].storeSaturated(stored[0], stored[1]);
      plain[op].storeSaturated(stored[2], stored[3]);
      ASSERT_EQ(stored[0], stored[2]) << op;
      ASSERT_EQ(stored[1], stored[3]) << op;
    }
  }
}

TEST(StereoLanes, TheShortLeakIsTheLeakWhereItsProductDoesNotWrap) {
  for (std::int32_t v = -65536; v <= 65536; ++v) {
    ASSERT_EQ(shortLeak(v), tesh::cofu::core::leak(v));
    ASSERT_EQ(leak(PlainLanes::of(v, 0)).left(), shortLeak(v));
  }
}

}  // namespace
