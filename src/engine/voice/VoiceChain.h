// The chain of stages that every voice passes for every frame, as a template over the lanes of an instruction set, see
// VoiceLanes.h. Included by VoiceKernelRun, so everything here has internal linkage and is compiled once per
// instruction set.
//
// Samples and gains are words of 16 bits, the left and right samples of all lanes in one vector. A word operation gives
// the high half of a product, and (g * x) >> 15 is the high half of 2g * x. Where 2g does not fit a word, the word
// holds 2g - 65536, whose product is short of exactly x: see WordGain.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

#include "engine/voice/VoiceBank.h"
#include "engine/voice/VoiceKernel.h"

namespace tesh::bramel::plugin::sivray {
namespace {

/// Which stages a run needs. A punch at rest has fallen to its final value in all lanes.
struct ChainNeeds {
  bool fade = true;
  bool punch = true;
  Buses fed = Buses::both;
  bool tap = false;
  bool frames = false;  ///< Lanes are frames of one voice, see FrameChain.h.
};

/// Q15 gains of 0 to 32767 for 16-bit words: (g * x) >> 15 is the high half of `factor` * x, plus x where `kept` is -1.
template <typename L>
struct WordGain {
  using Vec = typename L::Integers;

  Vec factor;
  Vec kept;

  static WordGain of(Vec gain) {
    const Vec factor = L::add16(gain, gain);
    return {factor, L::template shiftRight16<15>(factor)};
  }
  Vec operator()(Vec x) const { return L::add16(L::mulHigh16(x, factor), L::bitAnd(x, kept)); }
};

inline constexpr std::int32_t kPunchEnd = 16;  ///< The final value of the punch.

/// For everything that runs once per frame, and for the functions that hold the chain: inlined, so that the chain stays
/// in registers. Sanitizer builds call it instead, because speed does not matter there and compiling takes less than
/// half as long.
#if defined(SIVRAY_SANITIZED)
#define SIVRAY_KERNEL_INLINE [[gnu::noinline]]
#else
#define SIVRAY_KERNEL_INLINE [[gnu::always_inline]]
#endif

/// The chain for one vector of lanes. Keeps the lanes' state in registers from construction to `finish`; a constructor
/// that is called instead of inlined would keep it in memory.
template <typename L, ChainNeeds Needs>
class VoiceChain {
 public:
  using Lanes = L;
  using Vec = typename L::Integers;
  static constexpr Buses kFed = Needs.fed;

  SIVRAY_KERNEL_INLINE VoiceChain(VoiceBank& voiceBank, const VoiceRun& run, int firstLane)
      : bank(voiceBank),
        first(static_cast<std::size_t>(firstLane)),
        samples(run.samples),
        tap(Needs.tap ? run.taps + 2 * firstLane : nullptr),
        watched(lanes(run.watched)),
        step(lanes(run.step)),
        base(lanes(voiceBank.slotBase)),
        position(lanes(voiceBank.positionQ12)),
        weights(weightsOf(position)),
        weightStep(stepOfWeights(step)),
        punch(lanes(voiceBank.punchCurrent)),
        boostState(lanes(voiceBank.boostState)) {
    const Vec restart = lanes(bank.meterRestart);
    peaks = L::packed32(L::andNot(restart, lanes(bank.peakLeft)), L::andNot(restart, lanes(bank.peakRight)));
    loadGains();
  }

  /// Whether the punch of all lanes is at rest. Once it is, it stays so.
  static bool punchRests(const VoiceBank& bank, int firstLane) {
    return L::isZero(L::greater32(L::loadAligned(bank.punchCurrent.data() + firstLane), L::all32(kPunchEnd)));
  }

  /// Loads all gains that ramps write.
  SIVRAY_KERNEL_INLINE void loadGains() {
    loadEnvelope();
    loadFade();
    loadOtherGains();
  }

