// The thirty effect types by id: the names of each type and of its two edit values. The shorter list of the edit
// screen is in viewmodels/texts/EditScreenEffects.h.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>

namespace tesh::bramel::plugin::sivray::effects {

inline constexpr int kEffectTypeCount = 30;

/// Type ids that the code treats specially.
enum EffectTypeId : int {
  kTypePump = 8,
  kTypeSlicer = 9,
  kTypeGrainShifter = 11,
  kTypeShortDelay = 12,
  kTypeBpmDelay = 13,
  kTypeEqualizer = 23,
  kTypePeakingEq = 24
};

/// Names of one effect type. A label is empty if the edit value has no name.
struct EffectType {
  const char* name;
  const char* edit1Label;
  const char* edit2Label;
};

inline constexpr std::array<EffectType, kEffectTypeCount> kEffectTypes{{
    {"Bypass", "", ""},
    {"Marlo Chorus", "Speed", "Spread"},
    {"Marlo Phase", "Speed", "Spread"},
    {"Marlo Ensemble", "Depth", "Spread"},
    {"Chorus/Flanger", "Speed", "Depth"},
    {"Phaser", "Freq", "Depth"},
    {"Tremolo", "Freq", "Depth"},
    {"Auto Pan", "Freq", "Depth"},
    {"Pump", "Freq", "Attack"},
    {"Slicer", "Freq", "Holdtime"},
    {"Ring Mod", "Freq", "Balance"},
    {"Grain Shifter", "Speed", "Balance"},
    {"Short Delay", "Time", "Depth"},
    {"BPM Delay", "Time", "Depth"},
    {"Room Reverb", "Time", "Level"},
    {"Hall Reverb", "Time", "Level"},
    {"Gate Reverb", "Time", "Level"},
    {"Compressor", "Sens", "Attack"},
    {"Master Compressor", "Sens", "Attack"},
    {"Drive", "Gain", "Level"},
    {"Distortion", "Gain", "Level"},
    {"Kiln Force", "Tube Gain", ""},
    {"Decimator", "Freq", "Balance"},
    {"EQ", "Low Gain", "High Gain"},
    {"Peaking EQ", "Fc", "Gain"},
    {"LPF", "Cutoff", "Resonance"},
    {"HPF", "Cutoff", "Resonance"},
    {"BPF", "Cutoff", "Resonance"},
    {"Comb Filter", "Freq", "Feedback"},
    {"Talking Mod", "Formant", "Offset"},
}};

/// The display name of a type; empty outside the table.
constexpr const char* effectTypeName(int typeId) {
  return typeId >= 0 && typeId < kEffectTypeCount ? kEffectTypes[static_cast<std::size_t>(typeId)].name : "";
}

}  // namespace tesh::bramel::plugin::sivray::effects
