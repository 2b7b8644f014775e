// The sample conversions of the older effect interface, and the sleep mode of its wrapper.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/interfaces/BasicEffect.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <vector>

#include "effects/interfaces/FastEffectAdapter.h"

namespace tesh::vimo {

namespace {

/// Copies its input and records its calls.
class Probe : public BasicEffect {
 public:
  Probe() {
    initParameters();
    seen.reserve(131072);
  }

  unsigned parameterCount() const override { return 2; }
  void setParameter(unsigned index, float value) override {
    BasicEffect::setParameter(index, value);
    ++settings;
  }
  void processInt16(Int16Block in, Int16Block out, unsigned count) override {
    largestRun = std::max(largestRun, count);
    for (unsigned i = 0; i < count; ++i, ++samples) {
      seen.push_back(in.left[i]);
      out.left[i] = in.left[i];
      out.right[i] = in.right[i];
    }
  }

  unsigned samples = 0;
  unsigned largestRun = 0;
  int settings = 0;
  std::vector<int> seen;
};

/// Copies its input.
class FloatProbe : public BasicEffect {
 public:
  void processFloat(FloatBlock in, FloatBlock out, unsigned count) override {
    std::copy_n(in.left, count, out.left);
    std::copy_n(in.right, count, out.right);
  }
};

TEST(BasicEffect, FloatsGoThroughTheInt16PathWithinTheirRange) {
  Probe probe;
  std::vector<float> left{1.0F, -1.0F, 2.0F, -7.5F, 0.5F, -0.00001F, std::numeric_limits<float>::quiet_NaN()};
  left.resize(700, 0.25F);
  std::vector<float> right = left;
  const FloatBlock block{left.data(), right.data()};
  probe.processFloat(block, block, 700);
  EXPECT_EQ(std::vector<int>(probe.seen.begin(), probe.seen.begin() + 6),
            (std::vector<int>{32767, -32767, 32767, -32767, 16383, 0}));
  EXPECT_EQ(left[0], 1.0F);
  EXPECT_EQ(left[1], -1.0F);
  EXPECT_EQ(right[699], 8191 * 3.051851e-5F);
  EXPECT_EQ(probe.largestRun, 256U);
  EXPECT_EQ(probe.samples, 700U);
}

TEST(BasicEffect, Int16GoesThroughTheFloatPathAndKeepsItsValue) {
  FloatProbe probe;
  std::vector<std::int16_t> left(65536);
  for (std::size_t i = 0; i < left.size(); ++i) {
    left[i] = static_cast<std::int16_t>(static_cast<int>(i) - 32768);
  }
  std::vector<std::int16_t> right = left;
  const Int16Block block{left.data(), right.data()};
  probe.processInt16(block, block, 65536);
  EXPECT_EQ(left[0], -32767);
  EXPECT_EQ(left[65535], 32767);
  for (int i = 1; i < 65536; ++i) {
    ASSERT_NEAR(left[static_cast<std::size_t>(i)], i - 32768, 1);
  }
}

TEST(BasicEffect, ParametersStartAtZeroAndIgnoreBadIndices) {
  Probe probe;
  EXPECT_EQ(probe.settings, 2);
  probe.setParameter(1, 0.5F);
  probe.setParameter(2, 0.7F);
  EXPECT_EQ(probe.parameter(1), 0.5F);
  EXPECT_EQ(probe.parameter(2), 0.0F);
}

struct Sleeper {
  Sleeper() {
    auto owned = std::make_unique<Probe>();
    probe = owned.get();
    adapter = std::make_unique<FastEffectAdapter>(std::move(owned));
  }

  /// Processes a block and returns the number of samples that the inner effect processed.
  unsigned run(unsigned count, std::int16_t lastRight) {
    std::vector<std::int16_t> left(count);
    std::vector<std::int16_t> right(count);
    right.back() = lastRight;
    const unsigned before = probe->samples;
    const Int16Block block{left.data(), right.data()};
    adapter->processInt16(block, block, count);
    EXPECT_EQ(right.back(), lastRight);
    return probe->samples - before;
  }

  Probe* probe = nullptr;
  std::unique_ptr<FastEffectAdapter> adapter;
};

TEST(FastEffectAdapter, SleepsUntilTheBlockWithTheFirstSound) {
  Sleeper s;
  EXPECT_EQ(s.run(1000, 0), 0U);
  EXPECT_EQ(s.run(100, -1), 100U);
  EXPECT_FALSE(s.adapter->isActive()) << "the wrapper's own flag is set by no one";
}

TEST(FastEffectAdapter, StaysAwakeForItsHoldTimeAfterTheLastSound) {
  Sleeper s;
  s.run(10, 1);
  EXPECT_EQ(s.run(47999, 0), 47999U);
  EXPECT_EQ(s.run(1, 0), 1U) << "the last silent sample of the hold still runs";
  EXPECT_EQ(s.run(1, 0), 0U);
  s.run(10, 1);
  EXPECT_EQ(s.run(60000, 0), 60000U) << "one long block is never cut";
  EXPECT_EQ(s.run(1, 0), 0U);
}

TEST(FastEffectAdapter, FloatsWakeItAboveItsThreshold) {
  Sleeper s;
  for (const auto& [level, ran] : {std::pair{1e-5F, 0U}, {-2e-5F, 64U}}) {
    std::vector<float> left(64);
    std::vector<float> right(64, level);
    const FloatBlock block{left.data(), right.data()};
    s.adapter->processFloat(block, block, 64);
    EXPECT_EQ(s.probe->samples, ran);
  }
}

}  // namespace

}  // namespace tesh::vimo
