// The installed pages that open in the browser.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace tesh::bramel {

enum class InstalledPage { manual, acknowledgements };

/// The page's path with backslashes; the file may be missing.
std::string installedPagePath(InstalledPage page);

/// Opens the page in the default browser, without a network. False if the page is missing or if the system reports that
/// it has nothing to open it with. Message thread only.
bool openInstalledPage(InstalledPage page);

}  // namespace tesh::bramel
