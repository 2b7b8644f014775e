// A progress bar on standard error, drawn only where somebody watches.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace sivray::render {

class ProgressBar {
 public:
  /// Silent when `quiet` is set or standard error is not a terminal.
  explicit ProgressBar(bool quiet);
  ~ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  /// Draws the bar when its percentage has changed. `done` from 0 to 1.
  void show(double done);

 private:
  bool active;
  int shownPercent = -1;
};

}  // namespace sivray::render
