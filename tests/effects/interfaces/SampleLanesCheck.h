// Compares the operations of one kind of sample lanes with those of OneSample. A template, so that the test can compile
// it with the instructions of each kind.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "effects/interfaces/LaneRun.h"

namespace tesh::bramel::plugin::sivray::effects {

using SampleRow = std::array<std::int16_t, 16>;
using LaneResults = std::array<SampleRow, 17>;
using WordRow = std::array<std::int32_t, 8>;
using WordResults = std::array<WordRow, 14>;

/// The templates below, compiled for AVX2.
void operateAvx2(const SampleRow& a, const SampleRow& b, const std::array<int, 4>& numbers, LaneResults& results);
void operateOnWordsAvx2(const WordRow& a, const WordRow& b, std::int16_t factor, WordResults& results);
bool comesRoundTheRingAvx2(const std::int16_t* samples);

/// Returns the results of all operations on samples `a` and `b` with a gain, two weights and a fraction, one in each
/// row.
template <typename Samples>
void operate(const SampleRow& a, const SampleRow& b, const std::array<int, 4>& numbers, LaneResults& results) {
  const auto [gain, first, second, fraction] = numbers;
  const typename Samples::Weights weights(first, second);
  const typename Samples::Boost boost((std::abs(gain) * 4) | (fraction & 3));
  const typename Samples::Gain half(16383);
  std::int16_t previous = 77;
  for (unsigned i = 0; i < a.size(); i += Samples::kCount) {
    const auto x = Samples::load(&a[i]);
    const auto y = Samples::load(&b[i]);
    const auto wide = weightedSum(x, y, weights);
    using Words = typename Samples::Words;
    Words words[Samples::kWords];
    Words distances[Samples::kWords];
    Words beyond[Samples::kWords];
    for (unsigned w = 0; w < Samples::kWords; ++w) {
      words[w] = Words::after(static_cast<std::int32_t>(i + w * Words::kCount) * (gain / 16), gain / 16);
      distances[w] = Words::all(40000);
      beyond[w] = words[w] + distances[w];
    }
    std::size_t row = 0;
    for (const Samples& result :
         {sum(x, y), difference(x, y), mul15(x, typename Samples::Gain(gain)), mul15(x, y), leak(x),
          (wide.template shiftedRight<3>() - (wide + wide).template shiftedRight<7>())
              .template shiftedRight<9>()
              .saturated(),
          between(x, y, typename Samples::template Fraction<15>(fraction)),
          between(x, y, typename Samples::template Fraction<12>(fraction >> 3)), nearerZeroWhereEqual(x, y),
          oneLater(x, previous), weightedSum(x, y, y, x).template shiftedRight<16>().packed(), boosted(x, boost),
          mul15(x, half) + mul15(y, half), mul15(x, half) - mul15(y, half), Samples::of(words),
          Samples::lowerHalvesOf(beyond) - Samples::lowerHalvesOf(distances),
          wide.template shiftedRight<9>().narrowed()}) {
      result.store(&results[row++][i]);
    }
  }
}

/// As above for 32-bit words; products are of unsigned words.
template <typename Words>
void operateOnWords(const WordRow& a, const WordRow& b, std::int16_t factor, WordResults& results) {
  using namespace cofu::core;
  for (unsigned i = 0; i < a.size(); i += Words::kCount) {
    const auto x = Words::load(&a[i]);
    const auto y = Words::load(&b[i]);
    const std::int32_t phase = wrapAdd(a[0], wrapMul(b[0], static_cast<std::int32_t>(i)));
    const Words distance = magnitude(x);
    std::size_t row = 0;
    for (const Words& result : {Words::after(phase, b[0]), x + y, x - y, distance, smaller(x, y), product<32>(x, y),
                                product<47>(x, y), product<15>(product<47>(distance, distance), magnitude(y)),
                                timesShort(x.template shiftedRight<16>(), factor), x.template shiftedRightUnsigned<9>(),
                                x.template shiftedLeft<9>(), x * y, x & y, leak(x.template shiftedRight<16>())}) {
      result.store(&results[row++][i]);
    }
  }
}

/// Writes and reads `samples` at every position of a small ring buffer. Returns whether all come back unchanged.
template <typename Samples>
bool comesRoundTheRing(const std::int16_t* samples) {
  constexpr unsigned kLength = 32;
  for (unsigned position = 0; position < 3 * kLength; ++position) {
    std::array<std::int16_t, kLength> ring{};
    storeToRing<kLength>(ring.data(), position, Samples::load(samples));
    std::array<std::int16_t, Samples::kCount> read{};
    loadFromRing<Samples, kLength>(ring.data(), position - 4 * kLength).store(read.data());
    for (unsigned i = 0; i < Samples::kCount; ++i) {
      if (ring[(position + i) % kLength] != samples[i] || read[i] != samples[i]) {
        return false;
      }
    }
  }
  return true;
}

}  // namespace tesh::bramel::plugin::sivray::effects
