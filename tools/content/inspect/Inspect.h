// Finds out what kind of our files a file is, and looks through it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

#include "content/inspect/CheckedReader.h"
#include "content/inspect/Report.h"

namespace sivray::content {

/// What stands in a file up to its end, or up to where it breaks.
struct Inspection {
  Report report = Report::object();
  std::optional<BrokenFile> broken;
};

/// A file is known by its name where our names are fixed, and by its first bytes otherwise. Throws std::runtime_error
/// for a file that cannot be read or is none of ours.
Inspection inspectFile(const std::string& path);

}  // namespace sivray::content
