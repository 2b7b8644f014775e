// The voice chain for all lanes of a vector, written once over a lane type. Signals stay within the 16-bit scale
// between the stages and gains fit 16 bits, so that every product of a sample and a gain is one multiply of words: the
// gain with nothing in its high word, the sample with its sign there.
//
// A gain g from 32768 to 65535 does not fit. There (g * x) >> 15 is computed as x + (((g - 32768) * x) >> 15), which is
// the same, since the part that is split off is a whole number.
//
// Each kernel's translation unit includes this and its lane types with its own target set; nothing of it
// may be shared with a unit for other processors, so that all of it has internal linkage.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <emmintrin.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "engine/voice/RampBank.h"
#include "engine/voice/VoiceBank.h"
#include "engine/voice/VoiceKernel.h"

namespace tesh::bramel::plugin::sivray {
namespace {

/// Buses that a run has to feed.
enum class Buses : std::uint8_t { dry, effect, both };

/// The ramps' step with the four-lane multiply of a lane type.
template <typename L>
struct RampStep {
  static int step(RampBank::Group& group) {
    const __m128i target = LanesSse2::load(group.target.data());
    const __m128i distance = _mm_sub_epi32(LanesSse2::load(group.current.data()), target);
    const __m128i a = _mm_srai_epi32(L::product32(LanesSse2::load(group.rate.data()), distance), 15);
    const __m128i b = _mm_srai_epi32(_mm_sub_epi32(a, _mm_slli_epi32(a, 15)), 15);
    const __m128i current = _mm_add_epi32(target, b);
    LanesSse2::store(group.current.data(), current);
    return _mm_movemask_ps(_mm_castsi128_ps(_mm_cmpeq_epi32(current, target)));
  }
};

/// The chain of one vector of lanes.
template <typename L, bool Fading, Buses Fed>
class VoiceChain {
  using Vec = typename L::Vec;

 public:
  VoiceChain(VoiceBank& voiceBank, const VoiceRun& run, int firstLane)
      : bank(voiceBank),
        first(static_cast<std::size_t>(firstLane)),
        samples(run.samples),
        watched(L::load(run.watched + firstLane)),
        step(L::load(run.step + firstLane)),
        base(lanes(voiceBank.slotBase)),
        position(lanes(voiceBank.positionQ12)),
        punch(lanes(voiceBank.punchCurrent)),
        stateLeft(lanes(voiceBank.stateLeft)),
        stateRight(lanes(voiceBank.stateRight)) {
    const Vec restart = lanes(bank.meterRestart);
    peakLeft = L::andNot(restart, lanes(bank.peakLeft));
    peakRight = L::andNot(restart, lanes(bank.peakRight));
    loadGains();
  }

  /// Takes the gains as the ramps have left them.
  void loadGains() {
    constexpr std::int32_t kBoostCoefficient = 26891;  // 0.79999995^(39062.5 / 44100) in Q15
    const Vec lowWord = L::all(0xFFFF);
    const Vec boostGain = L::bitAnd(lanes(bank.lowBoostGain), lowWord);
    const Vec boosted = scaled(boostGain, L::all(kBoostCoefficient));
    feedback = boostGain;
    input = L::bitAnd(L::sub(L::all(-1), boosted), lowWord);  // 32767 - boosted, less the 32768 split off
    envelope = lanes(bank.envelopeGain);
    level = lanes(bank.levelGain);
    right = lanes(bank.rightGain);
    left = L::sub(L::all(32767), right);
    dry = lanes(bank.gainDry);
    effect = lanes(bank.gainEffect);
    if constexpr (Fading) {
      amp = lanes(bank.fadeAmp);
      const Vec fade = L::sub(scaled(amp, amp), L::all(32768));
      fadeLoss = L::bitAnd(L::bitAnd(fade, lowWord), lanes(bank.fadeEnabled));
    }
  }

  /// Whether a watched fade has closed.
  bool fadeClosed() const {
    if constexpr (Fading) {
      return L::anyLess(amp, L::all(181), watched);
    }
    return false;
  }

