// The chain of stages for one voice, four frames at a time: its lanes are consecutive frames. Only punch and low boost
// depend on the previous frame. Included by VoiceKernelRun, so everything here has internal linkage.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "core/FixedPoint.h"
#include "engine/voice/VoiceChain.h"

namespace tesh::bramel::plugin::sivray {
namespace {

/// For runs without moving ramps, fades and taps.
template <typename L, ChainNeeds Needs>
class FrameChain : VoiceChain<L, Needs> {
  static_assert(Needs.frames && !Needs.fade && !Needs.tap && L::kLanes == 4);
  using Base = VoiceChain<L, Needs>;

 public:
  using Vec = typename L::Integers;

  SIVRAY_KERNEL_INLINE FrameChain(VoiceBank& voiceBank, const VoiceRun& run, int voiceLane)
      : Base(voiceBank, run, voiceLane),
        stride(run.step[Base::first]),
        start(voiceBank.positionQ12[Base::first]),
        punchNow(voiceBank.punchCurrent[Base::first]),
        feedsBackHalf(voiceBank.lowBoostGain[Base::first] >= kHalf) {
    place(start, L::kLanes);
    Base::step = L::all32(wrapMul(stride, L::kLanes));
    Base::weightStep = Base::stepOfWeights(Base::step);
  }

  /// The words of the next four frames for each fed bus: left and right of the first frame, of the second, and so on.
  SIVRAY_KERNEL_INLINE void next(Vec& toDry, Vec& toEffect) {
    const Vec x = sound(lowBoost(wave()));
    Base::peaks = L::max16(Base::peaks, L::abs16(x));
    send(x, toDry, toEffect);
  }

  /// As above, for the run's last `count` frames, 1 to 3. The remaining lanes repeat the last frame, so that nothing
  /// beyond the wave is read; their words have no meaning.
  SIVRAY_KERNEL_INLINE void last(int count, Vec& toDry, Vec& toEffect) {
    place(L::first32(Base::position), count);
    const Vec boosted = lowBoost(wave());
    const auto ofLast = [count](Vec v) {
      alignas(L::kBytes) std::int32_t words[L::kLanes];
      L::storeAligned(words, v);
      return words[count - 1];
    };
    Base::boostState = L::all32(ofLast(boosted));
    punchNow = ofLast(Base::punch);
    const Vec x = sound(boosted);
    const Vec isFrame = L::greater32(L::all32(count), L::four32(0, 1, 2, 3));
    Base::peaks = L::max16(Base::peaks, L::abs16(L::bitAnd(L::packed32(isFrame, isFrame), x)));
    send(x, toDry, toEffect);
  }

  /// Stores the changed state in the bank, after `frames` frames in total.
  void finish(int frames) {
    VoiceBank& voices = Base::bank;
    const std::size_t lane = Base::first;
    voices.positionQ12[lane] = wrapAdd(start, wrapMul(stride, frames));
    voices.punchCurrent[lane] = Needs.punch ? punchNow : kPunchEnd;
    voices.boostState[lane] = L::first32(Base::boostState);
    if ((voices.meterEnabled[lane] | voices.meterRestart[lane]) != 0) {
      alignas(L::kBytes) std::int16_t words[2 * L::kLanes];
      L::storeAligned(words, Base::peaks);
      voices.peakLeft[lane] = *std::max_element(words, words + L::kLanes);
      voices.peakRight[lane] = *std::max_element(words + L::kLanes, words + 2 * L::kLanes);
    }
    voices.meterRestart[lane] = 0;
  }

 private:
  static constexpr std::int32_t kHalf = 16384;

  /// Sets up lanes for frames from position `from` on; only the first `count` differ.
  void place(std::int32_t from, int count) {
    const auto at = [=, this](int frame) { return wrapAdd(from, wrapMul(stride, std::min(frame, count - 1))); };
    Base::position = L::four32(at(0), at(1), at(2), at(3));
    Base::weights = Base::weightsOf(Base::position);
  }

  Vec wave() {
    Vec left;
    Vec right;
    Base::readWave(left, right);
    if constexpr (Needs.punch) {
      const auto nextPunch = [this] {
        return punchNow = std::max(cofu::core::mul15(punchNow, Base::kPunchKept), kPunchEnd);
      };
      alignas(L::kBytes) std::int32_t words[L::kLanes];
      std::generate_n(words, L::kLanes, nextPunch);
      Base::punch = L::loadAligned(words);
    }
    return Base::enveloped(Base::punchedWords(left, right));
  }

  /// The low boost of VoiceChain, one frame after the other.
  Vec lowBoost(Vec x) { return feedsBackHalf ? fedBack<true>(x) : fedBack<false>(x); }

  template <bool Half>
  Vec fedBack(Vec x) {
    const Vec input = Base::boostInput(x);
    const Vec above = L::bitAnd(x, Base::boostInputAbove);
    const Vec y0 = fedFrame<Half, 0>(input, above);
    const Vec y1 = fedFrame<Half, 1>(input, above);
    const Vec y2 = fedFrame<Half, 2>(input, above);
    const Vec y3 = fedFrame<Half, 3>(input, above);
    return L::zipLow64(L::zipLow32(y0, y1), L::zipLow32(y2, y3));
  }

  /// Computes one frame, in all lanes at once.
  template <bool Half, int Frame>
  Vec fedFrame(Vec input, Vec above) {
    Vec& state = Base::boostState;
    Vec feedback = L::mulHigh16(state, Base::boostFeedback.factor);
    if constexpr (Half) {
      feedback = L::add16(feedback, state);
    }
    Vec sum = L::addLimited16(L::template inAllLanes32<Frame>(input), feedback);
    if constexpr (Needs.punch) {
      sum = L::addLimited16(sum, L::template inAllLanes32<Frame>(above));
    }
    state = Base::limitedLow(sum);
    return state;
  }

  Vec sound(Vec boosted) const { return Base::pan(Base::level(boosted)); }

  static std::int32_t wrapAdd(std::int32_t a, std::int32_t b) { return cofu::core::wrapAdd(a, b); }
  static std::int32_t wrapMul(std::int32_t a, std::int32_t b) { return cofu::core::wrapMul(a, b); }

  void send(Vec x, Vec& toDry, Vec& toEffect) const {
    if constexpr (Needs.fed != Buses::effect) {
      toDry = L::zippedHalves16(Base::dry(x));
    }
    if constexpr (Needs.fed != Buses::dry) {
      toEffect = L::zippedHalves16(Base::effect(x));
    }
  }

  std::int32_t stride;
  std::int32_t start;
  std::int32_t punchNow;
  bool feedsBackHalf;  ///< The low boost feeds back at least half of its last output.
};

}  // namespace
}  // namespace tesh::bramel::plugin::sivray
