// Reads the four files of a sample library back as waves.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "content/library/Wave.h"

namespace sivray::content {

/// Returns the waves of the library in `folder` by number. Throws std::runtime_error naming the file that is missing or
/// broken.
std::vector<Wave> readLibrary(const std::string& folder);

}  // namespace sivray::content
