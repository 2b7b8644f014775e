// The frame around the law of an effect with two knobs: takes knob values on any thread, passes the resulting settings
// to the audio thread, moves the smoothed values and runs the law sample by sample.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "core/VectorCode.h"
#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/EffectLaw.h"
#include "effects/interfaces/Knobs.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/interfaces/Silence.h"
#include "effects/interfaces/SivrayFx.h"
#include "effects/interfaces/SivrayFxMemoryUser.h"
#include "effects/interfaces/SmoothedValue.h"
#include "platform/CpuFeatures.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Runs a `Law`, see EffectLaw.h. A law's .cpp file instantiates this template, so that the compiler sees both
/// together; the law's header declares that instantiation `extern`.
template <EffectLaw Law>
class TwoKnobEffect : public SivrayFx {
  static_assert(keepsItsParts<Law>());

 public:
  using Settings = typename Law::Settings;

  TwoKnobEffect() { resetLaw(); }

  /// Settings are applied before samples whose index in the block is a multiple of 64. Not inlined: outside the law's
  /// source file, the compiler would emit a call of the law's functions for every sample.
  [[gnu::noinline]] void process(StereoBlock& block, unsigned count) override {
    if (kParts.sleepsAfter && isZero(block, count) && this->skip(count)) {
      return;
    }
    for (unsigned start = 0; start < count; start += kControlGrid) {
      pending.takeInto(live);
      aim();
      const unsigned run = std::min(count - start, kControlGrid);
      if (restsAtSettings()) {
        playResting(block.left + start, block.right + start, run);
      } else {
        play<false>(block.left + start, block.right + start, run);
      }
      countSilence(run);
    }
  }

  bool skip(unsigned count) override {
    if (count == 0) {
      return true;  // Without a sample, settings are not applied either.
    }
    if constexpr (kParts.sleepsAfter) {
      pending.takeInto(live);
      if (silentSamples < kLongestLine || !law.isSilent(0) || !restsAtSettings()) {
        return false;
      }
      aim();
      law.skip(live, count);
      return true;
    } else {
      return false;
    }
  }

  /// Takes Edit1 and Edit2, masked to 7 bits, and returns the masked value; returns 0 for other indices.
  int setParameter(unsigned index, int value) override {
    if (index != kEdit1 && index != kEdit2) {
      return 0;
    }
    const int knob = knobOf(value);
    (index == kEdit1 ? edit1 : edit2) = knob;
    postSettings();
    return knob;
  }

  void setTempo(int tempoTenths) override {
    if constexpr (kParts.followsTempo) {
      tempo = tempoTenths;
      postSettings();
    }
  }

  void reset() override {
    if constexpr (kParts.resetTakesPending) {
      pending.takeInto(live);
    }
    resetLaw();
  }

  void setImmediate(bool on) override { immediate = on; }

  void notify(int code) override {
    if (code == kRestart || kParts.otherRestart == code) {
      this->reset();
    }
  }

 protected:
  /// Posts the settings for the present knob values. Any thread.
  void postSettings() {
    pending.postMade([this] { return Law::settingsOf({edit1, edit2, tempo}); });
  }

  static constexpr LawParts kParts = Law::kParts;
  static constexpr unsigned kLongestLine = kParts.sleepsAfter.value_or(0);

  Law law;
  unsigned silentSamples = 0;  ///< Zeros written to the lines since the last sound, counted up to the lines' length.

 private:
  /// Laws up to this size run as a copy on the stack, which the compiler keeps in registers.
  static constexpr std::size_t kLargestCopied = 512;
  static constexpr bool kCopied = sizeof(Law) <= kLargestCopied;

  static constexpr Knobs kStart = kParts.start.value_or(Knobs{});

  static Settings startSettings() {
    if constexpr (kParts.start) {
      return Law::settingsOf(kStart);
    } else {
      return {};
    }
  }

  void aim() {
    if constexpr (kParts.aims) {
      law.aim(live, immediate);
    }
  }

  void resetLaw() {
    const auto setNow = [](SmoothedValue& value, std::int32_t target) { value.setNow(target); };
    if constexpr (VisitsSmoothed<Law>) {
      law.eachSmoothed(live, setNow);
    }
    law.reset(live);
    deriveIn(law);
  }

