// The one kind of failure that the renderer reports: a clear line for the person who called it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <stdexcept>

namespace sivray::render {

/// What went wrong, on which file or option, and what to do. `main` prints it and exits with status 2.
class RenderError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace sivray::render
