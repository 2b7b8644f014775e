// The instrument's master effect: thirty effects, one of which is current, and the crossfades between them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

#include "core/RealTime.h"
#include "effects/EffectSet.h"
#include "effects/EffectTable.h"
#include "effects/MultiEffectorParam.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/interfaces/SivrayFx.h"
#include "effects/interfaces/SivrayFxMemoryManager.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Owns all effects, runs the current one, crossfades when the type changes, and fades to the dry sound when the effect
/// is switched off. `process`, `skip`, `reset`, `notify` and `transport` belong to the audio thread; `setValue`,
/// `setTempo` and the parameter group may be used on any thread at the same time. Nothing is allocated after
/// construction.
class SivrayMultiEffector {
 public:
  /// Largest block that `process` accepts, in frames.
  static constexpr int kMaxBlock = 4096;

  SivrayMultiEffector();
  SivrayMultiEffector(const SivrayMultiEffector&) = delete;
  SivrayMultiEffector& operator=(const SivrayMultiEffector&) = delete;
  virtual ~SivrayMultiEffector();

  /// Processes `count` frames in place. A block larger than kMaxBlock passes unchanged; a count of 0 or less only
  /// applies pending changes.
  void process(StereoBlock& block, int count) SIVRAY_NONBLOCKING;

  /// Advances by `count` silent frames, if the output would be silent too and no change or crossfade is pending.
  /// Otherwise returns false and changes nothing; then `process` must run.
  bool skip(int count) SIVRAY_NONBLOCKING;

  /// Clears the sound of every effect and ends all crossfades.
  void reset() SIVRAY_NONBLOCKING;

  /// Sets Type (0), Switch (1), Edit1 (2) or Edit2 (3) without limiting, and returns the value. Ignores any other index
  /// and returns 0. A type outside the table does not change the sound.
  int setValue(int index, int value) SIVRAY_NONBLOCKING;

  /// The current value; 0 for an index out of range.
  int value(int index) const SIVRAY_NONBLOCKING;

  /// Tempo in tenths of a beat per minute.
  void setTempo(int tempoTenths) SIVRAY_NONBLOCKING;

  /// Passes a transport code (TransportCode) to the current effect.
  void notify(int code) SIVRAY_NONBLOCKING;

  /// A transport message of the event stream: 2 restarts the rhythmic types, 3 restarts any type.
  void transport(int message) SIVRAY_NONBLOCKING;

  MultiEffectorParam& parameter() { return parameterGroup; }

 private:
  /// Left and right samples of one largest block.
  struct Buffer {
    std::array<std::int16_t, kMaxBlock> left{};
    std::array<std::int16_t, kMaxBlock> right{};

    StereoBlock from(int frame) { return {left.data() + frame, right.data() + frame}; }
  };

  struct Buffers {
    Buffer oldPath;
    Buffer newPath;
    Buffer work;
  };

  SivrayFx* effectOf(int type) const;
  void takeSwitch();
  void takeType();
  void bringUpToDate(SivrayFx& effect);
  void runEffect(StereoBlock block, int count);
  void crossfade(int count);
  void fadeRun(int start, int length);
  void mix(StereoBlock block, int count);
  int glideMix(StereoBlock block, int count);
  void countImmediate(int count);

  SivrayFxMemoryManager memory;
  EffectSet effects;
  std::unique_ptr<Buffers> buffers;

  bool fading = false;
  int fadePosition = 0;  ///< From 32767 down to 0.
  std::atomic<SivrayFx*> current{nullptr};
  SivrayFx* previous = nullptr;  ///< The effect that is being faded out.

  PendingSettings<bool> pendingSwitch{true, true};
  std::int32_t wetTarget = 0;  ///< 32767 when the effect is on, 0 when it is off.
  std::int32_t wetState = 0;   ///< Wet factor with 15 fractional bits.

  PendingSettings<int> pendingType{kTypeShortDelay, true};
  int immediateCounter = -1;  ///< Frames since the last load; -1 when the current effect smooths its values as usual.

  // Sequentially consistent, like `current`. A writer stores its value and then loads `current`; the audio thread
  // stores `current` and then reads the values. So at least one of the two sees the other's change.
  std::array<std::atomic<int>, 4> values{kTypeShortDelay, 1, 0, 0};
  std::atomic<int> tempo{1200};

  MultiEffectorParam parameterGroup{*this};
};

}  // namespace tesh::bramel::plugin::sivray::effects
