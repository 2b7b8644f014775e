// The exceptions that the renderer reports: one clear line for the user.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <stdexcept>

namespace sivray::render {

/// Says what went wrong, with which file or option, and what to do.
class RenderError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The same for a command line that asks for what does not exist.
class UsageError : public RenderError {
 public:
  using RenderError::RenderError;
};

}  // namespace sivray::render
