// The names of the pads' sounds on their keys, as a host's piano roll shows them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>

#include "host/shell/BramelInstrument.h"

namespace tesh::bramel::vst {

/// The name of the sound that pad 0 to 7 has now; empty if the sample library is missing. Not on the audio thread.
std::string soundNameOf(BramelInstrument& instrument, std::size_t pad);

/// As above, for the pad that a key, 0 to 127, plays; empty where it plays none.
std::string soundNameOnKey(BramelInstrument& instrument, int key);

}  // namespace tesh::bramel::vst