  /// Loads the gains that moving ramps may have written; `moving` as in VoiceRun.
  SIVRAY_KERNEL_INLINE void loadMovedGains(unsigned moving) {
    if ((moving & rampBit(LaneRamp::envelope)) != 0) {
      loadEnvelope();
    }
    if ((moving & rampBit(LaneRamp::fade)) != 0) {
      loadFade();
    }
    if ((moving & ~(rampBit(LaneRamp::envelope) | rampBit(LaneRamp::fade))) != 0) {
      loadOtherGains();
    }
  }

  /// Whether a watched fade has closed.
  bool fadeClosed() const {
    if constexpr (Needs.fade) {
      return L::overlap(L::greater32(L::all32(kFadeClosed), amp), watched);
    }
    return false;
  }

  /// Computes one frame: per lane pair, sums of left and of right words. See L::channelSums.
  SIVRAY_KERNEL_INLINE void frame(Vec& toDry, Vec& toEffect) {
    const Vec x = pan(level(lowBoost(enveloped(nextWave()))));
    peaks = L::max16(peaks, L::abs16(x));
    const Vec faded = Needs.fade ? fade(x) : x;
    if constexpr (Needs.tap) {
      L::storeAligned(tap, faded);
      tap += kTapWords;
    }
    if constexpr (Needs.fed != Buses::effect) {
      toDry = L::pairSums16(dry(faded), L::all16(1));
    }
    if constexpr (Needs.fed != Buses::dry) {
      toEffect = L::pairSums16(effect(faded), L::all16(1));
    }
  }

  /// Stores the changed state in the bank.
  SIVRAY_KERNEL_INLINE void finish() {
    put(bank.positionQ12, position);
    put(bank.punchCurrent, Needs.punch ? punch : L::all32(kPunchEnd));
    put(bank.boostState, boostState);
    const Vec metered = L::bitOr(lanes(bank.meterEnabled), lanes(bank.meterRestart));
    putWhere(metered, bank.peakLeft, L::zipLow16(peaks, L::zero()));
    putWhere(metered, bank.peakRight, L::zipHigh16(peaks, L::zero()));
    put(bank.meterRestart, L::zero());
  }

 protected:
  /// Share of the punch that each sample keeps, Q15: a time constant of 455 samples (10 ms).
  static constexpr std::int32_t kPunchKept = 32696;

  Vec lanes(const LaneWords& words) const {
    return Needs.frames ? L::all32(words[first]) : L::loadAligned(words.data() + first);
  }
  void put(LaneWords& words, Vec v) { L::storeAligned(words.data() + first, v); }
  void putWhere(Vec mask, LaneWords& words, Vec v) {
    put(words, L::bitOr(L::bitAnd(mask, v), L::andNot(mask, lanes(words))));
  }

  /// Per lane (g * x) >> 15 of low words; the high word of `gain` must be 0.
  static Vec scaledLanes(Vec x, Vec gain) { return L::template shiftRight32<15>(L::pairSums16(x, gain)); }

  /// Copies the low word of each lane to both words.
  static Vec inBothWords(Vec v) { return L::bitOr(L::bitAnd(v, L::all32(0xFFFF)), L::template shiftLeft32<16>(v)); }

  static Vec limitedLow(Vec words) { return L::max16(words, L::all16(-32767)); }

  /// The interpolation weights, shifted up by 4 bits from Q12: 4095 less the fraction in the low word, the fraction in
  /// the high word. A step is added to both words, which wrap like the fraction.
  static Vec weightsOf(Vec position) {
    return L::bitOr(L::template shiftLeft32<20>(position),
                    L::andNot(L::template shiftLeft32<4>(position), L::all32(0xFFF0)));
  }

  static Vec stepOfWeights(Vec step) {
    return L::bitOr(L::template shiftLeft32<20>(step),
                    L::bitAnd(L::sub32(L::zero(), L::template shiftLeft32<4>(step)), L::all32(0xFFFF)));
  }

