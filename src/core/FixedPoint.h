// The integer arithmetic of the engine and its effects: products and sums that wrap at 32 bits, arithmetic shifts,
// saturation on the 16-bit scale. Wrapping is done in unsigned arithmetic, so that it is defined behaviour.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>

namespace tesh::cofu::core {

/// Full scale of a sample and 1.0 of a Q15 gain.
inline constexpr std::int32_t kFullScale = 32767;

constexpr std::int32_t wrapAdd(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

constexpr std::int32_t wrapSub(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

constexpr std::int32_t wrapMul(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}

constexpr std::int32_t wrapNegate(std::int32_t a) { return wrapSub(0, a); }

/// |a|, with the one value that has no positive counterpart left as it is.
constexpr std::int32_t wrapAbs(std::int32_t a) { return a < 0 ? wrapNegate(a) : a; }

constexpr std::int32_t wrapShiftLeft(std::int32_t a, int bits) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) << bits);
}

/// (a * b) >> Bits with a product that wraps at 32 bits and an arithmetic shift.
template <int Bits>
constexpr std::int32_t mulShift(std::int32_t a, std::int32_t b) {
  return wrapMul(a, b) >> Bits;
}

/// The product of a sample and a Q15 gain.
constexpr std::int32_t mul15(std::int32_t a, std::int32_t b) { return mulShift<15>(a, b); }

/// Limits to -32767 .. 32767; -32768 is not a sample value of this engine.
constexpr std::int32_t saturate(std::int32_t x) { return std::clamp(x, -kFullScale, kFullScale); }

/// (v * -32766) >> 15: turns the sign and takes a little off, so that what goes round a loop dies out.
constexpr std::int32_t leak(std::int32_t v) { return mul15(v, -32766); }

}  // namespace tesh::cofu::core
