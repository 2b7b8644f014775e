// The interface by which the VST 3 wrapper, as changed by cmake/juce-7.0.5, asks who chose a program.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tesh::bramel::vst {

/// A processor whose programs are chosen by its host and on its panel.
class ProgramChoice {
 public:
  virtual ~ProgramChoice() = default;

  /// True if the latest program was chosen on the panel, so that the host must be told its number. Any thread.
  virtual bool isProgramOfPanel() const = 0;
};

}  // namespace tesh::bramel::vst
