// The register tests for all register sets of this processor.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <random>

#include "core/VectorCode.h"
#include "platform/CpuFeatures.h"
#include "registers/DenormalGuard.h"
#include "registers/Registers128.h"

#include "registers/RegisterLaws.h"

namespace tesh::cofu::registers {

void keepLawsSse41(const Row& a, const Row& b);
void keepLawsAvx2(const Row& a, const Row& b);

namespace {

/// A struct with one wrong operation is not accepted as a set of registers.
struct Misspelt : Registers128 {
  static bool add16(Integers a, Integers b) { return overlap(a, b); }
};
static_assert(IntegerRegisters<Registers128> && !IntegerRegisters<Misspelt>);

/// Returns words that are random, or have an end of the range or a value near 0 in either half.
std::uint32_t edgy(std::mt19937& random) {
  constexpr std::uint32_t kEdges[]{0, 1, 0xFFFFFFFF, 0x80000000, 0x7FFFFFFF, 0x80008000, 0x7FFF7FFF, 0x00018000};
  return random() % 3 == 0 ? kEdges[random() % 8] : static_cast<std::uint32_t>(random());
}

TEST(Registers, EveryOperationComputesAsPlainArithmeticDoes) {
  using bramel::platform::supports;
  using bramel::platform::VectorSet;
  std::mt19937 random(1);
  for (int round = 0; round < 2000 && !HasFailure(); ++round) {
    Row a{};
    Row b{};
    for (unsigned i = 0; i < 8; ++i) {
      a.bits[i] = edgy(random);
      b.bits[i] = random() % 4 == 0 ? a.bits[i] : edgy(random);
    }
    SCOPED_TRACE(round);
    keepLaws<Registers128>(a, b);
#if SIVRAY_FOR_X86
    if (supports(VectorSet::sse41)) {
      keepLawsSse41(a, b);
    }
    if (supports(VectorSet::avx2)) {
      keepLawsAvx2(a, b);
    }
#endif
  }
}

// Operations on the lowest 128 bits, and on halves of them.
TEST(Registers, PartsOfARegisterAreItsLanes) {
  using R = Registers128;
  const auto v = R::four32(0x00020001, 0x00040003, 0x00060005, -8);
  EXPECT_EQ(R::first32(v), 0x00020001);
  EXPECT_EQ(R::third32(v), 0x00060005);
  EXPECT_EQ(R::lane16<2>(v), 3);
  EXPECT_EQ(R::sum32(v), 0x00020001 + 0x00040003 + 0x00060005 - 8);
  EXPECT_EQ(R::first32(R::swappedLowMiddles16(v)), 0x00030001);
  EXPECT_EQ(R::sum32(R::inAllLanes32<3>(v)), 4 * -8);
}

TEST(DenormalGuard, FlushesDenormalsAndGivesTheCallersSettingBack) {
  volatile float tiny = 1e-30F;
  {
    const DenormalGuard guard;
    const volatile float denormal = tiny * 1e-10F;
    EXPECT_EQ(denormal, 0.0F);
  }
  const volatile float denormal = tiny * 1e-10F;
  EXPECT_NE(denormal, 0.0F);
}

}  // namespace
}  // namespace tesh::cofu::registers
