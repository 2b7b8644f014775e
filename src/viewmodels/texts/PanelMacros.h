// The numbers of the macros that the panel, the host's texts and the factory content use. A number must never change
// its meaning, because songs and programs store it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace tesh::bramel::panel {

inline constexpr std::size_t kPads = 8;
inline constexpr std::size_t kMacrosPerPad = 12;

/// MIDI note of the first pad; the other pads follow by semitones.
inline constexpr int kFirstPadNote = 36;

/// The MIDI note of pad 0 to 7.
constexpr int padNote(std::size_t pad) { return kFirstPadNote + static_cast<int>(pad); }

/// The pad that a MIDI note plays; nothing for other notes.
constexpr std::optional<std::size_t> padOfNote(int note) {
  const int pad = note - kFirstPadNote;
  return pad >= 0 && pad < static_cast<int>(kPads) ? std::optional(static_cast<std::size_t>(pad)) : std::nullopt;
}

/// A macro's index among the twelve of its pad.
enum PadMacro : std::size_t {
  kSample,
  kLevel,
  kPan,
  kMute,
  kPitch,
  kExclusiveGroup,
  kEffectSend,
  kEnvelopeMode,
  kEnvelopeTime,
  kPunch,
  kReverse,
  kLowBoost
};

/// The macro of pad 0 to 7.
constexpr std::size_t padMacro(std::size_t pad, PadMacro macro) { return pad * kMacrosPerPad + macro; }

inline constexpr std::size_t kEffectTypeMacro = kPads * kMacrosPerPad;
inline constexpr std::size_t kEffectEdit1Macro = 97;
inline constexpr std::size_t kEffectEdit2Macro = 98;
inline constexpr std::size_t kMasterLevelMacro = 99;

/// Whether a macro, by its number, chooses a pad's sound.
constexpr bool choosesSound(std::uint64_t macro) {
  return macro < kEffectTypeMacro && macro % kMacrosPerPad == kSample;
}

/// Macros from this number on are not on the panel.
inline constexpr std::size_t kEffectSwitchMacro = 100;
inline constexpr std::size_t kHiddenPadMacros = 101;  ///< Four per pad: fine pitch, motion, accent, modulation depth.

}  // namespace tesh::bramel::panel
