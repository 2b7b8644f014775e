// The operating system's folders for shared program data and for the user's documents.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace tesh::bramel::platform {

/// The folder of shared program files; empty if there is none. The first of these:
/// 1. $BRAMEL_COMMON_FILES, if it is set;
/// 2. moduleFolder(), if it holds "Tesh/Bramel"; outside Windows also the folder around the plug-in bundle that it lies
///    in (PluginBundle.h);
/// 3. on Windows the folder of common program files; elsewhere the first that holds "Tesh/Bramel" of $XDG_DATA_HOME (or
///    ~/.local/share) and the folders in $XDG_DATA_DIRS (or /usr/local/share and /usr/share).
std::string commonFilesFolder();

/// The user's documents: $BRAMEL_DOCUMENTS if it is set, else the system's documents folder. Outside Windows that is
/// the desktop's setting (user-dirs.dirs), or ~/Documents without one; empty if there is no home folder.
std::string documentsFolder();

/// The folder of the library or program that this code was linked into; empty if the system cannot tell.
std::string moduleFolder();

}  // namespace tesh::bramel::platform
