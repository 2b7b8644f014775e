// The eighteen settings of one pad as a parameter group.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/voice/PadValues.h"
#include "parameters/IParameter.h"

namespace tesh::bramel::plugin::sivray {

class DrumCore;

/// Values are clamped to their range. Setting Wave to another value than the stored one reads the sample file on the
/// calling thread; so does setting it for the first time.
class Q57214DrumParameterInfo : public IParameter {
 public:
  /// Sets all values to their defaults, which reads wave 0 into the pad's slot.
  Q57214DrumParameterInfo(DrumCore& core, int pad);

  int count() const override { return static_cast<int>(kPadParameterCount); }
  int setValue(int index, std::int32_t* value) override;

  /// 0 for a bad index.
  std::int32_t value(int index) const override;
  std::string format(int index, std::int32_t value) const override;

  /// Null for a bad index. The maximum of Wave is the number of waves less 1.
  const ParameterRow* info(int index) const override;
  int indexOf(std::string_view name) const override;

  /// What the voices read.
  const PadValues& values() const { return padValues; }

 private:
  std::string waveText(std::int32_t wave) const;

  DrumCore& core;
  PadValues padValues;
  int pad;
  ParameterRow waveRow;  ///< The sample library does not change while the engine lives.
  bool waveLoaded = false;
};

}  // namespace tesh::bramel::plugin::sivray
