// The law of the hall's dampers, sample by sample or in lanes. LaneRun.h tells where this may be included.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "core/FixedPoint.h"
#include "effects/interfaces/SampleLanes.h"
#include "effects/reverbs/HallDampers.h"

namespace tesh::bramel::plugin::sivray::effects {

/// A value for each comb.
template <typename Samples>
using Combs = std::array<Samples, kHallLanes>;

/// The next sample of each comb becomes its z.
inline void damp(HallDampers& dampers, Combs<OneSample>& combs) {
  using namespace cofu::core;
  for (std::size_t k = 0; k < kHallLanes; ++k) {
    const std::int32_t comb = combs[k].v;
    dampers.last[k] = saturate(mul15(dampers.last[k] + comb, dampers.ofLast[2 * k]) - comb);
    combs[k].v = dampers.last[k];
  }
}

/// Eight samples of each comb in registers of 128 bits. Computes z as (z * damper + comb * (damper - 1.0)) >> 15, which
/// is the same, but whose second product does not wait for the last z. Nothing has to be limited: but for the sign, z
/// lies between the last z and the comb.
template <typename R>
class EightDamped {
  using Integers = typename R::Integers;

 public:
  explicit EightDamped(HallDampers& from)
      : dampers(from),
        z(R::load(from.last.data())),
        ofLast(R::load(from.ofLast.data())),
        ofComb(R::load(from.ofComb.data())) {}

  void damp(Combs<lanes::SamplesIn<R>>& combs) {
    const Integers firstOf01 = R::zipLow16(combs[0].v, combs[1].v);
    const Integers firstOf23 = R::zipLow16(combs[2].v, combs[3].v);
    const Integers secondOf01 = R::zipHigh16(combs[0].v, combs[1].v);
    const Integers secondOf23 = R::zipHigh16(combs[2].v, combs[3].v);
    const Integers z01 = twoRows(R::zipLow32(firstOf01, firstOf23));
    const Integers z23 = twoRows(R::zipHigh32(firstOf01, firstOf23));
    const Integers z45 = twoRows(R::zipLow32(secondOf01, secondOf23));
    const Integers z67 = twoRows(R::zipHigh32(secondOf01, secondOf23));
    const FourRows first = columnsOf(z01, z23);
    const FourRows second = columnsOf(z45, z67);
    combs[0].v = R::zipLow64(first.of01, second.of01);
    combs[1].v = R::zipHigh64(first.of01, second.of01);
    combs[2].v = R::zipLow64(first.of23, second.of23);
    combs[3].v = R::zipHigh64(first.of23, second.of23);
  }

  void finish() const { R::store(dampers.last.data(), z); }

 private:
  /// Four samples of combs 0 and 1, and of combs 2 and 3.
  struct FourRows {
    Integers of01;
    Integers of23;
  };

  /// A row holds one sample of each comb. Returns what becomes of two rows.
  Integers twoRows(Integers rows) {
    const Integers first = row(R::zipLow16(rows, R::zero()));
    const Integers second = row(R::zipHigh16(rows, R::zero()));
    return R::packed32(first, second);
  }

  /// The combs lie in the lower words of the lanes; the upper words are ignored.
  Integers row(Integers comb) {
    z = R::template shiftRight32<15>(R::add32(R::pairSums16(z, ofLast), R::pairSums16(comb, ofComb)));
    return z;
  }

  static FourRows columnsOf(Integers rows01, Integers rows23) {
    const Integers even = R::zipLow16(rows01, rows23);
    const Integers odd = R::zipHigh16(rows01, rows23);
    return {R::zipLow16(even, odd), R::zipHigh16(even, odd)};
  }

  HallDampers& dampers;
  Integers z;
  Integers ofLast;
  Integers ofComb;
};

/// A register of each comb. Of one with two halves, first all lower ones and then all upper ones.
template <typename R>
void damp(HallDampers& dampers, Combs<lanes::SamplesIn<R>>& combs) {
  if constexpr (requires { typename R::Half; }) {
    EightDamped<typename R::Half> eight(dampers);
    Combs<lanes::SamplesIn<typename R::Half>> lower;
    Combs<lanes::SamplesIn<typename R::Half>> upper;
    for (std::size_t k = 0; k < kHallLanes; ++k) {
      lower[k].v = R::lower(combs[k].v);
      upper[k].v = R::upper(combs[k].v);
    }
    eight.damp(lower);
    eight.damp(upper);
    eight.finish();
    for (std::size_t k = 0; k < kHallLanes; ++k) {
      combs[k].v = R::joined(lower[k].v, upper[k].v);
    }
  } else {
    EightDamped<R> eight(dampers);
    eight.damp(combs);
    eight.finish();
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
