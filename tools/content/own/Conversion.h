// Converts songs that were made with packed content, whose wave numbers differ from those of content with own sounds.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "content/own/OwnContent.h"
#include "content/own/SoundAdder.h"

namespace sivray::content {

/// Maps each wave of a packed library to its number in the content with own sounds.
class Conversion {
 public:
  /// Adds to the own sounds those waves of the library in `folder` (which holds Tesh) that are no factory waves. Throws
  /// as `readLibrary` and `addSounds` do.
  Conversion(OwnContent& content, const std::string& folder, const AddReport& report);

  std::size_t waveCount() const { return numbers.size(); }

  /// Whether a kit's values were made with the packed content: all choose waves of it, and at least one of these is
  /// neither a factory wave nor an own sound's.
  bool isOfPacked(const std::vector<float>& values) const;

  /// Replaces the values that choose waves in a file: a state, a preset with a state, or a file of user programs.
  /// Returns the number of pads, over all kits made with the packed content.
  std::size_t convert(std::vector<std::uint8_t>& file) const;

 private:
  float valueFor(float value) const;
  std::size_t convertPrograms(std::vector<std::uint8_t>& file) const;
  std::size_t convertStates(std::vector<std::uint8_t>& file) const;
  std::size_t convertValues(std::vector<std::uint8_t>& file, std::size_t values) const;

  std::int32_t factoryWaves = 0;
  std::vector<std::optional<std::int32_t>> numbers;  ///< New numbers, by the wave's number in the packed content.
};

}  // namespace sivray::content