  bool restsAtSettings() {
    bool rests = true;
    const auto check = [&rests](const SmoothedValue& value, std::int32_t target) {
      rests = rests && value.restsAt(target);
    };
    if constexpr (VisitsSmoothed<Law>) {
      law.eachSmoothed(live, check);
    } else if constexpr (kParts.glides) {
      rests = law.restsAt(live, immediate);
    }
    return rests;
  }

  /// Counts the silent samples that the last `run` samples wrote to the lines.
  void countSilence([[maybe_unused]] unsigned run) {
    if constexpr (kLongestLine > 0) {
      silentSamples = law.isSilent(run) ? std::min(silentSamples + run, kLongestLine) : 0;
    }
  }

  static void deriveIn(Law& moved) {
    if constexpr (kParts.derives) {
      moved.derive();
    }
  }

  static void stepBoth(Law& now, const Settings& to, std::int16_t& left, std::int16_t& right) {
    if constexpr (StepsSides<Law>) {
      now.stepSide(to, now.left, left);
      now.stepSide(to, now.right, right);
    } else {
      now.step(to, left, right);
    }
  }

  /// Moves all smoothed values by one sample.
  static void glide(Law& now, const Settings& to, bool jumps) {
    const auto glideOne = [k = glideFactor(jumps)](SmoothedValue& value, std::int32_t target) {
      value.glide(target, k);
    };
    if constexpr (VisitsSmoothed<Law>) {
      now.eachSmoothed(to, glideOne);
    } else if constexpr (kParts.glides) {
      now.glide(to, jumps);
    }
    deriveIn(now);
  }

  void playResting(std::int16_t* left, std::int16_t* right, unsigned count) {
    unsigned done = 0;
    if constexpr (kParts.lanes != LaneParts::none) {
      if (widest != platform::VectorSet::none && law.fitsLanes(live)) {
        if constexpr (SIVRAY_FOR_X86) {
          done = widest == platform::VectorSet::avx2 ? Law::runAvx2(law, left, right, count) : 0;
        }
        if constexpr (kParts.lanes == LaneParts::baselineAndAvx2) {
          done += done < count ? Law::runBaseline(law, left + done, right + done, count - done) : 0;
        }
      }
    }
    if (done < count) {
      play<true>(left + done, right + done, count - done);
    }
  }

  template <bool kResting>
  [[gnu::flatten]] void play(std::int16_t* left, std::int16_t* right, unsigned count) {
    std::conditional_t<kCopied, Law, Law&> now = law;
    const Settings to = live;
    const bool jumps = immediate;
    if constexpr (kResting && StepsSides<Law>) {
      // One channel at a time: the state of both does not fit the registers.
      std::for_each_n(left, count, [&](std::int16_t& sample) { now.stepSide(to, now.left, sample); });
      std::for_each_n(right, count, [&](std::int16_t& sample) { now.stepSide(to, now.right, sample); });
    } else {
      for (unsigned i = 0; i < count; ++i) {
        if constexpr (!kResting) {
          glide(now, to, jumps);
        }
        stepBoth(now, to, left[i], right[i]);
      }
    }
    if constexpr (kCopied) {
      law = now;
    }
  }

  Relaxed<int> edit1{kStart.edit1};
  Relaxed<int> edit2{kStart.edit2};
  Relaxed<int> tempo{kStart.tempoTenths};
  Settings live{startSettings()};
  PendingSettings<Settings> pending{live};
  bool immediate = false;
  platform::VectorSet widest = platform::bestVectorSet();  ///< Registers in which a law with lanes runs.
};

/// Like TwoKnobEffect, for a law whose delay lines are in the shared pool. It has no memory and must not run until the
/// first `reset`.
template <EffectLaw Law>
requires BorrowingLaw<Law>
class TwoKnobMemoryEffect : public TwoKnobEffect<Law>, public SivrayFxMemoryUser {
 public:
  TwoKnobMemoryEffect() : SivrayFxMemoryUser(Law::kLineLength) {}

  void reset() override {
    this->law.lines = assigner->acquire(*this);
    this->silentSamples = this->kLongestLine;
    TwoKnobEffect<Law>::reset();
  }

  void process(StereoBlock& block, unsigned count) override {
    if (!assigner->noteWrites(*this, this->law.writeIndex, count)) {
      this->silentSamples = 0;
    }
    TwoKnobEffect<Law>::process(block, count);
  }

  std::size_t requiredSamples() const override { return Law::kRequiredSamples; }
};

}  // namespace tesh::bramel::plugin::sivray::effects
