// An X server without a screen, which runs until this process ends.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include <sys/types.h>

namespace sivray::hosting {

class XServer {
 public:
  /// Starts Xvfb on a free display.
  XServer();
  /// Stops it.
  ~XServer();
  XServer(const XServer&) = delete;
  XServer& operator=(const XServer&) = delete;

  /// The value for DISPLAY; empty if Xvfb is not installed or does not start.
  const std::string& display() const { return name; }

 private:
  std::string name;
  pid_t process = -1;
};

}  // namespace sivray::hosting
