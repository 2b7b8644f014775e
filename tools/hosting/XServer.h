// An X server without a screen, for the life of this process.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include <sys/types.h>

namespace sivray::hosting {

class XServer {
 public:
  /// Starts Xvfb, which takes a free display.
  XServer();
  /// Ends it.
  ~XServer();
  XServer(const XServer&) = delete;
  XServer& operator=(const XServer&) = delete;

  /// As DISPLAY has it; empty where Xvfb is not installed or does not start.
  const std::string& display() const { return name; }

 private:
  std::string name;
  pid_t process = -1;
};

}  // namespace sivray::hosting
