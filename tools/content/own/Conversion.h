// Songs that were made with packed content of another number of waves, and what their values mean beside own sounds.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "content/own/OwnContent.h"
#include "content/own/SoundAdder.h"

namespace sivray::content {

/// What each wave of a packed library is in the content with own sounds.
class Conversion {
 public:
  /// Adds the waves of the library in `folder`, which holds Tesh, to the own sounds, but for those that the factory
  /// has. Throws as `readLibrary` and `addSounds` do.
  Conversion(OwnContent& content, const std::string& folder, const AddReport& report);

  std::size_t waveCount() const { return numbers.size(); }

  /// Whether a kit's values were made with the packed content: all are of its waves, and one is none of the factory's
  /// or an own sound's.
  bool isOfPacked(const std::vector<float>& values) const;

  /// Changes the values that choose waves in a file: a state, a preset that holds the bytes of one, or a file of user
  /// programs. Returns how many pads of kits that were made with the packed content it holds.
  std::size_t convert(std::vector<std::uint8_t>& file) const;

 private:
  float valueFor(float value) const;
  std::size_t convertPrograms(std::vector<std::uint8_t>& file) const;
  std::size_t convertStates(std::vector<std::uint8_t>& file) const;
  std::size_t convertValues(std::vector<std::uint8_t>& file, std::size_t values) const;

  std::int32_t factoryWaves = 0;
  std::vector<std::optional<std::int32_t>> numbers;  ///< By the wave's number in the packed content.
};

}  // namespace sivray::content
