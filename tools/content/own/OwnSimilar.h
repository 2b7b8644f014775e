// The file of similar waves for content with own sounds.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "content/own/OwnContent.h"

namespace sivray::content {

/// Compares the factory's waves and the own sounds, and writes the result beside the content's index files. Throws
/// std::runtime_error naming the file that cannot be read or written.
void writeOwnSimilar(const OwnContent& content);

}  // namespace sivray::content
