// Compares every operation of a register struct with plain arithmetic, lane by lane. A template that each test compiles
// for its instructions.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <type_traits>

#include "registers/RegisterConcepts.h"

namespace tesh::cofu::registers {

/// Memory for the longest register.
struct alignas(32) Row {
  std::uint32_t bits[8];
};

namespace {

/// The tests on registers `a` and `b`, which hold the bits of two rows.
template <typename R>
class RegisterLaws {
 public:
  RegisterLaws(const Row& first, const Row& second)
      : rowA(first), rowB(second), a(R::load(&rowA)), b(R::loadAligned(&rowB)) {}

  void lanesOf16() const {
    each<Word>("all16", R::all16(-7), [](Long, Long) { return -7; });
    each<Word>("add16", R::add16(a, b), [](Long x, Long y) { return x + y; });
    each<Word>("sub16", R::sub16(a, b), [](Long x, Long y) { return x - y; });
    each<Word>("addLimited16", R::addLimited16(a, b), [](Long x, Long y) { return limited16(x + y); });
    each<Word>("subLimited16", R::subLimited16(a, b), [](Long x, Long y) { return limited16(x - y); });
    each<std::uint16_t>("subLimitedUnsigned16", R::subLimitedUnsigned16(a, b),
                        [](Long x, Long y) { return std::max<Long>(x - y, 0); });
    each<Word>("max16", R::max16(a, b), [](Long x, Long y) { return std::max(x, y); });
    each<Word>("mulHigh16", R::mulHigh16(a, b), [](Long x, Long y) { return (x * y) >> 16; });
    each<std::uint16_t>("mulHighUnsigned16", R::mulHighUnsigned16(a, b), [](Long x, Long y) { return (x * y) >> 16; });
    each<Word>("mulLow16", R::mulLow16(a, b), [](Long x, Long y) { return x * y; });
    each<Word>("equal16", R::equal16(a, b), [](Long x, Long y) { return x == y ? -1 : 0; });
    each<Word>("abs16", R::abs16(a), [](Long x, Long) { return x < 0 ? -x : x; });
    each<Word>("withSignOf16", R::withSignOf16(R::andNot(R::equal16(b, R::zero()), a), b),
               [](Long x, Long y) { return y < 0 ? -x : (y > 0 ? x : 0); });
    each<Word>("nearerZero16", R::nearerZero16(a, R::equal16(a, b)),
               [](Long x, Long y) { return x == y ? x - (x > 0) + (x < 0) : x; });
    each<Word>("shiftRight16", R::template shiftRight16<5>(a), [](Long x, Long) { return x >> 5; });
    each<std::uint16_t>("shiftRightUnsigned16", R::template shiftRightUnsigned16<5>(a),
                        [](Long x, Long) { return x >> 5; });
    each<Int>("pairSums16", R::pairSums16(a, b), [](Long x, Long y) {
      const auto product = [](Long p, Long q) { return Long{static_cast<Word>(p)} * static_cast<Word>(q); };
      return product(x, y) + product(x >> 16, y >> 16);
    });
    EXPECT_EQ(R::last16(a), lanes<Word>(rowA)[R::kBytes / 2 - 1]);
  }

