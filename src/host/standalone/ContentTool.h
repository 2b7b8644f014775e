// Runs the program sivray-content in the background, which adds files to the user's own content.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tesh::bramel::standalone {

/// The result of a run, with one entry for each file.
struct ToolResult {
  struct File {
    enum class Kind { added, known, unused };

    Kind kind = Kind::unused;
    std::string path;
    int number = 0;    ///< Wave number; 0 for an unused file.
    std::string name;  ///< As the list of samples shows it.
    std::string note;  ///< Why the file is not used, or a remark about it.
  };

  bool isDone = false;      ///< The program ended without an error.
  std::vector<File> files;  ///< Filled by the command "add".
  std::string lastLine;     ///< The last line that the program printed for the user.

  /// The wave numbers of the new sounds; then those of all usable ones, including the already known.
  std::vector<int> added() const;
  std::vector<int> usable() const;
};

/// Runs sivray-content, one run at a time, and calls back on the message thread. It is a separate process, so that a
/// broken file cannot harm the sound. Message thread only.
class ContentTool {
 public:
  /// Looks for the program beside this one, then in the folder bin beside this one's folder.
  ContentTool();
  /// Ends a run in progress; sivray-content then undoes its changes.
  ~ContentTool();
  ContentTool(const ContentTool&) = delete;
  ContentTool& operator=(const ContentTool&) = delete;

  /// Whether the program was found.
  bool isThere() const { return program.existsAsFile(); }
  bool isRunning() const { return run != nullptr; }

  /// Starts the program. `onProgress` gets values from 0 to 1. The program must have been found and must not be
  /// running.
  void start(const juce::StringArray& arguments, std::function<void(double)> onProgress,
             std::function<void(const ToolResult&)> onDone);

 private:
  class Run;

  juce::File program;
  std::shared_ptr<Run> run;
};

/// Reads a line of the program's output, whose fields are separated by tabs. Returns the progress if the line tells it,
/// else -1.
double takeToolLine(const std::string& line, ToolResult& result);

}  // namespace tesh::bramel::standalone
