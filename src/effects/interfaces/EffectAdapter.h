// Turns a small effect core, a plain class without virtual operations, into a SivrayFx.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/interfaces/TwoKnobEffect.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Holds one core `T` and forwards to it. A core has
///   void process(StereoBlock& block, unsigned count);
///   int setEdit(unsigned index, int value);   // index 0 is Edit1, 1 is Edit2
///   void reset();
/// and, where it has them, `bool immediate`, `void setTempo(int)` and a constant
/// `static constexpr bool kAnswersRhythmicRestart = true`.
template <typename T>
class EffectAdapter : public SivrayFx {
 public:
  void process(StereoBlock& block, unsigned count) override { core.process(block, count); }

  int setParameter(unsigned index, int value) override {
    return index < kEdit1 ? value : core.setEdit(index - kEdit1, value);
  }

  void setTempo(int tempoTenths) override {
    if constexpr (requires(T & t) { t.setTempo(tempoTenths); }) {
      core.setTempo(tempoTenths);
    }
  }

  void reset() override { core.reset(); }

  void setImmediate(bool on) override {
    if constexpr (requires(T & t) { t.immediate = on; }) {
      core.immediate = on;
    }
  }

  void notify(int code) override {
    if (code == kRestart || (code == kRhythmicRestart && answersRhythmicRestart())) {
      reset();
    }
  }

 protected:
  T core;

 private:
  static constexpr bool answersRhythmicRestart() {
    if constexpr (requires { T::kAnswersRhythmicRestart; }) {
      return T::kAnswersRhythmicRestart;
    }
    return false;
  }
};

/// Answers the multi-effector's own indices, which an effect does not use, with the value given.
template <typename Effect>
class AdaptedEffect : public Effect {
 public:
  int setParameter(unsigned index, int value) override {
    return index < kEdit1 ? value : Effect::setParameter(index, value);
  }
};

template <typename T>
concept TwoKnobLaw = requires(const Knobs& knobs) {
  T::settingsOf(knobs);
};

/// A core that is a law runs in the frame of the laws.
template <TwoKnobLaw Core>
class EffectAdapter<Core> : public AdaptedEffect<TwoKnobEffect<Core>> {};

}  // namespace tesh::bramel::plugin::sivray::effects
