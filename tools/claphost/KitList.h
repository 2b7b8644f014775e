// The kits that a CLAP library lists for a host's browser.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "claphost/ClapLibrary.h"

namespace sivray::claphost {

struct ListedKit {
  std::string name;
  std::string key;  ///< By which the plug-in loads it.
};

/// Returns those inside the plug-in.
std::vector<ListedKit> findKits(const ClapLibrary& library);

}  // namespace sivray::claphost
