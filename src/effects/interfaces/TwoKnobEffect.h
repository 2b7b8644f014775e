// The frame around the law of an effect with two knobs: it takes knob values on any thread, hands the settings that
// they make to the audio thread, moves the smoothed values and runs the law sample by sample.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/Knobs.h"
#include "effects/interfaces/LaneForm.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/interfaces/Silence.h"
#include "effects/interfaces/SivrayFx.h"
#include "effects/interfaces/SivrayFxMemoryUser.h"
#include "effects/interfaces/SmoothedValue.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Runs a `Law`: a struct that holds what one sample hands to the next. A law has
///   struct Settings;                                 // what the knobs set
///   static Settings settingsOf(const Knobs&);        // any thread
///   void reset(const Settings&);                     // clears the sound; smoothed values are on their targets by then
///   void step(const Settings&, std::int16_t& left, std::int16_t& right);  // one sample of both channels, in place
/// and, where it needs them,
///   static constexpr Knobs kStart;                   // knobs at construction; without it, Settings{} counts at first
///   static constexpr bool kFollowsTempo = true;      // the tempo changes the settings
///   static constexpr bool kResetTakesPending = true; // a reset starts from settings that no sample has seen yet
///   static constexpr int kOtherRestart;              // a transport code that resets, beside kRestart
///   void aim(const Settings&, bool immediate);       // before every 64 samples
///   void eachSmoothed(const Settings&, visit);       // calls visit(SmoothedValue&, target) for each smoothed value
///   void derive();                                   // computes what is costly, after smoothed values have moved
/// A law whose channels share nothing has, in place of `step`, a state for each, so that each may run alone while no
/// value moves:
///   Side left, right;
///   void stepSide(const Settings&, Side&, std::int16_t& sample);  // one sample of one channel
/// A law that smooths otherwise than by SmoothedValue has, in place of `eachSmoothed`,
///   bool restsAt(const Settings&, bool immediate) const;  // a further glide would move nothing
///   void glide(const Settings&, bool immediate);     // one sample towards the settings
/// A law that can run in sample lanes (SampleLanes.h) while its values rest has
///   bool fitsLanes(const Settings&) const;           // no feedback is shorter than 16 samples, all else rests too
///   static unsigned runSse2(Law&, std::int16_t* left, std::int16_t* right, unsigned count);
///   static unsigned runAvx2(Law&, std::int16_t* left, std::int16_t* right, unsigned count);
/// Both run as many of the samples as fill whole registers, in place, and return their number. Shorter registers run
/// the rest of longer ones, `step` the rest of all. A law may do without `runSse2`.
/// A law that answers silence with silence once its memory is zero has
///   static constexpr unsigned kMemory;               // samples that its longest line holds; 0 without lines
///   bool isSilent(unsigned count) const;             // all that sounds is zero in the state, and in what the last
///                                                    // `count` samples (at most 64) have put into the lines
///   void skip(const Settings&, unsigned count);      // `count` silent samples: moves indices, clocks and followers
/// Then the frame skips silent blocks while the settings rest.
///
/// The .cpp file of a law instantiates the frame, so that the compiler sees both together; the header declares that
/// instantiation `extern`.
template <typename Law>
class TwoKnobEffect : public SivrayFx {
 public:
  using Settings = typename Law::Settings;

  TwoKnobEffect() { resetLaw(); }

  /// Settings land before samples whose index in the block is a multiple of 64. Not inlined: a copy elsewhere than in
  /// the law's source file would call the law's functions for every sample.
  [[gnu::noinline]] void process(StereoBlock& block, unsigned count) override {
    if (kKnowsSilence && isZero(block, count) && this->skip(count)) {
      return;
    }
    for (unsigned start = 0; start < count; start += kControlGrid) {
      pending.takeInto(live);
      if constexpr (requires { law.aim(live, immediate); }) {
        law.aim(live, immediate);
      }
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
      return true;  // without a sample, settings are not taken either
    }
    if constexpr (kKnowsSilence) {
      pending.takeInto(live);
      if (silentSamples < Law::kMemory || !law.isSilent(0) || !restsAtSettings()) {
        return false;
      }
      if constexpr (requires { law.aim(live, immediate); }) {
        law.aim(live, immediate);
      }
      law.skip(live, count);
      return true;
    } else {
      return false;
    }
  }

  /// Changes the form of a law that can run in lanes; the processor must have it. At first it is the fastest one.
  void useLanes(LaneForm form) { laneForm = form; }

  /// Takes Edit1 and Edit2 masked to 7 bits and returns what it took; returns 0 for other indices.
  int setParameter(unsigned index, int value) override {
    if (index != kEdit1 && index != kEdit2) {
      return 0;
    }
    const int knob = value & 127;
    (index == kEdit1 ? edit1 : edit2) = knob;
    postSettings();
    return knob;
  }

  void setTempo(int tempoTenths) override {
    if constexpr (requires { Law::kFollowsTempo; }) {
      tempo = tempoTenths;
      postSettings();
    }
  }

  void reset() override {
    if constexpr (requires { Law::kResetTakesPending; }) {
      pending.takeInto(live);
    }
    resetLaw();
  }

