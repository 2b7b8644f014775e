// The folders that a system keeps for shared program data and for a user's documents.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace tesh::bramel::platform {

/// The folder of shared program files. $BRAMEL_COMMON_FILES where that is set; else the folder beside the loaded
/// library or program where that holds "Tesh/Bramel"; else on Windows the system's common program files, elsewhere the
/// first that holds "Tesh/Bramel" of $XDG_DATA_HOME (~/.local/share) and each of $XDG_DATA_DIRS (/usr/local/share,
/// /usr/share). Empty where there is none.
std::string commonFilesFolder();

/// The user's documents. $BRAMEL_DOCUMENTS where that is set; on Windows the system's folder; elsewhere the desktop's
/// documents folder, else ~/Documents. Empty when there is no home folder.
std::string documentsFolder();

/// The folder that holds the library or program that this code was linked into.
std::string moduleFolder();

}  // namespace tesh::bramel::platform
