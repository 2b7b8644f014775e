// A progress bar on standard error, drawn only where somebody watches.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace sivray {

class ProgressBar {
 public:
  /// Silent when `quiet` is set or standard error is not a terminal.
  explicit ProgressBar(bool quiet);
  ~ProgressBar() { clear(); }
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  /// Draws the bar when its percentage has changed. `done` from 0 to 1.
  void show(double done);

  /// Takes the bar away, so that a line can be printed; the next call of `show` brings it back.
  void clear();

 private:
  bool active;
  int shownPercent = -1;
};

}  // namespace sivray
