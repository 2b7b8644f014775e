// One macro: its values, and the sets through which it moves engine parameters.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "core/RealTime.h"
#include "macro/MacroParameterControlTarget.h"
#include "macro/MacroSetBase.h"

namespace tesh::vimo {

class MacroParameterControl {
 public:
  static constexpr std::size_t kHeaderBytes = 32;
  static constexpr std::size_t kNameBytes = 16;

  MacroParameterControl(std::unique_ptr<MacroParameterControlTarget> valueTarget,
                        MacroParameterControlListener* changeListener);

  /// Adds a set and tells the listener, unless the macro has a set for the same engine parameter. Never while audio
  /// runs.
  void addSet(std::unique_ptr<MacroSetBase> set);
  std::span<const std::unique_ptr<MacroSetBase>> sets() const { return ownSets; }

  /// Sends the mapped values to the target. Outside of a block.
  void sendToTarget(float value) const;

  /// Adds the sets of a record of either form, up to the first that cannot be read.
  void readRecord(std::span<const std::uint8_t> record);
  /// Appends the record in its current form.
  void writeRecord(std::vector<std::uint8_t>& out) const;

  /// Up to sixteen characters.
  std::string name() const;
  void setName(std::string_view text);

  std::uint64_t objectValue = 0;  ///< A value that is not a number, or 0.
  float storedValue = 0.0F;       ///< Belongs to the program.
  float liveValue = 0.0F;         ///< Sounds now; differs from the stored one during a temporary movement.
  float echoValue = 0.0F;         ///< Last reported.
  float defaultValue = 0.0F;      ///< For programs that have no entry for this macro.
  std::vector<std::string> expressions;

 private:
  void readCurrentForm(std::span<const std::uint8_t> record);
  void readOlderForm(std::span<const std::uint8_t> record);

  std::vector<std::unique_ptr<MacroSetBase>> ownSets;
  std::array<std::uint8_t, kHeaderBytes> header{};
  MacroParameterControlListener* listener;
  std::unique_ptr<MacroParameterControlTarget> target;
};

/// Clamps a value to 0 .. 1; infinities and NaN become 0.
float cleanMacroValue(float value) SIVRAY_NONBLOCKING;

}  // namespace tesh::vimo
