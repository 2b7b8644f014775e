// The only exception that the renderer reports: one clear line for the user.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <stdexcept>

namespace sivray::render {

/// Says what went wrong, with which file or option, and what to do. `main` prints it and exits with status 2.
class RenderError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace sivray::render
