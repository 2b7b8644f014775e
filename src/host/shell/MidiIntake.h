// Decides what happens to an incoming MIDI message: it goes to the engine, moves a parameter, or is dropped.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "core/MidiStatus.h"

namespace tesh::bramel::vst {

/// A message of up to three bytes, or the first three bytes of a longer one, packed as the engine takes it.
struct ShortMessage {
  static constexpr std::size_t kMostBytes = 3;

  ShortMessage() = default;
  explicit ShortMessage(std::span<const std::uint8_t> bytes) : size(std::min(bytes.size(), kMostBytes)) {
    for (std::size_t index = 0; index < size; ++index) {
      set(index, bytes[index]);
    }
  }

  std::uint8_t byte(std::size_t index) const { return static_cast<std::uint8_t>(packed >> shiftOf(index)); }
  void set(std::size_t index, std::uint8_t value) {
    packed = (packed & ~(0xFFU << shiftOf(index))) | std::uint32_t{value} << shiftOf(index);
  }
  std::array<std::uint8_t, kMostBytes> bytes() const { return {byte(0), byte(1), byte(2)}; }

  std::uint32_t packed = 0;  ///< The bytes from the top down; missing ones are 0.
  std::size_t size = 0;

 private:
  static constexpr unsigned shiftOf(std::size_t index) { return 24U - 8U * static_cast<unsigned>(index); }
};

/// Bytes of a message that may go out to the host.
inline constexpr std::size_t kLongestMidiOut = 4;

struct MidiVerdict {
  std::optional<std::uint64_t> parameterId;  ///< The parameter that moves to `value`.
  float value = 0.0F;
  bool toEngine = false;  ///< `message` goes to the engine.
  ShortMessage message;   ///< Notes, controllers and pitch bend are on channel 1.
};

/// The parameter's value for a controller's data byte, 0 to 127.
inline float controllerValue(std::uint8_t data) {
  return std::clamp(static_cast<float>(data) * 0.007874016F, 0.0F, 1.0F);  // 1 / 127.
}

/// The parameter's value for a pitch bend. The centre (lsb 0, msb 64) gives 0.5.
inline float pitchBendValue(std::uint8_t lsb, std::uint8_t msb) {
  const int position = ((msb & 127) - 64) * 128 + (lsb & 127);
  return std::clamp(static_cast<float>(position) * 6.103888e-5F + 0.5F, 0.0F, 1.0F);  // 1 / 16383.
}

/// Whether a message with this status byte can reach a parameter by the controller map.
constexpr bool mayMoveParameter(std::uint8_t status) {
  const auto kind = static_cast<std::uint8_t>(status & cofu::core::kMidiKindBits);
  return kind == cofu::core::kMidiController || kind == cofu::core::kMidiPitchBend;
}

/// Decides on a message. Notes, controllers and pitch bend lose their channel. Bank select, unmapped pitch bend,
/// aftertouch, program changes and channel pressure are dropped. `controllerMap(key)` returns the mapped parameter or
/// nothing; the key is a controller number, or kMidiPitchBend.
template <typename ControllerMap>
MidiVerdict judgeMidi(const ShortMessage& message, const ControllerMap& controllerMap) {
  using namespace cofu::core;
  MidiVerdict verdict;
  verdict.message = message;
  const auto [status, data1, data2] = message.bytes();
  if (status >= kMidiFirstSystem) {
    verdict.toEngine = true;
    return verdict;
  }
  const auto kind = static_cast<std::uint8_t>(status & kMidiKindBits);
  switch (kind) {
    case kMidiNoteOff:
    case kMidiNoteOn:
      verdict.message.set(0, kind);
      verdict.toEngine = true;
      break;
    case kMidiController:
      verdict.message.set(0, kind);
      if (isMidiBankSelect(data1)) {
        break;
      }
      verdict.parameterId = controllerMap(data1);
      verdict.value = controllerValue(data2);
      verdict.toEngine = !verdict.parameterId;
      break;
    case kMidiPitchBend:
      verdict.message.set(0, kind);
      verdict.parameterId = controllerMap(kMidiPitchBend);
      verdict.value = pitchBendValue(data1, data2);
      break;
    default:
      break;
  }
  return verdict;
}

}  // namespace tesh::bramel::vst