  void lanesOf32() const {
    each<Int>("all32", R::all32(-70000), [](Long, Long) { return -70000; });
    each<Int>("add32", R::add32(a, b), [](Long x, Long y) { return x + y; });
    each<Int>("sub32", R::sub32(a, b), [](Long x, Long y) { return x - y; });
    each<Int>("equal32", R::equal32(a, b), [](Long x, Long y) { return x == y ? -1 : 0; });
    each<Int>("greater32", R::greater32(a, b), [](Long x, Long y) { return x > y ? -1 : 0; });
    each<Int>("min32", R::min32(a, b), [](Long x, Long y) { return std::min(x, y); });
    each<Int>("max32", R::max32(a, b), [](Long x, Long y) { return std::max(x, y); });
    each<Int>("limited32", R::limited32(a, R::all32(-70000), R::all32(90000)),
              [](Long x, Long) { return std::clamp<Long>(x, -70000, 90000); });
    each<Int>("saturated32", R::saturated32(a), [](Long x, Long) { return std::clamp<Long>(x, -32767, 32767); });
    each<Int>("abs32", R::abs32(a), [](Long x, Long) { return x < 0 ? -x : x; });
    each<Int>("shiftRight32", R::template shiftRight32<9>(a), [](Long x, Long) { return x >> 9; });
    each<Int>("shiftRight32 by a count", R::shiftRight32(a, R::count(11)), [](Long x, Long) { return x >> 11; });
    each<std::uint32_t>("shiftRightUnsigned32", R::template shiftRightUnsigned32<9>(a),
                        [](Long x, Long) { return x >> 9; });
    each<Int>("shiftLeft32", R::template shiftLeft32<9>(a), [](Long x, Long) { return x * 512; });
    each<Int>("mulLow32", R::mulLow32(a, b), [](Long x, Long y) { return x * y; });
    each<std::uint32_t>("mulShiftUnsigned32", R::template mulShiftUnsigned32<33>(a, b), [](Long x, Long y) {
      return static_cast<Long>(static_cast<std::uint64_t>(x) * static_cast<std::uint64_t>(y) >> 33);
    });
    auto multiples = lanes<Int>({});
    for (unsigned i = 0; i < multiples.size(); ++i) {
      multiples[i] = static_cast<Int>(Unsigned{rowA.bits[0]} * (i + 1));
    }
    expect("multiples32", R::multiples32(static_cast<Int>(rowA.bits[0])), rowOf(multiples));
    each<Int>("mapped32", R::mapped32(a, [](Int x) { return x ^ 5; }), [](Long x, Long) { return x ^ 5; });
    auto widened = lanes<Int>({});
    std::copy_n(lanes<Word>(rowA).begin(), widened.size(), widened.begin());
    expect("loadWidened16", R::loadWidened16(&rowA), rowOf(widened));
    int signs = 0;
    for (unsigned i = 0; i < R::kBytes / 4; ++i) {
      signs |= lanes<Int>(rowA)[i] < 0 ? 1 << i : 0;
    }
    EXPECT_EQ(R::signs32(a), signs);
    if constexpr (SignedProducts<R>) {
      each<Int>("mulShift32", R::template mulShift32<17>(a, b), [](Long x, Long y) { return (x * y) >> 17; });
      each<Long>("mulEven32", R::mulEven32(a, b),
                 [](Long x, Long y) { return Long{static_cast<Int>(x)} * static_cast<Int>(y); });
      arranged<Int>("eitherOf32", R::template eitherOf32<0b01100110>(a, b), {0, 5, 6, 3});
    }
  }

  void lanesOf64() const {
    each<Long>("all64", R::all64(-7'000'000'000), [](Long, Long) { return -7'000'000'000; });
    each<Unsigned>("add64", R::add64(a, b), [](Unsigned x, Unsigned y) { return x + y; });
    each<Unsigned>("sub64", R::sub64(a, b), [](Unsigned x, Unsigned y) { return x - y; });
    each<Unsigned>("shiftRightUnsigned64", R::template shiftRightUnsigned64<23>(a),
                   [](Unsigned x, Unsigned) { return x >> 23; });
    each<Unsigned>("shiftLeft64", R::template shiftLeft64<23>(a), [](Unsigned x, Unsigned) { return x << 23; });
    each<Unsigned>("mulEvenUnsigned32", R::mulEvenUnsigned32(a, b),
                   [](Unsigned x, Unsigned y) { return (x & 0xFFFFFFFF) * (y & 0xFFFFFFFF); });
    each<Long>("bitAnd", R::bitAnd(a, b), [](Long x, Long y) { return x & y; });
    each<Long>("bitOr", R::bitOr(a, b), [](Long x, Long y) { return x | y; });
    each<Long>("bitXor", R::bitXor(a, b), [](Long x, Long y) { return x ^ y; });
    each<Long>("andNot", R::andNot(a, b), [](Long x, Long y) { return ~x & y; });
    const Integers upper = R::template shiftLeft64<32>(R::all64(-1));
    EXPECT_TRUE(R::isZero(R::zero()) && !R::isZero(R::after16(R::zero(), 1)));
    EXPECT_TRUE(R::overlap(upper, R::all32(-1)) && !R::overlap(upper, R::andNot(upper, R::all32(-1))));
  }

