// Recognises the kind of a file and inspects it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

#include "content/inspect/CheckedReader.h"
#include "content/inspect/Report.h"

namespace sivray::content {

/// The contents of a file up to its end, or up to its first fault.
struct Inspection {
  Report report = Report::object();
  std::optional<BrokenFile> broken;
};

/// Inspects a file, recognised by its name where our formats fix the name, else by its first bytes. Throws
/// std::runtime_error for a file that cannot be read or is of no known kind.
Inspection inspectFile(const std::string& path);

}  // namespace sivray::content
