// A macro: its values, and the sets by which it moves engine parameters.
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

  /// Adds a set and tells the listener, unless the macro already has a set for the same engine parameter. Never while
  /// audio runs.
  void addSet(std::unique_ptr<MacroSetBase> set);
  std::span<const std::unique_ptr<MacroSetBase>> sets() const { return ownSets; }

  /// Sends the mapped values to the target. Outside of blocks.
  void sendToTarget(float value) const;

  /// Reads a record of either format and adds its sets, up to the first that cannot be read.
  void readRecord(std::span<const std::uint8_t> record);
  /// Appends the record in its current form.
  void writeRecord(std::vector<std::uint8_t>& out) const;

  /// At most sixteen characters.
  std::string name() const;
  void setName(std::string_view text);

  std::uint64_t objectValue = 0;  ///< An object value, or 0 for none.
  float storedValue = 0.0F;       ///< Stored in the program.
  float liveValue = 0.0F;         ///< The value that sounds; differs from the stored one during a temporary movement.
  float echoValue = 0.0F;         ///< The value that was reported last.
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
