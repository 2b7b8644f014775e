// The names of the pads' sounds on their keys, as a host's piano roll shows them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "host/shell/BramelInstrument.h"

namespace tesh::bramel::clap {

/// The name of the sound that pad 0 to 7 has now; empty if the sample library is missing. Main thread.
std::string soundNameOf(vst::BramelInstrument& instrument, std::size_t pad);

/// Whether a parameter chooses a pad's sound. Any thread.
bool choosesSound(std::uint64_t parameterId) SIVRAY_NONBLOCKING;

}  // namespace tesh::bramel::clap
