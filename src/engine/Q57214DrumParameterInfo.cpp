// A pad's ranges, limits, wave changes and display texts.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Q57214DrumParameterInfo.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "core/FixedPoint.h"
#include "engine/voice/DrumCore.h"

namespace tesh::bramel::plugin::sivray {
namespace {

/// Highest value of a parameter with 7 bits.
constexpr std::int32_t kTop = 127;

constexpr std::array<ParameterRow, kPadParameterCount> kRows{{{"Wave", 0, 0, 0},
                                                              {"ExAssign", 0, 15, 0},
                                                              {"EGMode", 0, 1, 0},
                                                              {"Reverse", 0, 1, 0},
                                                              {"Pitch", 0, 48, 24},
                                                              {"PitchFine", 0, 200, 100},
                                                              {"Punch", 0, kTop, 0},
                                                              {"EGTime", 0, kTop, kTop},
                                                              {"Level", 0, kTop, 100},
                                                              {"Pan", 0, kTop, 64},
                                                              {"Low Boost", 0, kTop, 0},
                                                              {"Motion Seq", 0, 2, 0},
                                                              {"Mute", 0, 1, 0},
                                                              {"FX Send", 0, 1, 1},
                                                              {"Accent", 0, 1, 1},
                                                              {"Mod Depth", 0, kTop, 64},
                                                              {"Mod Speed", 0, kTop, 0},
                                                              {"Mod Type", 0, 0, 0}}};

constexpr std::array<const char*, 2> kEnvelopeModes{"One Shot", "Gate"};
constexpr std::array<const char*, 2> kDirections{"In Order", "Reverse"};
constexpr std::array<const char*, 3> kMotionModes{"Off", "Smooth", "Trig Hold"};
constexpr std::array<const char*, 6> kModulationTypes{"Saw Down",    "Square", "Triangle",
                                                      "Sample&Hold", "Noise",  "Envelope"};

constexpr int kWave = static_cast<int>(PadParameter::wave);

bool isIndex(int index) { return index >= 0 && index < static_cast<int>(kPadParameterCount); }

std::string printed(const char* pattern, int number) {
  std::array<char, 24> text{};
  std::snprintf(text.data(), text.size(), pattern, number);
  return text.data();
}

std::string threeDigits(std::int32_t value) { return printed("%03d", value); }

/// "000" at the centre, else the sign and the distance with at least two digits.
std::string aroundCentre(std::int32_t value, std::int32_t centre) {
  return value == centre ? "000" : printed("%+03d", cofu::core::wrapSub(value, centre));
}

std::string panText(std::int32_t value) {
  if (value == 64) {
    return "Center";
  }
  return value < 64 ? printed("L%02d", 64 - std::max(value, 1)) : printed("R%02d", value - 64);
}

template <std::size_t Size>
std::string word(const std::array<const char*, Size>& words, std::int32_t value) {
  return value >= 0 && value < static_cast<std::int32_t>(Size) ? words[static_cast<std::size_t>(value)] : "";
}

}  // namespace

Q57214DrumParameterInfo::Q57214DrumParameterInfo(DrumCore& drumCore, int padNumber)
    : core(drumCore), pad(padNumber), waveRow(kRows[kWave]) {
  waveRow.maximum = core.database().waveCount() - 1;
  for (int index = 0; index < count(); ++index) {
    std::int32_t value = kRows[static_cast<std::size_t>(index)].defaultValue;
    setValue(index, &value);
  }
}

void Q57214DrumParameterInfo::loadWave() {
  std::int32_t wave = padValues[PadParameter::wave];
  if (!waveLoaded) {
    waveLoaded = true;
    core.waves().fetch(static_cast<std::size_t>(pad), wave);
    core.waveChange().setValue(pad, &wave);
  }
}

void Q57214DrumParameterInfo::fetchWave(std::int32_t wave) const {
  const std::int32_t clamped = clampedWave(wave);
  if (padValues[PadParameter::wave] != clamped) {
    core.waves().fetch(static_cast<std::size_t>(pad), clamped);
  }
}

/// The wave number limited to its range; -1 if there are no waves.
std::int32_t Q57214DrumParameterInfo::clampedWave(std::int32_t wave) const {
  return std::min(std::max(wave, waveRow.minimum), waveRow.maximum);
}

int Q57214DrumParameterInfo::setValue(int index, std::int32_t* value) {
  const ParameterRow* row = info(index);
  if (row == nullptr) {
    return 0;
  }
  // If there are no waves, the maximum of Wave is -1, and so becomes the value.
  *value = std::min(std::max(*value, row->minimum), row->maximum);
  const auto place = static_cast<std::size_t>(index);
  if (index == kWave && waveLoaded && padValues.at(place) != *value) {
    core.waveChange().setValue(pad, value);
  }
  padValues.set(place, *value);
  return *value;
}

std::int32_t Q57214DrumParameterInfo::value(int index) const {
  return isIndex(index) ? padValues.at(static_cast<std::size_t>(index)) : 0;
}

const ParameterRow* Q57214DrumParameterInfo::info(int index) const {
  if (!isIndex(index)) {
    return nullptr;
  }
  return index == kWave ? &waveRow : &kRows[static_cast<std::size_t>(index)];
}

int Q57214DrumParameterInfo::indexOf(std::string_view name) const {
  const auto* row = std::find_if(kRows.begin(), kRows.end(), [name](const ParameterRow& r) { return name == r.name; });
  return row == kRows.end() ? -1 : static_cast<int>(row - kRows.begin());
}

std::string Q57214DrumParameterInfo::waveText(std::int32_t wave) const {
  return std::string(core.database().lookup(wave).name) + " : " + threeDigits(wave);
}

std::string Q57214DrumParameterInfo::format(int index, std::int32_t value) const {
  if (!isIndex(index)) {
    return {};
  }
  switch (static_cast<PadParameter>(index)) {
    case PadParameter::wave:
      return waveText(value);
    case PadParameter::egMode:
      return word(kEnvelopeModes, value);
    case PadParameter::reverse:
      return word(kDirections, value);
    case PadParameter::pitch:
      return aroundCentre(value, 24);
    case PadParameter::pitchFine:
      return aroundCentre(value, 100);
    case PadParameter::pan:
      return panText(value);
    case PadParameter::motionSeq:
      return word(kMotionModes, value);
    case PadParameter::modDepth:
      return aroundCentre(value, 64);
    case PadParameter::modType:
      return word(kModulationTypes, value);
    default:
      return threeDigits(value);
  }
}

}  // namespace tesh::bramel::plugin::sivray
