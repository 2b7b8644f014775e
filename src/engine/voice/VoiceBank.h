// The state of all voices as structures of arrays: one lane per voice, four lanes to a quad, two quads.
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

/// Lane values that kernels load as vectors, initially all 0.
struct alignas(32) LaneWords : PerLane<std::int32_t> {
  LaneWords() : PerLane<std::int32_t>{} {}
};

/// The ramps of a lane.
enum class LaneRamp : std::uint8_t { lowBoost, level, pan, envelope, fade, dry, effect };
inline constexpr std::size_t kRampsPerLane = 7;

/// The bit of a ramp in a set of ramps of any lane.
constexpr unsigned rampBit(LaneRamp ramp) { return 1U << static_cast<unsigned>(ramp); }

enum class VoiceState : std::int32_t { free = 0, sounding = 1, retriggered = 2 };
enum class EnvelopePhase : std::int32_t { idle = 0, running = 1, released = 3 };

/// The fade's gain is the square of its amplitude; at or below this amplitude it is less than 1 / 32768.
inline constexpr std::int32_t kFadeClosed = 181;

/// A read position in Q12 at the last of `length` frames; 0 for an empty wave.
constexpr std::int32_t lastFrameQ12(std::uint32_t length) {
  return length == 0 ? 0 : static_cast<std::int32_t>((length - 1) << 12);
}

/// Plain data. A lane's state may move to another lane, so nothing may keep an address into it except the ramp bank,
/// which is bound again after a move. Gains are Q15, except the level's gain, whose 1.0 is 8192. Flags that kernels use
/// as masks are -1 for true.
struct VoiceBank {
  VoiceBank();

  /// Swaps the whole state of two lanes.
  void swapLanes(std::size_t a, std::size_t b) SIVRAY_NONBLOCKING;

  /// Silences a lane: its wave, filter, punch, meters and gains. Ramps, settings and the voice's state stay.
  void clearLane(std::size_t lane) SIVRAY_NONBLOCKING;

  /// The slot of one of a lane's ramps in the ramp bank.
  std::int32_t rampOf(std::size_t lane, LaneRamp ramp) const { return ramps[lane][static_cast<std::size_t>(ramp)]; }

  /// The field of a lane that a ramp writes.
  std::int32_t* destinationOf(std::size_t lane, LaneRamp ramp) SIVRAY_NONBLOCKING;

  // The fields that kernels read and write.
  LaneWords positionQ12;   ///< read position
  LaneWords slotBase;      ///< first frame of the lane's slot, counted from the start of all sample memory
  LaneWords punchCurrent;  ///< Q12 gain added to 1.0; falls to 16
  LaneWords envelopeGain;  ///< ramp destination
  LaneWords lowBoostGain;  ///< ramp destination
  LaneWords boostState;    ///< the low boost's last output: left in the low word, right in the high one
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
  PerLane<std::int64_t> remainingQ12{};      ///< What is left to play; 0 when the wave has ended.
  PerLane<std::int32_t> stepMagnitudeQ12{};  ///< frames per sample
  PerLane<std::int32_t> stepSignedQ12{};     ///< negative when reversed
  PerLane<bool> reversed{};
  PerLane<float> waveRate;         ///< Hz
  PerLane<float> ratio{};          ///< waveRate divided by the engine's rate.
  PerLane<std::int32_t> padIndex;  ///< the slot that the lane reads

  // Settings as the stages last took them from the pad.
  PerLane<std::uint32_t> settingsSeen{};  ///< Their PadValues version; 0 for none.
  PerLane<std::int32_t> lowBoost{};
  PerLane<std::int32_t> level{};
  PerLane<std::int32_t> velocity{};
  PerLane<bool> muted{};
  PerLane<std::int32_t> pan;
  PerLane<std::int32_t> fxSend{};

  // The envelope.
  PerLane<std::int32_t> egTime{};
  PerLane<std::int32_t> levelIndex{};       ///< 127 to 0
  PerLane<float> envelopeSpeed;             ///< level indices per sample of decay
  PerLane<std::int32_t> envelopeCounter{};  ///< samples of decay so far
  PerLane<bool> envelopeFinished;
  PerLane<EnvelopePhase> phase{};
  PerLane<bool> gateMode{};

  // Voice control.
  PerLane<const PadValues*> padGroup{};
  PerLane<std::array<std::int32_t, kRampsPerLane>> ramps{};
  PerLane<bool> active{};  ///< Wave and envelope are running.
  PerLane<bool> live{};    ///< Has started at least once, so that control updates apply.
  PerLane<bool> triggerPending{};
  PerLane<std::int32_t> triggerVelocity{};
  PerLane<bool> pitchDirty{};  ///< The pitch increment must be recomputed.
  PerLane<std::uint32_t> pitchIncrementQ16{};
  PerLane<std::int32_t> pitchCents{};
  PerLane<VoiceState> state{};
  PerLane<std::int32_t> pad{};
};

}  // namespace tesh::bramel::plugin::sivray
