// "Gate Reverb": the small network behind a gate that follows the input.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/RealTime.h"
#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/interfaces/SmoothedValue.h"
#include "effects/interfaces/StereoBlock.h"
#include "effects/reverbs/ReverbNetwork.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Opens fast on a peak above the threshold, holds, and closes slowly.
class ReverbGate {
 public:
  /// Open and in its hold, with the hold time unused.
  void reset() SIVRAY_NONBLOCKING { *this = ReverbGate(); }

  /// One sample of the dry input. `holdStep` is what the hold counter loses per sample. Gives the gain in Q15.
  std::int32_t step(std::int32_t left, std::int32_t right, std::int32_t holdStep);

 private:
  enum class State { attack, hold, release };

  void countHold(std::int32_t holdStep);
  void moveState(std::int32_t holdStep);

  static constexpr std::int32_t kHoldStart = 2147483647;

  State state = State::hold;
  std::int32_t gain = 32767;
  std::int32_t holdCounter = kHoldStart;
  std::int32_t peak = 0;
};

/// The core: Edit1 is the hold time, Edit2 the wet level. Everything else stands still.
class GateReverb {
 public:
  static constexpr std::size_t kRequiredSamples = ReverbNetwork::kRequiredSamples;

  GateReverb();

  void setMemory(std::int16_t* memory) SIVRAY_NONBLOCKING { network.setMemory(memory); }
  void process(StereoBlock& block, unsigned count) SIVRAY_NONBLOCKING;

  /// Edit1 (index 0) or Edit2 (1), 7 bits; another index is ignored and gives 0.
  int setEdit(unsigned index, int value) SIVRAY_NONBLOCKING;

  void reset() SIVRAY_NONBLOCKING;

  bool immediate = false;

 private:
  struct Settings {
    std::int32_t holdStep = 0;
    std::int32_t level = 0;  ///< Q15.
  };

  static Settings settingsFor(int hold, int wetLevel);
  void runGrid(StereoBlock block, unsigned start, unsigned end);

  Relaxed<int> hold;
  Relaxed<int> wetLevel;
  PendingSettings<Settings> pending;
  Settings live;
  SmoothedValue level;
  ReverbGate gate;
  ReverbNetwork network;
};

}  // namespace tesh::bramel::plugin::sivray::effects
