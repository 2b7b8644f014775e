// The parameter group of a pad: its eighteen settings with names, ranges and texts.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/voice/PadValues.h"
#include "parameters/IParameter.h"

namespace tesh::bramel::plugin::sivray {

class DrumCore;

/// Values are limited to their ranges. Any thread may set and read them. Until `loadWave` is called, Wave only stores
/// the number of the wave to read; after that, setting it changes the pad's wave, see PadWaves::take.
class Q57214DrumParameterInfo : public IParameter {
 public:
  /// Sets all values to their defaults.
  Q57214DrumParameterInfo(DrumCore& core, int pad);

  /// 18; parameter ids reach only the first 16.
  int count() const override { return static_cast<int>(kPadParameterCount); }
  int setValue(int index, std::int32_t* value) override;

  /// 0 for an index out of range.
  std::int32_t value(int index) const override;
  std::string format(int index, std::int32_t value) const override;

  /// Null for an index out of range. The maximum of Wave is the number of waves less 1.
  const ParameterRow* info(int index) const override;
  int indexOf(std::string_view name) const override;

  /// Reads the pad's wave if that has not been done. Never on the audio thread.
  void loadWave();

  /// Reads a wave ahead, unless it is the pad's own. Any thread but the audio thread.
  void fetchWave(std::int32_t wave) const;

  /// The values that the voices read.
  const PadValues& values() const { return padValues; }

 private:
  std::int32_t clampedWave(std::int32_t wave) const;
  std::string waveText(std::int32_t wave) const;

  DrumCore& core;
  PadValues padValues;
  int pad;
  ParameterRow waveRow;  ///< Its maximum is the number of waves less 1, fixed while the engine lives.
  bool waveLoaded = false;
};

}  // namespace tesh::bramel::plugin::sivray