  void setImmediate(bool on) override { immediate = on; }

  void notify(int code) override {
    bool restarts = code == kRestart;
    if constexpr (requires { Law::kOtherRestart; }) {
      restarts = restarts || code == Law::kOtherRestart;
    }
    if (restarts) {
      this->reset();
    }
  }

 protected:
  /// Hands over what the knobs now set. Any thread.
  void postSettings() { pending.post(Law::settingsOf({edit1, edit2, tempo})); }

  /// Must be called when all lines have been cleared.
  void noteClearedLines() {
    if constexpr (kKnowsSilence) {
      silentSamples = Law::kMemory;
    }
  }

  /// Must be called when others have written to the lines.
  void forgetSilence() { silentSamples = 0; }

  Law law;

 private:
  static constexpr bool kKnowsSilence = requires(Law & l, const Settings& to) { l.skip(to, 0U); };
  static constexpr bool kHasMemory = [] {
    if constexpr (kKnowsSilence) {
      return Law::kMemory > 0;
    }
    return false;
  }();

  /// A law up to this size runs as a copy on the stack, which the compiler keeps in registers.
  static constexpr std::size_t kLargestCopied = 512;
  static constexpr bool kCopied = sizeof(Law) <= kLargestCopied;

  static constexpr Knobs startKnobs() {
    if constexpr (requires { Law::kStart; }) {
      return Law::kStart;
    } else {
      return {};
    }
  }

  static Settings startSettings() {
    if constexpr (requires { Law::kStart; }) {
      return Law::settingsOf(Law::kStart);
    } else {
      return {};
    }
  }

  void resetLaw() {
    const auto setNow = [](SmoothedValue& value, std::int32_t target) { value.setNow(target); };
    if constexpr (requires { law.eachSmoothed(live, setNow); }) {
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
    if constexpr (requires { law.eachSmoothed(live, check); }) {
      law.eachSmoothed(live, check);
    } else if constexpr (requires { law.restsAt(live, immediate); }) {
      rests = law.restsAt(live, immediate);
    }
    return rests;
  }

  /// Counts the silence that the last `run` samples have put into the lines.
  void countSilence([[maybe_unused]] unsigned run) {
    if constexpr (kHasMemory) {
      silentSamples = law.isSilent(run) ? std::min(silentSamples + run, Law::kMemory) : 0;
    }
  }

  static void deriveIn(Law& moved) {
    if constexpr (requires { moved.derive(); }) {
      moved.derive();
    }
  }

  static constexpr bool kSidesAreSeparate = requires(Law & l, const Settings& to, std::int16_t& sample) {
    l.stepSide(to, l.left, sample);
  };

  static void stepBoth(Law& now, const Settings& to, std::int16_t& left, std::int16_t& right) {
    if constexpr (kSidesAreSeparate) {
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
    if constexpr (requires { now.eachSmoothed(to, glideOne); }) {
      now.eachSmoothed(to, glideOne);
    } else if constexpr (requires { now.glide(to, jumps); }) {
      now.glide(to, jumps);
    }
    deriveIn(now);
  }

  void playResting(std::int16_t* left, std::int16_t* right, unsigned count) {
    unsigned done = 0;
    if constexpr (requires { law.fitsLanes(live); }) {
      if (laneForm != LaneForm::plain && law.fitsLanes(live)) {
        done = laneForm == LaneForm::avx2 ? Law::runAvx2(law, left, right, count) : 0;
        if constexpr (requires { Law::runSse2(law, left, right, count); }) {
          done += done < count ? Law::runSse2(law, left + done, right + done, count - done) : 0;
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
    if constexpr (kResting && kSidesAreSeparate) {
      // One side at a time: the state of both does not fit the registers.
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

  Relaxed<int> edit1{startKnobs().edit1};
  Relaxed<int> edit2{startKnobs().edit2};
  Relaxed<int> tempo{startKnobs().tempoTenths};
  Settings live{startSettings()};
  PendingSettings<Settings> pending{live};
  bool immediate = false;
  LaneForm laneForm = bestLaneForm();
  unsigned silentSamples = 0;  ///< Zeros that went into the lines since the last sound, up to all that they hold.
};

/// As TwoKnobEffect, for a law whose delay lines lie in the shared pool. It has also
///   static constexpr std::size_t kRequiredSamples;
///   std::int16_t* lines;
/// Until the first `reset` it has no memory and must not run.
template <typename Law>
class TwoKnobMemoryEffect : public TwoKnobEffect<Law>, public SivrayFxMemoryUser {
 public:
  void reset() override {
    this->law.lines = assigner->acquire(*this);
    this->noteClearedLines();
    TwoKnobEffect<Law>::reset();
  }

  void process(StereoBlock& block, unsigned count) override {
    if (!assigner->noteRun(*this)) {
      this->forgetSilence();
    }
    TwoKnobEffect<Law>::process(block, count);
  }

  std::size_t requiredSamples() const override { return Law::kRequiredSamples; }
};

}  // namespace tesh::bramel::plugin::sivray::effects
