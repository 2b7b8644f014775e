// Brings dropped files in, and takes them back: what the program does around the tool that works in the background.
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
    /// The content has changed: the instrument is to be built anew with this state, or its own if that is empty. Then
    /// pad `pad`, from 0, is to play the wave of a number.
    std::function<void(const juce::MemoryBlock& state, std::optional<int> pad, int number)> reload;
    std::function<juce::MemoryBlock()> state;  ///< Returns the instrument's now.
    std::function<void()> changed;             ///< `text` or `result` has.
  };

  explicit Imports(Wishes newWishes) : wishes(std::move(newWishes)) {}

  /// Whether files can be brought in here: the tool is installed, and the instrument takes the user's own content.
  bool canImport() const;

  /// Adds files and folders for a pad's role, or by their names. Does nothing while another run is under way.
  void add(const juce::StringArray& paths, std::optional<int> pad);

  /// Takes the latest result's new sounds away again, and brings the sound of before back.
  void undo();

  /// Takes in factory content that was installed since, if there is some. Says nothing if there is none.
  void refresh();

  /// What is being done, or has been; empty for nothing to tell.
  const juce::String& text() const { return line; }

  /// Of the latest files; nothing before the first ones and after an undo.
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
