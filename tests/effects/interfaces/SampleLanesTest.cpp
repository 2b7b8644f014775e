// Compares the operations of each kind of sample lanes with those of one sample.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/interfaces/SampleLanes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "core/VectorCode.h"

#include "effects/interfaces/SampleLanesCheck.h"
#include "platform/CpuFeatures.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

/// Returns a number from -`limit` to `limit`, often at an end or near 0.
int edgy(std::mt19937& random, int limit) {
  const auto upTo = [&random](int last) { return std::uniform_int_distribution<int>(0, last)(random); };
  const int edges[]{-limit, limit, 0, 1, -1, limit / 2 + 1, -limit / 2 - 1};
  return upTo(1) == 0 ? edges[upTo(6)] : upTo(2 * limit) - limit;
}

TEST(SampleLanes, EveryKindComputesAsOneSampleDoes) {
  std::mt19937 random(1);
  for (int round = 0; round < 20000; ++round) {
    SampleRow a{};
    SampleRow b{};
    for (std::size_t i = 0; i < a.size(); ++i) {
      a[i] = static_cast<std::int16_t>(round % 8 == 0 ? -32768 : edgy(random, 32767));
      b[i] = static_cast<std::int16_t>(random() % 4 == 0 && a[i] != -32768 ? a[i] : edgy(random, 32767));
    }
    const int first = edgy(random, 32767);
    const std::array<int, 4> numbers{edgy(random, 32767), first, 32767 - std::abs(first),
                                     std::abs(edgy(random, 32767))};
    LaneResults expected{};
    LaneResults results{};
    operate<OneSample>(a, b, numbers, expected);
    operate<Samples128>(a, b, numbers, results);
    ASSERT_EQ(results, expected) << "SSE2, round " << round;
#if SIVRAY_FOR_X86
    if (platform::supports(platform::VectorSet::avx2)) {
      results = {};
      operateAvx2(a, b, numbers, results);
      ASSERT_EQ(results, expected) << "AVX2, round " << round;
    }
#endif
  }
}

TEST(SampleLanes, EveryKindComputesWordsAsOneWordDoes) {
  std::mt19937 random(2);
  const auto word = [&random] {
    constexpr int kEdges[]{-2147483647 - 1, 2147483647, 0, -1, 65536, -65536};
    return random() % 4 == 0 ? kEdges[random() % 6] : static_cast<int>(random());
  };
  for (int round = 0; round < 5000; ++round) {
    WordRow a{};
    WordRow b{};
    std::generate(a.begin(), a.end(), word);
    std::generate(b.begin(), b.end(), word);
    const auto factor = static_cast<std::int16_t>(edgy(random, 32767));
    WordResults expected{};
    WordResults results{};
    operateOnWords<lanes::OneWord>(a, b, factor, expected);
    operateOnWords<Samples128::Words>(a, b, factor, results);
    ASSERT_EQ(results, expected) << "SSE2, round " << round;
#if SIVRAY_FOR_X86
    if (platform::supports(platform::VectorSet::avx2)) {
      results = {};
      operateOnWordsAvx2(a, b, factor, results);
      ASSERT_EQ(results, expected) << "AVX2, round " << round;
    }
#endif
  }
}

TEST(SampleLanes, ARingContinuesAtItsStart) {
  const SampleRow samples{1, -2, 3, -4, 5, -6, 7, -8, 9, -10, 11, -12, 13, -14, 15, -16};
  EXPECT_TRUE(comesRoundTheRing<OneSample>(samples.data()));
  EXPECT_TRUE(comesRoundTheRing<Samples128>(samples.data()));
#if SIVRAY_FOR_X86
  if (platform::supports(platform::VectorSet::avx2)) {
    EXPECT_TRUE(comesRoundTheRingAvx2(samples.data()));
  }
#endif
}

}  // namespace

}  // namespace tesh::bramel::plugin::sivray::effects
