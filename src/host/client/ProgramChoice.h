// What the VST 3 wrapper asks of a program that has changed, as cmake/juce-7.0.5 has it ask.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tesh::bramel::vst {

/// A processor whose programs are chosen by its host and on its panel.
class ProgramChoice {
 public:
  virtual ~ProgramChoice() = default;

  /// Whether the latest program was chosen on the panel: the host has yet to hear of its number. Any thread.
  virtual bool isProgramOfPanel() const = 0;
};

}  // namespace tesh::bramel::vst
