// The operating system's folders for shared program data and for the user's documents.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace tesh::bramel::platform {

/// The places where shared program files are searched, in order; not all need exist:
/// 1. $BRAMEL_COMMON_FILES; if it is set, no other place;
/// 2. ownContentFolder();
/// 3. moduleFolder(), then the folder around the plug-in bundle that it lies in (PluginBundle.h);
/// 4. on Windows %LOCALAPPDATA%\Programs\Common, where programs of one user keep them, then the folder of common
///    program files; elsewhere $XDG_DATA_HOME (or ~/.local/share), then each folder in $XDG_DATA_DIRS (or
///    /usr/local/share and /usr/share).
std::vector<std::string> commonFilesPlaces();

/// The folder of shared program files: $BRAMEL_COMMON_FILES if it is set, else the first of the places that holds
/// "Tesh/Bramel". If none does, on Windows the folder of common program files, elsewhere empty.
std::string commonFilesFolder();

/// Like commonFilesFolder, but without ownContentFolder(): the files of an installation.
std::string installedFilesFolder();

/// The folder of the user's own content, which no installation changes: on Windows "sivray\content" below
/// %LOCALAPPDATA%, elsewhere "sivray/content" below $XDG_DATA_HOME (or ~/.local/share). It need not exist. Empty if the
/// system has no such place.
std::string ownContentFolder();

/// The user's documents: $BRAMEL_DOCUMENTS if it is set, else the system's documents folder. Outside Windows that is
/// the desktop's setting (user-dirs.dirs), or ~/Documents without one; empty if there is no home folder.
std::string documentsFolder();

/// The settings folder of the program `sivray`: "Sivray" in the user's application data on Windows, elsewhere "sivray"
/// in $XDG_CONFIG_HOME, or in ~/.config if that is not an absolute path. It need not exist. Empty if the system has no
/// such place.
std::string settingsFolder();

/// The folder of the library or program that this code is linked into; empty if the system cannot tell.
std::string moduleFolder();

}  // namespace tesh::bramel::platform
