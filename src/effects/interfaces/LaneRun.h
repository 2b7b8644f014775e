// Common code of the laws in sample lanes: access to a ring, and the loop over a run. Templates over the lanes of
// SampleLanes.h, which tells where this header may be included.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/RealTime.h"
#include "effects/interfaces/SampleLanes.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Lanes that begin before a ring's end and continue at its start. A separate function, because this is rare.
template <typename Samples, unsigned kLength, typename Sample>
[[gnu::noinline]] Samples loadAcrossEnd(const Sample* ring, unsigned start) {
  Sample joined[Samples::kCount];
  for (unsigned i = 0; i < Samples::kCount; ++i) {
    joined[i] = ring[(start + i) & (kLength - 1)];
  }
  return Samples::load(joined);
}

template <typename Samples, unsigned kLength, typename Sample>
[[gnu::noinline]] void storeAcrossEnd(Sample* ring, unsigned start, Samples samples) {
  Sample joined[Samples::kCount];
  samples.store(joined);
  for (unsigned i = 0; i < Samples::kCount; ++i) {
    ring[(start + i) & (kLength - 1)] = joined[i];
  }
}

/// Samples, or words, from `position` on in a ring of `kLength`, a power of two. Any position is allowed.
template <typename Samples, unsigned kLength, typename Sample>
inline Samples loadFromRing(const Sample* ring, unsigned position) {
  const unsigned start = position & (kLength - 1);
  if (start <= kLength - Samples::kCount) [[likely]] {
    return Samples::load(ring + start);
  }
  return loadAcrossEnd<Samples, kLength>(ring, start);
}

/// Samples from `near` on, each interpolated towards the one before it by `fraction`.
template <typename Samples, unsigned kLength, typename Fraction>
inline Samples loadBetween(const std::int16_t* ring, unsigned near, Fraction fraction) {
  const unsigned before = (near - 1) & (kLength - 1);
  if (before < kLength - Samples::kCount) [[likely]] {
    return between(Samples::load(ring + before + 1), Samples::load(ring + before), fraction);
  }
  return between(loadFromRing<Samples, kLength>(ring, near), loadFromRing<Samples, kLength>(ring, before), fraction);
}

/// Writes samples from `position` on, in the order in which loadFromRing reads them.
template <unsigned kLength, typename Samples, typename Sample>
inline void storeToRing(Sample* ring, unsigned position, Samples samples) {
  const unsigned start = position & (kLength - 1);
  if (start <= kLength - Samples::kCount) [[likely]] {
    samples.store(ring + start);
  } else {
    storeAcrossEnd<Samples, kLength>(ring, start, samples);
  }
}

/// Mixes both channels to mono, each with a Q15 gain of at most a half.
template <typename Samples>
Samples monoOf(Samples left, Samples right, std::int32_t gain) {
  return weightedSum(left, right, typename Samples::Weights(gain, gain)).template shiftedRight<15>().saturated();
}

/// Applies `stepAs<Samples>(law, left, right)` to as many samples as fill whole registers, in place, and returns their
/// number. Works on a copy of the law, so that the compiler keeps gains and positions in registers.
template <lanes::SampleKind Samples, typename Law>
[[gnu::flatten]] unsigned runLanes(Law& law, std::int16_t* left, std::int16_t* right,
                                   unsigned count) SIVRAY_NONBLOCKING {
  Law now = law;
  unsigned done = 0;
  for (; done + Samples::kCount <= count; done += Samples::kCount) {
    stepAs<Samples>(now, left + done, right + done);
  }
  law = now;
  return done;
}

}  // namespace tesh::bramel::plugin::sivray::effects
