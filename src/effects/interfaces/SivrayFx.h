// The interface of the thirty effects for the multi-effector.
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

/// Parameter indices. The multi-effector has all four; an effect has the last two.
enum EffectParameter : int { kEffectType = 0, kEffectSwitch = 1, kEdit1 = 2, kEdit2 = 3 };

/// One effect: 16-bit stereo, in place, at 44100 Hz. `process`, `reset`, `wake`, `sleep`, `setImmediate` and `notify`
/// are called on the audio thread; `setParameter` and `setTempo` on any thread, also during `process`. Nothing
/// allocates after construction, except the first `wake`, which the multi-effector's constructor calls.
class SivrayFx {
 public:
  SivrayFx() = default;
  SivrayFx(const SivrayFx&) = delete;
  SivrayFx& operator=(const SivrayFx&) = delete;
  virtual ~SivrayFx() = default;

  /// Processes `count` samples per channel in place; 0 changes neither the block nor the effect.
  virtual void process(StereoBlock& block, unsigned count) SIVRAY_NONBLOCKING = 0;

  /// Advances by `count` silent samples, if the output would be silent too. Otherwise returns false and changes
  /// nothing; then `process` must run. Only the effect that ran last may skip.
  virtual bool skip(unsigned count) SIVRAY_NONBLOCKING {
    static_cast<void>(count);
    return false;
  }

  /// Sets Edit1 (index 2) or Edit2 (index 3), 0 to 127; other indices are ignored. Returns the value that was applied.
  virtual int setParameter(unsigned index, int value) SIVRAY_NONBLOCKING = 0;

  /// Tempo in tenths of a beat per minute, 1200 for 120.0.
  virtual void setTempo(int tempoTenths) SIVRAY_NONBLOCKING { static_cast<void>(tempoTenths); }

  /// Restarts a rhythmic clock at the next sample.
  virtual void restartPhase() SIVRAY_NONBLOCKING {}

  /// Clears the sound and sets smoothed values to their targets.
  virtual void reset() SIVRAY_NONBLOCKING = 0;

  /// Called before the effect is used. Acquires its delay memory.
  virtual void wake() SIVRAY_NONBLOCKING {}

  /// Called when the effect is no longer used.
  virtual void sleep() SIVRAY_NONBLOCKING {}

  virtual bool isAwake() const SIVRAY_NONBLOCKING { return true; }

  /// In immediate mode, smoothed values reach their targets within a sample or two.
  virtual void setImmediate(bool on) SIVRAY_NONBLOCKING = 0;

  /// A transport message, see TransportCode.
  virtual void notify(int code) SIVRAY_NONBLOCKING = 0;
};

}  // namespace tesh::bramel::plugin::sivray::effects
