// The grooves by which kits are measured: a few bars per style that use every pad in its usual role.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

#include "content/demo/Groove.h"

namespace sivray::content {

/// Whether a style has a groove, its own or one shared with related styles.
bool hasGroove(std::string_view style);

/// Returns the groove of a style: four bars that play all pads. A style without one gets that of "Pop". The groove
/// names no kit.
const Groove& grooveOf(std::string_view style);

}  // namespace sivray::content
