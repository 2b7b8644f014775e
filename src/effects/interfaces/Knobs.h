// What the settings of an effect are made of.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tesh::bramel::plugin::sivray::effects {

/// All that the settings of an effect depend on.
struct Knobs {
  int edit1 = 0;           ///< 0 to 127.
  int edit2 = 0;           ///< 0 to 127.
  int tempoTenths = 1200;  ///< Tenths of a beat per minute.
};

}  // namespace tesh::bramel::plugin::sivray::effects