  void arrangement() const {
    arranged<Word>("zipLow16", R::zipLow16(a, b), {0, 8, 1, 9, 2, 10, 3, 11});
    arranged<Word>("zipHigh16", R::zipHigh16(a, b), {4, 12, 5, 13, 6, 14, 7, 15});
    arranged<Int>("zipLow32", R::zipLow32(a, b), {0, 4, 1, 5});
    arranged<Int>("zipHigh32", R::zipHigh32(a, b), {2, 6, 3, 7});
    arranged<Long>("zipLow64", R::zipLow64(a, b), {0, 2});
    arranged<Long>("zipHigh64", R::zipHigh64(a, b), {1, 3});
    arranged<Int>("evens32", R::evens32(a, b), {0, 2, 4, 6});
    arranged<Int>("odds32", R::odds32(a, b), {1, 3, 5, 7});
    arranged<Word>("uppers16", R::uppers16(a, b), {1, 9, 3, 11, 5, 13, 7, 15});
    arranged<Word>("zippedHalves16", R::zippedHalves16(a), {0, 4, 1, 5, 2, 6, 3, 7});
    arranged<Word>("swappedMiddles16", R::swappedMiddles16(a), {0, 2, 1, 3, 4, 6, 5, 7});
    const Floats x = R::bitsAsFloats(a);
    const Floats y = R::bitsAsFloats(b);
    arranged<Long>("lowHalves", R::bitsOfFloats(R::lowHalves(x, y)), {0, 2});
    arranged<Long>("highHalves", R::bitsOfFloats(R::highHalves(x, y)), {1, 3});
    expect("zipLow32 of floats", R::bitsOfFloats(R::zipLow32(x, y)), rowOf(R::zipLow32(a, b)));
    expect("zipHigh32 of floats", R::bitsOfFloats(R::zipHigh32(x, y)), rowOf(R::zipHigh32(a, b)));
    auto turned = lanes<Int>(rowA);
    std::reverse(turned.begin(), turned.end());
    expect("reversed", R::bitsOfFloats(R::reversed(x)), rowOf(turned));
    expect("neighbourSums32", R::neighbourSums32(a, b), rowOf(R::add32(R::evens32(a, b), R::odds32(a, b))));

    Lanes<Word> packed;
    for (unsigned i = 0; i < packed.size() / 2; ++i) {
      packed[i] = static_cast<Word>(limited16(lanes<Int>(rowA)[i]));
      packed[i + packed.size() / 2] = static_cast<Word>(limited16(lanes<Int>(rowB)[i]));
    }
    expect("packed32", R::inOrder(R::packed32(a, b)), rowOf(packed));
    auto later = lanes<Word>(rowA);
    std::copy_backward(later.begin(), later.end() - 1, later.end());
    later[0] = -9;
    Row narrowed{};
    R::storeNarrowed32(&narrowed, a);
    EXPECT_EQ(std::memcmp(&narrowed, packed.data(), R::kBytes / 2), 0) << "storeNarrowed32";
    expect("after16", R::after16(a, -9), rowOf(later));
  }

