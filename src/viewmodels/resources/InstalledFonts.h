// The desktop's preferred font for a character.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace tesh::bramel {

struct InstalledFont {
  std::string path;  ///< Empty if no font has the character.
  int index = 0;     ///< Index of the typeface in a font collection.
};

/// Asks fontconfig, which is loaded for the first character, since few users need it. Finds nothing if that library is
/// not installed.
class InstalledFonts {
 public:
  InstalledFonts();
  ~InstalledFonts();
  InstalledFonts(const InstalledFonts&) = delete;
  InstalledFonts& operator=(const InstalledFonts&) = delete;

  /// The scalable font with this character that the user's language and settings prefer.
  InstalledFont find(std::uint32_t character);

 private:
  struct Impl;
  std::unique_ptr<Impl> impl;  ///< Null until first used.
};

}  // namespace tesh::bramel
