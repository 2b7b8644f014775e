// The pages that are installed with the library and open in the browser.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace tesh::bramel {

enum class InstalledPage { manual, acknowledgements };

/// The page's path with backslashes; the file may be missing.
std::string installedPagePath(InstalledPage page);

/// Opens the page in the default browser, without a network. Message thread only.
void openInstalledPage(InstalledPage page);

}  // namespace tesh::bramel