  SIVRAY_KERNEL_INLINE void loadEnvelope() {
    const Vec gain = lanes(bank.envelopeGain);
    envelope = L::bitOr(gain, L::template shiftLeft32<16>(gain));
    wideEnvelope = WordGain<L>::of(envelope);
  }

  SIVRAY_KERNEL_INLINE void loadFade() {
    if constexpr (Needs.fade) {
      amp = lanes(bank.fadeAmp);
      const Vec square = scaledLanes(amp, amp);
      const Vec enabled = lanes(bank.fadeEnabled);
      const Vec fades = L::packed32(enabled, enabled);
      fade = WordGain<L>::of(L::packed32(square, square));
      fade.factor = L::bitAnd(fade.factor, fades);
      fade.kept = L::bitOr(fade.kept, L::andNot(fades, L::all32(-1)));
    }
  }

  SIVRAY_KERNEL_INLINE void loadOtherGains() {
    loadBoost();
    levelLeft = lanes(bank.levelGain);
    levelRight = L::template shiftLeft32<16>(levelLeft);
    const Vec right = lanes(bank.rightGain);
    pan = WordGain<L>::of(L::packed32(L::sub32(L::all32(32767), right), right));
    dry = WordGain<L>::of(L::packed32(lanes(bank.gainDry), lanes(bank.gainDry)));
    effect = WordGain<L>::of(L::packed32(lanes(bank.gainEffect), lanes(bank.gainEffect)));
  }

  /// The low boost's gains: g of its last output, -16384 to 32735, and h = 32767 - c * g of its input, 5904 to 46213.
  SIVRAY_KERNEL_INLINE void loadBoost() {
    // c, Q15: 0.8 at a rate of 39062.5 Hz, brought to 44100 Hz as 0.79999995^(39062.5 / 44100).
    constexpr std::int32_t kBoostCoefficient = 26891;
    const Vec g = inBothWords(lanes(bank.lowBoostGain));
    const Vec low = L::bitAnd(g, L::all32(0xFFFF));
    const Vec h = inBothWords(L::sub32(L::all32(32767), scaledLanes(low, L::all32(kBoostCoefficient))));
    boostInput = WordGain<L>::of(h);
    boostInputAbove = L::template shiftRight16<15>(h);
    if constexpr (!Needs.punch) {
      boostInput.kept = L::bitOr(boostInput.kept, boostInputAbove);
    }
    boostFeedback = WordGain<L>::of(g);
    boostFeedback.kept = L::andNot(L::template shiftRight16<15>(g), boostFeedback.kept);
  }

  Vec nextWave() {
    Vec left;
    Vec right;
    readWave(left, right);
    if constexpr (Needs.punch) {
      punch = L::max16(scaledLanes(punch, L::all32(kPunchKept)), L::all32(kPunchEnd));
    }
    return punchedWords(left, right);
  }

  /// Linear interpolation between the frame at the position, p, and the next one, q, then 12 dB less: (p + (((q - p) *
  /// fraction) >> 12)) >> 2, computed as the high word of (p * (4096 - fraction) + q * fraction) * 4. Advances the
  /// position.
  void readWave(Vec& left, Vec& right) {
    const Vec scaled = L::add16(L::template shiftRightUnsigned16<2>(weights), L::all32(4));
    L::framePairs(samples, L::add32(L::template shiftRight32<12>(position), base), left, right);
    left = L::pairSums16(left, scaled);
    right = L::pairSums16(right, scaled);
    position = L::add32(position, step);
    weights = L::add16(weights, weightStep);
  }

  /// The high words of `left` and `right` with a gain of 1 + punch / 4096. Each sample multiplies the punch by 32696 /
  /// 32768, a time constant of 455 samples (10 ms), until it is 16.
  Vec punchedWords(Vec left, Vec right) const {
    if constexpr (Needs.punch) {
      return L::zippedHalves16(limitedLow(L::packed32(punched(left), punched(right))));
    }
    const Vec x = L::uppers16(left, right);
    return L::add16(x, L::template shiftRight16<8>(x));  // 16 / 4096
  }

