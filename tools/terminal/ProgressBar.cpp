// Draws and erases the bar with a carriage return.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "terminal/ProgressBar.h"

#include <algorithm>
#include <cstdio>
#include <string>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace sivray {
namespace {

constexpr int kBarCells = 40;

bool errorIsTerminal() {
#ifdef _WIN32
  return _isatty(_fileno(stderr)) != 0;
#else
  return isatty(STDERR_FILENO) != 0;
#endif
}

}  // namespace

ProgressBar::ProgressBar(bool quiet) : active(!quiet && errorIsTerminal()) {}

void ProgressBar::show(double done) {
  const int percent = static_cast<int>(std::clamp(done, 0.0, 1.0) * 100.0);
  if (!active || percent == shownPercent) {
    return;
  }
  shownPercent = percent;
  const auto cells = static_cast<std::size_t>(percent * kBarCells / 100);
  const std::string bar = std::string(cells, '#') + std::string(kBarCells - cells, '.');
  std::fprintf(stderr, "\r[%s] %3d %%", bar.c_str(), percent);
  std::fflush(stderr);
}

void ProgressBar::clear() {
  if (shownPercent >= 0) {
    std::fputs("\r\033[K", stderr);
  }
  shownPercent = -1;
}

}  // namespace sivray
