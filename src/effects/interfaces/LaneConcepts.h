// Concepts that each kind of lanes must satisfy, so that an incomplete one does not compile. OneSample.h describes the
// operations.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <concepts>
#include <cstdint>

namespace tesh::bramel::plugin::sivray::effects::lanes {

// clang-format off
/// 32-bit lanes: phases, and values that a law computes from them before it converts them to samples.
template <typename W>
concept WordKind = requires(W a, const W b, std::int32_t* words, const std::int16_t* samples) {
  { W::kCount } -> std::same_as<const unsigned&>;
  { W::all(1) } -> std::same_as<W>;  { W::after(1, 1) } -> std::same_as<W>;
  { W::load(words) } -> std::same_as<W>;  { W::ofSamples(samples) } -> std::same_as<W>;  b.store(words);
  { b.mapped([](std::int32_t word) { return word; }) } -> std::same_as<W>;
  { b.template shiftedRight<1>() } -> std::same_as<W>;  { b.template shiftedLeft<1>() } -> std::same_as<W>;
  { b.template shiftedRightUnsigned<1>() } -> std::same_as<W>;  { b.lowerHalves() } -> std::same_as<W>;
  { a + b } -> std::same_as<W>;  { a - b } -> std::same_as<W>;  { a * b } -> std::same_as<W>;
  { a & b } -> std::same_as<W>;  { magnitude(a) } -> std::same_as<W>;  { leak(a) } -> std::same_as<W>;
  { smaller(a, b) } -> std::same_as<W>;  { larger(a, b) } -> std::same_as<W>;
  { product<1>(a, b) } -> std::same_as<W>;  { timesShort(a, std::int16_t{1}) } -> std::same_as<W>;
  { isAnyNegative(a) } -> std::same_as<bool>;
};

/// Samples with 32 bits each.
template <typename Wide, typename S>
concept WideKind = requires(Wide a, const Wide b) {
  { a + b } -> std::same_as<Wide>;  { a - b } -> std::same_as<Wide>;
  { b.template shiftedRight<1>() } -> std::same_as<Wide>;
  { b.saturated() } -> std::same_as<S>;  { b.packed() } -> std::same_as<S>;  { b.narrowed() } -> std::same_as<S>;
};

/// Lanes of 16 bits: consecutive samples of a channel.
template <typename S>
concept SampleKind = WordKind<typename S::Words> && WideKind<typename S::Wide, S> &&
                     requires(S a, const S b, const typename S::Words* words, std::int16_t* samples,
                              std::int16_t& previous) {
  { S::kCount } -> std::same_as<const unsigned&>;
  requires S::kWords * S::Words::kCount == S::kCount;
  { S::all(std::int16_t{1}) } -> std::same_as<S>;
  { S::of(words) } -> std::same_as<S>;  { S::lowerHalvesOf(words) } -> std::same_as<S>;
  { S::load(samples) } -> std::same_as<S>;  b.store(samples);
  { a + b } -> std::same_as<S>;  { a - b } -> std::same_as<S>;
  { sum(a, b) } -> std::same_as<S>;  { difference(a, b) } -> std::same_as<S>;  { leak(a) } -> std::same_as<S>;
  { mul15(a, typename S::Gain(1)) } -> std::same_as<S>;  { mul15(a, b) } -> std::same_as<S>;
  { boosted(a, typename S::Boost(1)) } -> std::same_as<S>;
  { weightedSum(a, b, typename S::Weights(1, 1)) } -> std::same_as<typename S::Wide>;
  { weightedSum(a, b, a, b) } -> std::same_as<typename S::Wide>;
  { between(a, b, typename S::template Fraction<15>(1)) } -> std::same_as<S>;
  { nearerZeroWhereEqual(a, b) } -> std::same_as<S>;  { oneLater(a, previous) } -> std::same_as<S>;
};
// clang-format on

}  // namespace tesh::bramel::plugin::sivray::effects::lanes
