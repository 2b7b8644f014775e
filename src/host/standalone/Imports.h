// Imports dropped files and undoes imports, by the tool that works in the background.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <juce_core/juce_core.h>

#include "host/standalone/ContentTool.h"

namespace tesh::bramel::standalone {

/// Message thread only.
class Imports {
 public:
  struct Wishes {
    /// The content has changed: build a new instrument, with this state or, if it is empty, the present one. Then make
    /// pad `pad`, from 0, play wave `number`.
    std::function<void(const juce::MemoryBlock& state, std::optional<int> pad, int number)> reload;
    std::function<juce::MemoryBlock()> state;  ///< Returns the instrument's present state.
    std::function<void()> changed;             ///< `text` or `result` has changed.
  };

  explicit Imports(Wishes newWishes) : wishes(std::move(newWishes)) {}

  /// Whether files can be imported: the tool is installed, and the instrument plays the user's own content.
  bool canImport() const;

  /// Adds files and folders for a pad's role, or by their names. Does nothing while another run is under way.
  void add(const juce::StringArray& paths, std::optional<int> pad);

  /// Removes the latest result's new sounds and restores the instrument's state from before.
  void undo();

  /// Adopts newer factory content, if some was installed since. Reports nothing if there is none.
  void refresh();

  /// What is being done, or was done last; empty if there is nothing to report.
  const juce::String& text() const { return line; }

  /// Of the latest import; nothing before the first one and after an undo.
  const std::optional<ToolResult>& result() const { return latest; }
  bool canUndo() const { return latest && !latest->added().empty() && !tool.isRunning(); }
  /// Lets `text` be empty until there is something new.
  void dismiss() { tell({}); }

 private:
  void tell(const juce::String& text);

  Wishes wishes;
  juce::String line;
  std::optional<ToolResult> latest;
  juce::MemoryBlock before;                   ///< The instrument's state before the latest files came.
  std::unique_ptr<juce::TemporaryFile> list;  ///< Of the files to add, while they are added.
  ContentTool tool;
};

}  // namespace tesh::bramel::standalone
