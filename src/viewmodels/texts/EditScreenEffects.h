// The effects in the panel's selector, with their knobs' labels. They are fewer than the engine's.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>

namespace tesh::bramel {

/// One step of the panel's effect selector.
struct EditScreenEffect {
  const char* name;    ///< At most 11 characters.
  const char* label1;  ///< Upper-case label of the first knob; empty if the knob does nothing.
  const char* label2;
  int typeId;  ///< The effect's number in the engine, the value of its parameter Type.
};

inline constexpr std::size_t kEditScreenEffectCount = 26;

/// The steps of the selector. The types 1, 2, 18 and 19 are not offered.
inline constexpr std::array<EditScreenEffect, kEditScreenEffectCount> kEditScreenEffects{{
    {"Bypass", "", "", 0},
    {"Peak EQ", "FREQ", "GAIN", 24},
    {"2Band EQ", "LOW GAIN", "HIGH GAIN", 23},
    {"LPF", "CUTOFF", "RESONANCE", 25},
    {"HPF", "CUTOFF", "RESONANCE", 26},
    {"BPF", "CUTOFF", "RESONANCE", 27},
    {"Comb Filter", "FREQ", "FEEDBACK", 28},
    {"Compressor", "SENS", "ATTACK", 17},
    {"Tube Drive", "TUBE GAIN", "", 21},
    {"Distortion", "GAIN", "LEVEL", 20},
    {"Decimator", "FREQ", "BALANCE", 22},
    {"Ring Mod", "FREQ", "BALANCE", 10},
    {"Talk Mod", "FORMANT", "OFFSET", 29},
    {"Cho/Flg", "SPEED", "DEPTH", 4},
    {"Ensemble", "DEPTH", "SPREAD", 3},
    {"Phaser", "FREQ", "DEPTH", 5},
    {"Auto Pan", "FREQ", "DEPTH", 7},
    {"Tremolo", "FREQ", "DEPTH", 6},
    {"Pump", "FREQ", "ATTACK", 8},
    {"Slicer", "FREQ", "HOLDTIME", 9},
    {"GrainShift", "SPEED", "BALANCE", 11},
    {"Short Delay", "TIME", "DEPTH", 12},
    {"BPM Delay", "TIME", "DEPTH", 13},
    {"Room Reverb", "TIME", "LEVEL", 14},
    {"Hall Reverb", "TIME", "LEVEL", 15},
    {"Gate Reverb", "TIME", "LEVEL", 16},
}};

/// The name of a step; "invalid" past the end.
constexpr const char* editScreenName(std::size_t step) {
  return step < kEditScreenEffectCount ? kEditScreenEffects[step].name : "invalid";
}

/// The label of knob 0 or 1 at a step; "invalid" if step or knob is out of range.
constexpr const char* editScreenLabel(std::size_t step, std::size_t knob) {
  if (step >= kEditScreenEffectCount || knob > 1) {
    return "invalid";
  }
  return knob == 0 ? kEditScreenEffects[step].label1 : kEditScreenEffects[step].label2;
}

/// The type id of a step; -1 past the end.
constexpr int editScreenTypeId(std::size_t step) {
  return step < kEditScreenEffectCount ? kEditScreenEffects[step].typeId : -1;
}

}  // namespace tesh::bramel
