// The pages that are installed with the library and open in the browser.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace tesh::bramel {

enum class InstalledPage { manual, acknowledgements };

/// The page's path with backslashes; the file may be missing.
std::string installedPagePath(InstalledPage page);

/// Opens the page in the default browser, without a network. False if it is missing or the system has nothing to open
/// it with, as far as the system tells. Message thread only.
bool openInstalledPage(InstalledPage page);

}  // namespace tesh::bramel
