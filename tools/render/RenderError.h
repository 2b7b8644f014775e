// The exceptions that the renderer reports to the user, each one clear line.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <stdexcept>

namespace sivray::render {

/// The text tells the fault, the file or option concerned, and what to do.
class RenderError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Thrown when the command line asks for something that does not exist.
class UsageError : public RenderError {
 public:
  using RenderError::RenderError;
};

}  // namespace sivray::render
