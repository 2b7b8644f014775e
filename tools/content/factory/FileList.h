// A folder of texts that a list puts in order.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sivray::factory {

/// Returns the paths of the folder's files with this extension, in the order of its file `list`, which names one file
/// per line without the extension; # begins a comment. Throws TextError for a name that is listed twice or has no file,
/// and for a file that is not listed; std::runtime_error for an unreadable file.
std::vector<std::string> readFileList(const std::string& folder, const std::string& list, std::string_view extension);

}  // namespace sivray::factory
