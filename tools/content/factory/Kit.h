// A factory kit with the panel's numbers, and the parser of its text.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

#include "viewmodels/texts/PanelMacros.h"

namespace sivray::factory {

using namespace tesh::bramel::panel;

enum class ExclusiveGroup { off, a, b };

/// One pad, in the units that the panel shows.
struct KitPad {
  std::string wave;  ///< Name of a wave of the sample library.
  int line = 0;      ///< Line number in the kit's file, for errors.
  int level = 100;   ///< 0 to 127.
  int pan = 0;       ///< -63 to 63.
  bool mute = false;
  int pitch = 0;  ///< -24 to 24 semitones.
  int fine = 0;   ///< -100 to 100 cents.
  ExclusiveGroup group = ExclusiveGroup::off;
  bool send = false;  ///< Goes through the master effect.
  bool gate = false;  ///< Sounds while its note is held.
  int decay = 127;    ///< 0 to 127; 127 plays the whole wave.
  int punch = 0;      ///< 0 to 127.
  bool reverse = false;
  int boost = 43;  ///< Low boost, 0 to 127; 43 leaves the sound as it is.
};

struct Kit {
  std::string name;               ///< At most 24 characters.
  std::string comment;            ///< The style.
  std::string effect = "Bypass";  ///< Short name on the edit screen.
  int effectLine = 0;             ///< Line number in the kit's file, for errors.
  int edit1 = 64;                 ///< 0 to 127.
  int edit2 = 64;
  int master = 100;  ///< 0 to 127.
  std::array<KitPad, kPads> pads;
};

/// A mistake in a text file, as "file:line: reason".
class TextError : public std::runtime_error {
 public:
  TextError(std::string_view file, int line, std::string_view reason);
};

/// Parses a kit. `file` is the name that errors show. Throws TextError for a syntax error, a number out of range, a
/// missing name or pad, and a setting or pad that appears twice.
Kit parseKit(std::string_view text, std::string_view file);

}  // namespace sivray::factory
