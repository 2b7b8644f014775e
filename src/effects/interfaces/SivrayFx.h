// What the multi-effector asks of each of its thirty effects.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/RealTime.h"
#include "effects/interfaces/StereoBlock.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Messages that reach an effect through `SivrayFx::notify`.
enum TransportCode : int {
  kMarloRestart = 2,    ///< A second restart code, which only the Marlo effects and the chorus/flanger answer.
  kRestart = 5,         ///< Start over, as after `reset`.
  kRhythmicRestart = 6  ///< A second restart code, which only the pump and the slicer answer.
};

/// Parameter indices. The multi-effector has all four, an effect the last two.
enum EffectParameter : int { kEffectType = 0, kEffectSwitch = 1, kEdit1 = 2, kEdit2 = 3 };

/// One effect: 16-bit stereo in place at 44100 Hz. `process`, `reset`, `wake`, `sleep`, `setImmediate` and `notify`
/// come on the audio thread; `setParameter` and `setTempo` on any thread, also while `process` runs. Nothing here
/// allocates after construction but a first `wake`, which the multi-effector's constructor calls.
class SivrayFx {
 public:
  SivrayFx() = default;
  SivrayFx(const SivrayFx&) = delete;
  SivrayFx& operator=(const SivrayFx&) = delete;
  virtual ~SivrayFx() = default;

  /// Processes `count` samples per channel in place; 0 changes nothing, neither the block nor the effect.
  virtual void process(StereoBlock& block, unsigned count) SIVRAY_NONBLOCKING = 0;

  /// Moves on by `count` silent samples if its output would be silent too. Returns false and changes nothing if that is
  /// not certain: then `process` must run. Only the effect that ran last may skip.
  virtual bool skip(unsigned count) SIVRAY_NONBLOCKING {
    static_cast<void>(count);
    return false;
  }

  /// Sets Edit1 (index 2) or Edit2 (index 3), 0 to 127; other indices are ignored. Returns the value that it took.
  virtual int setParameter(unsigned index, int value) SIVRAY_NONBLOCKING = 0;

  /// Tempo in tenths of a beat per minute, 1200 for 120.0.
  virtual void setTempo(int tempoTenths) SIVRAY_NONBLOCKING { static_cast<void>(tempoTenths); }

  /// Puts a rhythmic clock back to its start at the next sample.
  virtual void restartPhase() SIVRAY_NONBLOCKING {}

  /// Clears the sound state and puts smoothed values on their targets.
  virtual void reset() SIVRAY_NONBLOCKING = 0;

  /// The effect is about to be used: claims what it needs.
  virtual void wake() SIVRAY_NONBLOCKING {}

  /// The effect has gone out of use.
  virtual void sleep() SIVRAY_NONBLOCKING {}

  virtual bool isAwake() const SIVRAY_NONBLOCKING { return true; }

  /// In immediate mode smoothed values go to their targets within a sample or two.
  virtual void setImmediate(bool on) SIVRAY_NONBLOCKING = 0;

  /// A transport message, see TransportCode.
  virtual void notify(int code) SIVRAY_NONBLOCKING = 0;
};

}  // namespace tesh::bramel::plugin::sivray::effects