  Vec punched(Vec products) const {
    const Vec x = L::template shiftRight32<16>(products);
    return L::add32(x, L::template shiftRight32<12>(L::pairSums16(x, punch)));
  }

  /// After a punch at rest, samples are at most 8224, so twice a sample fits a word.
  Vec enveloped(Vec x) const {
    if constexpr (Needs.punch) {
      return wideEnvelope(x);
    }
    return L::mulHigh16(L::add16(x, x), envelope);
  }

  /// A one-pole low-pass whose input gain shrinks as its feedback grows: y = h * x + g * y. If h is below 1.0, both
  /// products fit words, and only their sum is limited. If h is 1.0 or more, g is at most 0; then the excess of the
  /// input's product over x is added to the feedback's product, which fits a word, and x is added last. After a punch
  /// at rest, the whole product of the input fits a word.
  Vec lowBoost(Vec x) {
    Vec sum = L::addLimited16(boostInput(x), boostFeedback(boostState));
    if constexpr (Needs.punch) {
      sum = L::addLimited16(sum, L::bitAnd(x, boostInputAbove));
    }
    boostState = limitedLow(sum);
    return boostState;
  }

  /// The level's gain, whose 1.0 is 8192. From here on words are in split order.
  Vec level(Vec x) const {
    return limitedLow(L::packed32(L::template shiftRight32<13>(L::pairSums16(x, levelLeft)),
                                  L::template shiftRight32<13>(L::pairSums16(x, levelRight))));
  }

  VoiceBank& bank;
  std::size_t first;
  const std::int16_t* samples;
  std::int16_t* tap;
  Vec watched;
  Vec step;
  Vec base;
  Vec position;
  Vec weights;
  Vec weightStep;
  Vec punch;
  Vec boostState;
  Vec peaks;
  Vec envelope;
  WordGain<L> wideEnvelope;
  WordGain<L> boostInput;
  Vec boostInputAbove;  ///< -1 where the input's gain is 1.0 or more.
  WordGain<L> boostFeedback;
  Vec levelLeft;   ///< In the low words.
  Vec levelRight;  ///< In the high words.
  WordGain<L> pan;
  Vec amp;
  WordGain<L> fade;
  WordGain<L> dry;
  WordGain<L> effect;
};

/// Two chains of four lanes with the interface of one chain.
template <typename Four, ChainNeeds Needs>
class ChainPair {
  using Chain = VoiceChain<Four, Needs>;

 public:
  using Lanes = Four;
  using Vec = typename Four::Integers;
  static constexpr Buses kFed = Needs.fed;

  SIVRAY_KERNEL_INLINE ChainPair(VoiceBank& bank, const VoiceRun& run, int)
      : low(bank, run, 0), high(bank, run, kLanesPerQuad) {}

  static bool punchRests(const VoiceBank& bank, int) {
    return Chain::punchRests(bank, 0) && Chain::punchRests(bank, kLanesPerQuad);
  }
  void loadMovedGains(unsigned moving) {
    low.loadMovedGains(moving);
    high.loadMovedGains(moving);
  }
  bool fadeClosed() const { return low.fadeClosed() || high.fadeClosed(); }

  SIVRAY_KERNEL_INLINE void frame(Vec& toDry, Vec& toEffect) {
    Vec highDry;
    Vec highEffect;
    low.frame(toDry, toEffect);
    high.frame(highDry, highEffect);
    if constexpr (Needs.fed != Buses::effect) {
      toDry = Four::add32(toDry, highDry);
    }
    if constexpr (Needs.fed != Buses::dry) {
      toEffect = Four::add32(toEffect, highEffect);
    }
  }

  void finish() {
    low.finish();
    high.finish();
  }

 private:
  Chain low;
  Chain high;
};

}  // namespace
}  // namespace tesh::bramel::plugin::sivray
