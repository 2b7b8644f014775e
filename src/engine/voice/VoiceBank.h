// The state of all voices as structures of arrays: one lane per voice, four lanes to a quad, both quads side by side.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "core/RealTime.h"

namespace tesh::bramel::plugin::sivray {

class PadValues;

inline constexpr int kLanesPerQuad = 4;
inline constexpr int kQuadCount = 2;
inline constexpr int kVoiceCount = kLanesPerQuad * kQuadCount;

/// One value per lane.
template <typename T>
using PerLane = std::array<T, kVoiceCount>;

/// Lane values that the kernels load as vectors. They start at 0.
struct alignas(32) LaneWords : PerLane<std::int32_t> {
  LaneWords() : PerLane<std::int32_t>{} {}
};

/// The ramps of a lane, in the order in which they are made.
enum class LaneRamp : std::uint8_t { lowBoost, level, pan, envelope, fade, dry, effect };
inline constexpr std::size_t kRampsPerLane = 7;

enum class VoiceState : std::int32_t { free = 0, sounding = 1, retriggered = 2 };
enum class EnvelopePhase : std::int32_t { idle = 0, running = 1, released = 3 };

/// Plain data; a lane's state may be moved to another lane, so that nothing keeps an address into it but the ramp bank,
/// which is bound again on a move. Gains are Q15 but for the level's, whose unity is 8192.
struct VoiceBank {
  VoiceBank();

  /// Exchanges everything that lane `a` and lane `b` hold.
  void swapLanes(std::size_t a, std::size_t b) SIVRAY_NONBLOCKING;

  // What the kernels work on.
  LaneWords positionQ12;   ///< read position
  LaneWords slotBase;      ///< first frame of the lane's slot, counted from the start of all sample memory
  LaneWords punchCurrent;  ///< falls from the start value towards 16
  LaneWords envelopeGain;  ///< ramp destination
  LaneWords lowBoostGain;  ///< ramp destination
  LaneWords stateLeft;     ///< the low boost's last output
  LaneWords stateRight;
  LaneWords levelGain;     ///< ramp destination
  LaneWords rightGain;     ///< ramp destination
  LaneWords meterEnabled;  ///< -1 or 0
  LaneWords meterRestart;  ///< -1 or 0
  LaneWords peakLeft;
  LaneWords peakRight;
  LaneWords fadeEnabled;  ///< -1 or 0
  LaneWords fadeAmp;      ///< ramp destination
  LaneWords gainDry;      ///< ramp destination
  LaneWords gainEffect;   ///< ramp destination

  // The wave.
  PerLane<std::uint32_t> length{};           ///< frames
  PerLane<std::int64_t> remainingQ12{};      ///< what is left to play; 0 when the wave has ended
  PerLane<std::int32_t> stepMagnitudeQ12{};  ///< frames per sample
  PerLane<std::int32_t> stepSignedQ12{};     ///< negative when reversed
  PerLane<bool> reversed{};
  PerLane<float> waveRate;
  PerLane<float> ratio{};
  PerLane<std::int32_t> padIndex;  ///< the slot that the lane reads

  // Settings as the stages last took them from the pad.
  PerLane<std::int32_t> lowBoost{};
  PerLane<std::int32_t> punchStart;
  PerLane<std::int32_t> level{};
  PerLane<std::int32_t> velocity{};
  PerLane<bool> muted{};
  PerLane<std::int32_t> pan;
  PerLane<std::int32_t> fxSend{};

  // The envelope.
  PerLane<std::int32_t> egTime{};
  PerLane<std::int32_t> levelIndex{};
  PerLane<std::int32_t> lengthAtEngineRate{};
  PerLane<float> envelopeSpeed;
  PerLane<std::int32_t> envelopeCounter{};
  PerLane<bool> envelopeFinished;
  PerLane<EnvelopePhase> phase{};
  PerLane<bool> gateMode{};

  // Voice control.
  PerLane<const PadValues*> padGroup{};
  PerLane<std::array<std::int32_t, kRampsPerLane>> ramps{};
  PerLane<bool> active{};
  PerLane<bool> live{};
  PerLane<bool> triggerPending{};
  PerLane<std::int32_t> triggerVelocity{};
  PerLane<bool> pitchDirty{};
  PerLane<std::uint32_t> pitchIncrementQ16{};
  PerLane<std::int32_t> pitchCents{};
  PerLane<VoiceState> state{};
  PerLane<std::int32_t> pad{};
};

}  // namespace tesh::bramel::plugin::sivray
