// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef __linux__

#include "hosting/XServer.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>

namespace sivray::hosting {
namespace {

/// Runs in the new process. Xvfb writes its display number to the descriptor `file`.
[[noreturn]] void runServer(const char* file) {
  ::prctl(PR_SET_PDEATHSIG, SIGTERM);
  const int quiet = ::open("/dev/null", O_WRONLY);
  ::dup2(quiet, STDERR_FILENO);
  // By default the server resets itself when its last client leaves, and drops a client that connects meanwhile.
  ::execlp("Xvfb", "Xvfb", "-displayfd", file, "-screen", "0", "1700x1000x24", "-nolisten", "tcp", "-noreset", nullptr);
  ::_exit(1);
}

}  // namespace

XServer::XServer() {
  std::array<int, 2> pipe{};
  if (::pipe(pipe.data()) != 0) {
    return;
  }
  const std::string file = std::to_string(pipe[1]);
  process = ::fork();
  if (process == 0) {
    ::close(pipe[0]);
    runServer(file.c_str());
  }
  ::close(pipe[1]);
  std::string number;
  char digit = 0;
  while (::read(pipe[0], &digit, 1) == 1 && digit != '\n') {
    number += digit;
  }
  ::close(pipe[0]);
  if (!number.empty()) {
    name = ":" + number;
  }
}

XServer::~XServer() {
  if (process > 0) {
    ::kill(process, SIGTERM);
    ::waitpid(process, nullptr, 0);
  }
}

}  // namespace sivray::hosting

#endif