  /// One frame: what the lanes add to the four channels.
  [[gnu::always_inline]] __m128i frame() {
    Vec l;
    Vec r;
    readWave(l, r);
    punchStage(l, r);
    l = scaled(l, envelope);
    r = scaled(r, envelope);
    lowBoost(l, r);
    l = L::template shiftRight<13>(L::wordProducts(l, level));
    r = L::template shiftRight<13>(L::wordProducts(r, level));
    L::clip(l, r);
    l = scaled(l, left);
    r = scaled(r, right);
    peakLeft = L::maxOfWords(peakLeft, L::magnitude(l));
    peakRight = L::maxOfWords(peakRight, L::magnitude(r));
    if constexpr (Fading) {
      l = L::add(l, scaled(l, fadeLoss));
      r = L::add(r, scaled(r, fadeLoss));
    }
    return route(l, r);
  }

  /// Puts the moved state back. The position is the caller's to advance.
  void finish() {
    put(bank.punchCurrent, punch);
    put(bank.stateLeft, stateLeft);
    put(bank.stateRight, stateRight);
    const Vec metered = L::bitOr(lanes(bank.meterEnabled), lanes(bank.meterRestart));
    put(bank.peakLeft, L::bitOr(L::bitAnd(metered, peakLeft), L::andNot(metered, lanes(bank.peakLeft))));
    put(bank.peakRight, L::bitOr(L::bitAnd(metered, peakRight), L::andNot(metered, lanes(bank.peakRight))));
    put(bank.meterRestart, L::all(0));
  }

 private:
  Vec lanes(const LaneWords& words) const { return L::load(words.data() + first); }
  void put(LaneWords& words, Vec v) { L::store(words.data() + first, v); }

  static Vec scaled(Vec sample, Vec gain) { return L::template shiftRight<15>(L::wordProducts(sample, gain)); }

  /// p + (((q - p) * fraction) >> 12), then two bits less: the products of p and q with 4096 - fraction and fraction.
  void readWave(Vec& l, Vec& r) {
    const Vec fraction = L::bitAnd(position, L::all(0xFFF));
    const Vec weights = L::sub(L::add(L::template shiftLeft<16>(fraction), L::all(4096)), fraction);
    Vec leftPairs;
    Vec rightPairs;
    L::framePairs(samples, L::add(L::template shiftRight<12>(position), base), leftPairs, rightPairs);
    l = L::template shiftRight<14>(L::wordProducts(leftPairs, weights));
    r = L::template shiftRight<14>(L::wordProducts(rightPairs, weights));
    position = L::add(position, step);
  }

  void punchStage(Vec& l, Vec& r) {
    punch = L::maxOfWords(scaled(punch, L::all(32696)), L::all(16));
    l = L::add(l, L::template shiftRight<12>(L::wordProducts(l, punch)));
    r = L::add(r, L::template shiftRight<12>(L::wordProducts(r, punch)));
    L::clip(l, r);
  }

  void lowBoost(Vec& l, Vec& r) {
    l = L::add(L::add(l, scaled(l, input)), scaled(stateLeft, feedback));
    r = L::add(L::add(r, scaled(r, input)), scaled(stateRight, feedback));
    L::clip(l, r);
    stateLeft = l;
    stateRight = r;
  }

  __m128i route(Vec l, Vec r) const {
    const Vec none = L::all(0);
    if constexpr (Fed == Buses::dry) {
      return L::laneSums(scaled(l, dry), scaled(r, dry), none, none);
    } else if constexpr (Fed == Buses::effect) {
      return L::laneSums(none, none, scaled(l, effect), scaled(r, effect));
    } else {
      return L::laneSums(scaled(l, dry), scaled(r, dry), scaled(l, effect), scaled(r, effect));
    }
  }

