// "Gate Reverb": the small network behind a gate that follows the input.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/interfaces/TwoKnobEffect.h"
#include "effects/reverbs/ReverbNetwork.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Opens quickly on a peak above the threshold, holds, and closes slowly.
class ReverbGate {
 public:
  /// Start value of the hold counter.
  static constexpr std::int32_t kHoldStart = 2147483647;

  /// One sample of the dry input. `holdStep` is the decrease of the hold counter per sample. Returns the gain in Q15.
  std::int32_t step(std::int32_t left, std::int32_t right, std::int32_t holdStep);

  /// Processes the next `count` samples and writes their gains to `gains`.
  void follow(const std::int16_t* left, const std::int16_t* right, std::int16_t* gains, unsigned count,
              std::int32_t holdStep) SIVRAY_NONBLOCKING;

  bool operator==(const ReverbGate&) const = default;

 private:
  enum class State { attack, hold, release };

  void countHold(std::int32_t holdStep);
  void moveState(std::int32_t holdStep);

  State state = State::hold;
  std::int32_t gain = cofu::core::kFullScale;
  std::int32_t holdCounter = kHoldStart;
  std::int32_t peak = 0;
};

/// Edit1 is the hold time (1 ms to 1 s), Edit2 the wet level. Nothing else can be set.
struct GateReverb : ReverbNetwork {
  static constexpr LawParts kParts{.start = Knobs{30, 100},
                                   .aims = true,
                                   .glides = true,
                                   .lanes = LaneParts::baselineAndAvx2,
                                   .sleepsAfter = kLineLength};

  struct Settings {
    std::int32_t holdStep;  ///< Decrease of the hold counter per sample.
    std::int32_t level;     ///< Q15.
  };

  /// Gain of the network's input, Q15: a quarter of the square curve at 80.
  static constexpr std::int32_t kInputLevel = squareTable[80] >> 2;

  /// Loop gain of the combs, Q15: that of the room reverb at Time 63.
  static constexpr std::int32_t kFeedback = feedbackOf(63);

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;

  /// The gate starts open, with its full hold time left.
  void reset(const Settings&) { gate = {}; }
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
  void aim(const Settings& to, bool) { holdStep = to.holdStep; }
  static bool fitsLanes(const Settings&) { return true; }
  static const RunInLanes<GateReverb> runBaseline;
  static const RunInLanes<GateReverb> runAvx2;
  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;
  void eachSmoothed(const Settings& to, auto&& visit) { visit(level, to.level); }

  SmoothedValue level;
  ReverbGate gate;
  std::int32_t holdStep = 0;
  const std::int16_t* gains = nullptr;  ///< The gate's gains for the next samples.
};

extern template class TwoKnobEffect<GateReverb>;

}  // namespace tesh::bramel::plugin::sivray::effects
