// A pad's eighteen settings, as the voices read them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace tesh::bramel::plugin::sivray {

/// Parameter indices of a pad group.
enum class PadParameter : std::uint8_t {
  wave,
  exAssign,
  egMode,
  reverse,
  pitch,
  pitchFine,
  punch,
  egTime,
  level,
  pan,
  lowBoost,
  motionSeq,
  mute,
  fxSend,
  accent,
  modDepth,
  modSpeed,
  modType
};

inline constexpr std::size_t kPadParameterCount = 18;

/// The values of one pad, each a separate atomic word. Any thread may set one; the audio thread reads them at each
/// voice start, and every 64 samples if one was set. Nothing depends on two values changing together.
class PadValues {
 public:
  std::int32_t operator[](PadParameter parameter) const { return at(static_cast<std::size_t>(parameter)); }

  /// The value at `index`, which must be below kPadParameterCount.
  std::int32_t at(std::size_t index) const {
    return static_cast<std::int32_t>(words[index].load(std::memory_order_relaxed));
  }

  void set(std::size_t index, std::int32_t value) {
    words[index].store(static_cast<std::uint32_t>(value), std::memory_order_relaxed);
    edition.fetch_add(2, std::memory_order_release);
  }

  /// A number that changes with each `set`, and is never 0. Values read after it are at least as new as it is.
  std::uint32_t version() const { return edition.load(std::memory_order_acquire); }

 private:
  std::array<std::atomic<std::uint32_t>, kPadParameterCount> words{};
  std::atomic<std::uint32_t> edition{1};  ///< Always odd, so never 0.
};

}  // namespace tesh::bramel::plugin::sivray