  VoiceBank& bank;
  std::size_t first;
  const std::int16_t* samples;
  Vec watched;
  Vec step;
  Vec base;
  Vec position;
  Vec punch;
  Vec stateLeft;
  Vec stateRight;
  Vec peakLeft;
  Vec peakRight;
  Vec envelope;
  Vec feedback;
  Vec input;
  Vec level;
  Vec left;
  Vec right;
  Vec amp;
  Vec fadeLoss;
  Vec dry;
  Vec effect;
};

/// Limits the channels of a frame to -32767 .. 32767.
inline __m128i clippedFrame(__m128i channels) {
  const __m128i words = _mm_max_epi16(_mm_packs_epi32(channels, channels), _mm_set1_epi16(-32767));
  return _mm_srai_epi32(_mm_unpacklo_epi16(words, words), 16);
}

/// Frames with every ramp at rest, for one vector of lanes. Unless it is the first, it adds to what stands in the
/// output.
template <typename L, bool Fading, Buses Fed>
void runResting(const VoiceRun& run, int firstLane) {
  VoiceChain<L, Fading, Fed> chain(*run.bank, run, firstLane);
  auto* output = reinterpret_cast<__m128i*>(run.output);
  auto* const end = output + run.frames;
  if (firstLane + L::kLanes < run.quads * kLanesPerQuad) {
    for (; output != end; ++output) {
      _mm_store_si128(output, chain.frame());
    }
  } else if (firstLane == 0) {
    for (; output != end; ++output) {
      _mm_store_si128(output, clippedFrame(chain.frame()));
    }
  } else {
    for (; output != end; ++output) {
      _mm_store_si128(output, clippedFrame(_mm_add_epi32(_mm_load_si128(output), chain.frame())));
    }
  }
  chain.finish();
}

template <typename L, bool Fading>
int runAtRest(const VoiceRun& run) {
  const VoiceBank& bank = *run.bank;
  std::int32_t dry = 0;
  std::int32_t effect = 0;
  for (std::size_t lane = 0; lane < kVoiceCount; ++lane) {
    const bool audible = bank.levelGain[lane] != 0;
    dry |= audible ? bank.gainDry[lane] : 0;
    effect |= audible ? bank.gainEffect[lane] : 0;
  }
  for (int lane = 0; lane < run.quads * kLanesPerQuad; lane += L::kLanes) {
    if (effect == 0) {
      runResting<L, Fading, Buses::dry>(run, lane);
    } else if (dry == 0) {
      runResting<L, Fading, Buses::effect>(run, lane);
    } else {
      runResting<L, Fading, Buses::both>(run, lane);
    }
  }
  return run.frames;
}

/// Both quads of a lane type with four lanes, behind the face of one chain.
template <typename Chain>
class ChainPair {
 public:
  ChainPair(VoiceBank& bank, const VoiceRun& run, int) : low(bank, run, 0), high(bank, run, kLanesPerQuad) {}

  void loadGains() {
    low.loadGains();
    high.loadGains();
  }
  bool fadeClosed() const { return low.fadeClosed() || high.fadeClosed(); }
  __m128i frame() { return _mm_add_epi32(low.frame(), high.frame()); }
  void finish() {
    low.finish();
    high.finish();
  }

 private:
  Chain low;
  Chain high;
};

/// Frames with ramps moving, until one of them has arrived or a watched fade has closed. `Four` has the ramps'
/// multiply.
template <typename Chain, typename Four>
int runMoving(const VoiceRun& run) {
  Chain chain(*run.bank, run, 0);
  auto* output = reinterpret_cast<__m128i*>(run.output);
  bool arrived = false;
  int done = 0;
  for (;;) {
    _mm_store_si128(output + done, clippedFrame(chain.frame()));
    ++done;
    if (arrived || done == run.frames || chain.fadeClosed()) {
      break;
    }
    arrived = run.ramps->stepAndRetire<RampStep<Four>>();
    chain.loadGains();
  }
  chain.finish();
  return done;
}

/// A run with the lane types of one instruction set: `Four` has four lanes, `Wide` four or eight.
template <typename Four, typename Wide, bool Fading>
int runAny(const VoiceRun& run) {
  using Single = VoiceChain<Four, Fading, Buses::both>;
  using Double =
      std::conditional_t<std::is_same_v<Four, Wide>, ChainPair<Single>, VoiceChain<Wide, Fading, Buses::both>>;
  const bool two = run.quads == kQuadCount;
  if (run.ramps->activeCount() > 0) {
    return two ? runMoving<Double, Four>(run) : runMoving<Single, Four>(run);
  }
  return two ? runAtRest<Wide, Fading>(run) : runAtRest<Four, Fading>(run);
}

template <typename Four, typename Wide>
int runVoices(const VoiceRun& run) {
  return run.fading ? runAny<Four, Wide, true>(run) : runAny<Four, Wide, false>(run);
}

template <typename Four>
bool tickRamps(RampBank& ramps) {
  return ramps.stepAndRetire<RampStep<Four>>();
}

}  // namespace
}  // namespace tesh::bramel::plugin::sivray
