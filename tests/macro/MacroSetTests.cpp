// The ten curves against plain formulas, the sets' records, and their boxed settings.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>

#include "macro/MacroSetLinear.h"
#include "macro/MacroSetQuantized.h"
#include "macro/MacroSetTwoBinded.h"

namespace tesh::vimo {
namespace {

using cofu::core::boxed::makeBox;
using cofu::core::boxed::valueIn;

using Bytes = std::vector<std::uint8_t>;

Bytes recordOf(const MacroSetBase& set) {
  Bytes bytes;
  set.serialize(bytes);
  EXPECT_EQ(bytes.size(), set.byteSize());
  return bytes;
}

std::unique_ptr<MacroSetBase> ranged(std::uint32_t type, float a, float b) {
  auto set = makeMacroSet(static_cast<MacroSetType>(type));
  set->setTargetId(5);
  set->setProperty(0, makeBox(tmm{a, b}));
  return set;
}

/// Rounds to single precision after each operation, whatever the compiler does with intermediate results.
float rounded(double value) { return static_cast<float>(value); }
float times(float a, float b) { return rounded(double{a} * double{b}); }
float plus(float a, float b) { return rounded(double{a} + double{b}); }
float minus(float a, float b) { return rounded(double{a} - double{b}); }

/// Computes a curve with each step rounded separately.
float plainCurve(std::uint32_t type, float a, float b, float x) {
  const float up = minus(b, a);
  const float down = minus(a, b);
  const float left = minus(x, 1.0F);
  const float centred = minus(x, 0.5F);
  const float middle = times(plus(a, b), 0.5F);
  const float distance = times(times(times(2.0F, up), centred), centred);
  switch (type) {
    case 0:
      return plus(times(up, x), a);
    case 1:
      return minus(b, times(up, x));
    case 3:
      return plus(times(times(up, x), x), a);
    case 4:
      return plus(times(times(down, x), x), b);
    case 5:
      return plus(times(times(down, left), left), b);
    case 6:
      return plus(times(times(up, left), left), a);
    case 7:
      return x > 0.5F ? plus(middle, distance) : minus(middle, distance);
    default:
      return plus(times(times(up, times(x, x)), times(x, x)), a);
  }
}

TEST(MacroSet, CurvesRoundEachStepInTheirOrder) {
  for (const std::uint32_t type : {0U, 1U, 3U, 4U, 5U, 6U, 7U, 8U}) {
    for (const auto& [a, b] : {tmm{0.1F, 0.9F}, tmm{0.97F, 0.013F}, tmm{0.0F, 1.0F / 3.0F}}) {
      const auto set = ranged(type, a, b);
      for (int step = 0; step <= 1000; ++step) {
        const float x = static_cast<float>(step) / 1000.0F;
        EXPECT_EQ(std::bit_cast<std::uint32_t>(set->map(x)), std::bit_cast<std::uint32_t>(plainCurve(type, a, b, x)))
            << set->typeName() << " at " << x;
      }
    }
  }
}

TEST(MacroSet, CurvesReachTheirEnds) {
  const float a = 0.25F;
  const float b = 0.75F;
  for (const std::uint32_t type : {0U, 1U, 3U, 4U, 5U, 6U, 7U, 8U}) {
    const auto set = ranged(type, a, b);
    const bool flipped = type == 1 || type == 4 || type == 6;
    EXPECT_EQ(set->map(0.0F), flipped ? b : a) << set->typeName();
    EXPECT_EQ(set->map(1.0F), flipped ? a : b) << set->typeName();
  }
  EXPECT_EQ(ranged(7, a, b)->map(0.5F), 0.5F);
}

TEST(MacroSet, QuantizedStepsAreCentred) {
  MacroSetQuantized set;
  EXPECT_EQ(set.map(0.5F), 0.0F);
  set.setValues({0.7F});
  for (const float x : {0.0F, 0.4F, 1.0F}) {
    EXPECT_EQ(set.map(x), 0.7F);
  }
  std::vector<float> values(26);
  for (std::size_t i = 0; i < values.size(); ++i) {
    values[i] = static_cast<float>(i);
  }
  set.setValues(values);
  EXPECT_EQ(set.map(0.0F), 0.0F);
  EXPECT_EQ(set.map(1.0F), 25.0F);
  EXPECT_EQ(set.map(0.5F), 13.0F);
  EXPECT_EQ(set.map(0.0199F), 0.0F);
  EXPECT_EQ(set.map(0.0201F), 1.0F);
  EXPECT_EQ(set.map(-1e30F), 0.0F);
  EXPECT_EQ(set.map(1e30F), 25.0F);
  EXPECT_EQ(set.map(std::numeric_limits<float>::quiet_NaN()), 0.0F);
}

/// Returns a TwoBinded set over 0, 0.25, 1 with the given split and types.
std::unique_ptr<MacroSetBase> bound(float split, MacroSetType first, MacroSetType second) {
  auto set = makeMacroSet(MacroSetType::twoBinded);
  set->setTargetId(9);
  set->setProperty(0, makeBox(tmmm{0.0F, 0.25F, 1.0F}));
  set->setProperty(1, makeBox(split));
  set->setProperty(4, makeBox(first));
  set->setProperty(5, makeBox(second));
  return set;
}

TEST(MacroSet, TwoBindedSplitsItsInput) {
  const auto set = bound(0.4F, MacroSetType::linear, MacroSetType::linearFlipped);
  EXPECT_EQ(set->map(0.2F), 0.125F);
  EXPECT_EQ(set->map(0.4F), 1.0F);
  EXPECT_EQ(set->map(1.0F), 0.25F);
  const float below = std::nextafter(0.4F, 0.0F);
  EXPECT_EQ(set->map(below), 0.25F * (below / 0.4F));
}

TEST(MacroSet, TwoBindedPropertiesReachItsHalves) {
  const auto set = bound(0.5F, MacroSetType::linear, MacroSetType::quantized);
  EXPECT_EQ(valueIn<tmm>(set->property(2))->maximum, 0.25F);
  EXPECT_TRUE(valueIn<std::vector<float>>(set->property(3))->empty());
  EXPECT_EQ(set->property(6), nullptr);
  set->setProperty(2, makeBox(tmm{0.5F, 0.5F}));
  EXPECT_EQ(set->map(0.1F), 0.5F);
  set->setProperty(4, makeBox(MacroSetType::twoBinded));
  EXPECT_EQ(*valueIn<MacroSetType>(set->property(4)), MacroSetType::linear);
  for (const float split : {0.0F, 1.0F, -1.0F}) {
    set->setProperty(1, makeBox(split));
    EXPECT_EQ(*valueIn<float>(set->property(1)), 0.5F);
  }
  BoxedValue copy;
  set->property(0)->clone(copy);
  EXPECT_EQ(valueIn<tmmm>(copy)->middle, 0.25F);
  set->setProperty(0, makeBox(1.0F));
  EXPECT_EQ(valueIn<tmmm>(set->property(0))->middle, 0.25F);
}

TEST(MacroSet, RecordsComeBackAsTheyWere) {
  std::vector<std::unique_ptr<MacroSetBase>> sets;
  for (const std::uint32_t type : {0U, 1U, 3U, 4U, 5U, 6U, 7U, 8U}) {
    sets.push_back(ranged(type, 0.2F, 0.9F));
  }
  sets.push_back(makeMacroSet(MacroSetType::quantized));
  sets.back()->setProperty(0, makeBox(std::vector<float>{0.1F, 0.9F, 0.4F}));
  sets.push_back(bound(0.3F, MacroSetType::logCurved, MacroSetType::quantized));
  sets.back()->setProperty(3, makeBox(std::vector<float>{0.6F, 0.2F}));
  for (const auto& set : sets) {
    const Bytes record = recordOf(*set);
    const auto again = makeMacroSet(set->type());
    for (std::size_t size = 0; size < record.size(); ++size) {
      const Bytes cut(record.begin(), record.begin() + static_cast<std::ptrdiff_t>(size));
      makeMacroSet(set->type())->deserialize(cut);
    }
    ASSERT_TRUE(again->deserialize(record)) << set->typeName();
    EXPECT_EQ(recordOf(*again), record) << set->typeName();
    EXPECT_EQ(again->targetId(), set->targetId());
    for (int step = 0; step <= 20; ++step) {
      EXPECT_EQ(again->map(static_cast<float>(step) / 20.0F), set->map(static_cast<float>(step) / 20.0F));
    }
  }
}

TEST(MacroSet, TwoBindedDoesNotNest) {
  const auto set = bound(0.5F, MacroSetType::linear, MacroSetType::linear);
  Bytes record = recordOf(*set);
  record[20] = 9;
  ASSERT_TRUE(set->deserialize(record));
  EXPECT_EQ(set->property(4), nullptr);
  EXPECT_EQ(set->map(0.2F), 0.0F);
  EXPECT_EQ(set->map(1.0F), 1.0F);
  EXPECT_EQ(recordOf(*set).size(), set->byteSize());
  EXPECT_EQ(makeMacroSet(static_cast<MacroSetType>(10)), nullptr);
}

}  // namespace
}  // namespace tesh::vimo
