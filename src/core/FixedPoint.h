// The integer arithmetic of the engine and its effects: products and sums that wrap at 32 bits, arithmetic shifts,
// saturation on the 16-bit scale. Wrapping is done in unsigned arithmetic, so that it is defined behaviour.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>

namespace tesh::cofu::core {

/// The largest sample value; as a Q15 gain it stands for 1.0.
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

/// |a|. The lowest value, -2^31, has no positive counterpart and stays as it is.
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

/// Limits to -32767 .. 32767: the engine's samples never take the value -32768.
constexpr std::int32_t saturate(std::int32_t x) { return std::clamp(x, -kFullScale, kFullScale); }

/// (v * -32766) >> 15: inverts the sign and scales by 1 - 2 / 32768, so that a signal in a feedback loop decays.
constexpr std::int32_t leak(std::int32_t v) { return mul15(v, -32766); }

}  // namespace tesh::cofu::core