  /// Uses floats of random bits: some are NaN, and many do not fit into an integer.
  void floats() const {
    const Floats x = R::bitsAsFloats(a);
    const Floats y = R::bitsAsFloats(b);
    each<float>("minFloats", R::bitsOfFloats(R::minFloats(x, y)), [](float p, float q) { return p < q ? p : q; });
    each<float>("maxFloats", R::bitsOfFloats(R::maxFloats(x, y)), [](float p, float q) { return p > q ? p : q; });
    each<Int>("greaterFloats", R::greaterFloats(x, y), [this, i = 0U](Long, Long) mutable {
      const bool isGreater = lanes<float>(rowA)[i] > lanes<float>(rowB)[i];
      ++i;
      return isGreater ? -1 : 0;
    });
    Lanes<Int> truncated;
    Lanes<float> converted;
    for (unsigned i = 0; i < truncated.size(); ++i) {
      const float from = lanes<float>(rowA)[i];
      const bool fits = from >= -0x1p31F && from < 0x1p31F;
      truncated[i] = fits ? static_cast<Int>(from) : std::numeric_limits<Int>::min();
      converted[i] = static_cast<float>(lanes<Int>(rowA)[i]);
    }
    const auto entries = lanes<float>(rowA);
    Floats entry;
    Floats next;
    R::pairsAt(entries.data(), R::bitAnd(R::shiftRight32(a, R::count(3)), R::all32(R::kBytes / 8)), entry, next);
    Lanes<float> expectedEntry;
    Lanes<float> expectedNext;
    for (unsigned i = 0; i < expectedEntry.size(); ++i) {
      const auto index = static_cast<unsigned>(lanes<Int>(rowA)[i] >> 3) & (R::kBytes / 8);
      expectedEntry[i] = entries[index];
      expectedNext[i] = entries[index + 1];
    }
    expect("pairsAt", R::bitsOfFloats(entry), rowOf(expectedEntry));
    expect("the next of pairsAt", R::bitsOfFloats(next), rowOf(expectedNext));
    expect("truncated", R::truncated(x), rowOf(truncated));
    expect("floatsOf", R::bitsOfFloats(R::floatsOf(a)), rowOf(converted));
    Lanes<float> stored{};
    R::storeFloats(stored.data(), R::loadFloats(entries.data()));
    expect("loadFloats and storeFloats", a, rowOf(stored));
  }

 private:
  using Integers = typename R::Integers;
  using Floats = typename R::Floats;
  using Word = std::int16_t;
  using Int = std::int32_t;
  using Long = std::int64_t;
  using Unsigned = std::uint64_t;
  template <typename T>
  using Lanes = std::array<T, R::kBytes / sizeof(T)>;

  static Long limited16(Long x) { return std::clamp<Long>(x, -32768, 32767); }

  template <typename T>
  static Lanes<T> lanes(const Row& row) {
    Lanes<T> result;
    std::memcpy(result.data(), &row, R::kBytes);
    return result;
  }
  template <typename T, std::size_t kCount>
  static Row rowOf(const std::array<T, kCount>& from) {
    Row row{};
    std::memcpy(&row, from.data(), R::kBytes);
    return row;
  }
  static Row rowOf(Integers v) {
    Row row{};
    R::storeAligned(&row, v);
    return row;
  }
  static void expect(const char* name, Integers result, const Row& expected) {
    Row row{};
    R::store(&row, result);
    EXPECT_EQ(std::memcmp(&row, &expected, R::kBytes), 0) << name;
  }
  /// `op` computes a lane from those of `a` and `b`, with wrap-around.
  template <typename T, typename Op>
  void each(const char* name, Integers result, Op op) const {
    using Wide = std::conditional_t<std::is_same_v<T, float> || std::is_same_v<T, Unsigned>, T, Long>;
    Lanes<T> expected;
    for (unsigned i = 0; i < expected.size(); ++i) {
      expected[i] = static_cast<T>(op(Wide{lanes<T>(rowA)[i]}, Wide{lanes<T>(rowB)[i]}));
    }
    expect(name, result, rowOf(expected));
  }
  /// `places` holds, for each 128 bits, the source lanes: those of `a` first, then those of `b`.
  template <typename T>
  void arranged(const char* name, Integers result, std::initializer_list<unsigned> places) const {
    constexpr unsigned kGroup = 16 / sizeof(T);
    Lanes<T> expected;
    for (unsigned i = 0; i < expected.size(); ++i) {
      const unsigned place = places.begin()[i % kGroup];
      expected[i] = lanes<T>(place < kGroup ? rowA : rowB)[i / kGroup * kGroup + place % kGroup];
    }
    expect(name, result, rowOf(expected));
  }

  Row rowA;
  Row rowB;
  Integers a;
  Integers b;
};

template <typename R>
void keepLaws(const Row& a, const Row& b) {
  const RegisterLaws<R> laws(a, b);
  laws.lanesOf16();
  laws.lanesOf32();
  laws.lanesOf64();
  laws.arrangement();
  laws.floats();
}

}  // namespace
}  // namespace tesh::cofu::registers
