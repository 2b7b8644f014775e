// A progress bar on standard error, drawn only on a terminal.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace sivray {

class ProgressBar {
 public:
  /// Draws nothing if `quiet` is set or standard error is not a terminal.
  explicit ProgressBar(bool quiet);
  ~ProgressBar() { clear(); }
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  /// Redraws the bar if its percentage has changed. `done` is 0 to 1.
  void show(double done);

  /// Erases the bar so that a line can be printed; the next call of `show` redraws it.
  void clear();

 private:
  bool active;
  int shownPercent = -1;
};

}  // namespace sivray
