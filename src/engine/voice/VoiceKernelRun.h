// The voice chain for all lanes of a vector, as templates over the lane operations of an instruction set. Each kernel's
// source file includes it and compiles it for its own set, so everything here has internal linkage.
//
// Between the stages samples fit 16 bits, and so do gains. A product of both is therefore one multiply of 16-bit words:
// the gain's high word is 0, so the sample's high word, its sign, adds nothing. A gain g of 32768 to 65535 would not
// fit; there (g * x) >> 15 is computed as x + (((g - 32768) * x) >> 15), which is equal, because x is a whole number.
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

/// The buses that the lanes of a run send to.
enum class Buses : std::uint8_t { dry, effect, both };

/// A step of four ramps, with the 32-bit multiply of the instruction set: the law of RampBank's plain step.
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

/// The chain for one vector of lanes. Holds the lanes' state in registers from construction to `finish`. `Fading` says
/// whether a lane has a release fade, `Fed` which buses it computes.
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

  /// Loads the gains that the ramps have written.
  void loadGains() {
    // c of the low boost, Q15: 0.8 at a rate of 39062.5 Hz, brought to 44100 Hz as 0.79999995^(39062.5 / 44100).
    constexpr std::int32_t kBoostCoefficient = 26891;
    const Vec lowWord = L::all(0xFFFF);
    const Vec boostGain = L::bitAnd(lanes(bank.lowBoostGain), lowWord);
    const Vec boosted = scaled(boostGain, L::all(kBoostCoefficient));
    feedback = boostGain;
    input = L::bitAnd(L::sub(L::all(-1), boosted), lowWord);  // 32767 - boosted - 32768: the gain above 1.0
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

  /// Computes one frame: the sums of all lanes on the four channels.
  [[gnu::always_inline]] __m128i frame() {
    Vec l;
    Vec r;
    readWave(l, r);
    punchStage(l, r);
    l = scaled(l, envelope);
    r = scaled(r, envelope);
    lowBoost(l, r);
    // Level: its gain has 8192 for 1.0.
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

  /// Stores the changed state back into the bank, except the read positions, which the caller advances.
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

  /// Linear interpolation between the frame at the position, p, and the next one, q, then 12 dB less: (p + (((q - p) *
  /// fraction) >> 12)) >> 2, as one shift of p * (4096 - fraction) + q * fraction.
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

  /// A gain of 1 + punch / 4096. Punch falls by 32696 / 32768 a sample, a time constant of 455 samples (10 ms), to 16.
  void punchStage(Vec& l, Vec& r) {
    punch = L::maxOfWords(scaled(punch, L::all(32696)), L::all(16));
    l = L::add(l, L::template shiftRight<12>(L::wordProducts(l, punch)));
    r = L::add(r, L::template shiftRight<12>(L::wordProducts(r, punch)));
    L::clip(l, r);
  }

  /// A one-pole low-pass whose input gain shrinks as its feedback grows: y = (1 - c * g) * x + g * y, with c above.
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

/// A frame with its channels limited to -32767 .. 32767.
inline __m128i clippedFrame(__m128i channels) {
  const __m128i words = _mm_max_epi16(_mm_packs_epi32(channels, channels), _mm_set1_epi16(-32767));
  return _mm_srai_epi32(_mm_unpacklo_epi16(words, words), 16);
}

/// Renders all frames of a run for one vector of lanes, with no ramp moving. The first vector writes the output, a
/// second one adds to it, and the last one limits it.
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

/// Renders a run in which no ramp moves, one vector of lanes after the other.
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

/// Two chains of four lanes with the interface of one chain.
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

/// Renders frames while ramps move, until one has reached its target or a watched fade has closed. `Four` are the lane
/// operations for the ramps.
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

/// Chooses how to render a run: one or two quads, ramps moving or not. `Four` are the operations on four lanes, `Wide`
/// those on the widest vector, four or eight lanes.
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
