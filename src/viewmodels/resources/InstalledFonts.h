// The desktop's choice of a font for a character.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace tesh::bramel {

struct InstalledFont {
  std::string path;  ///< Empty if no font has the character.
  int index = 0;     ///< Of the face in a collection.
};

/// Asks fontconfig, which is loaded when the first character is asked for: few need it. Finds nothing where that
/// library is not installed.
class InstalledFonts {
 public:
  InstalledFonts();
  ~InstalledFonts();
  InstalledFonts(const InstalledFonts&) = delete;
  InstalledFonts& operator=(const InstalledFonts&) = delete;

  /// The scalable font that the user's language and settings prefer among those that have the character.
  InstalledFont find(std::uint32_t character);

 private:
  struct Impl;
  std::unique_ptr<Impl> impl;  ///< Null until it is needed.
};

}  // namespace tesh::bramel
