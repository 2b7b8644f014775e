// Brings files into the user's own content by the program sivray-content, in the background.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tesh::bramel::standalone {

/// What became of the files that the program was given.
struct ToolResult {
  struct File {
    enum class Kind { added, known, unused };

    Kind kind = Kind::unused;
    std::string path;
    int number = 0;    ///< Its wave number; 0 for an unused file.
    std::string name;  ///< As the list of samples shows it.
    std::string note;  ///< Why it is not used, or what is to be said of it.
  };

  bool isDone = false;      ///< The program has ended as it should.
  std::vector<File> files;  ///< Of the command "add".
  std::string lastLine;     ///< What the program said last, for a person.

  /// The wave numbers of new sounds, and of those that were there too.
  std::vector<int> added() const;
  std::vector<int> usable() const;
};

/// One run at a time. Calls back on the message thread. The program runs apart, so that a broken file harms nothing
/// that plays. Message thread.
class ContentTool {
 public:
  /// The program is looked for beside this one, then in the folder bin beside its folder.
  ContentTool();
  /// A run that is under way ends, and everything that it did is taken back.
  ~ContentTool();
  ContentTool(const ContentTool&) = delete;
  ContentTool& operator=(const ContentTool&) = delete;

  /// Whether the program is there.
  bool isThere() const { return program.existsAsFile(); }
  bool isRunning() const { return run != nullptr; }

  /// Starts the program; `onProgress` hears from 0 to 1. It must be there, and not be running.
  void start(const juce::StringArray& arguments, std::function<void(double)> onProgress,
             std::function<void(const ToolResult&)> onDone);

 private:
  class Run;

  juce::File program;
  std::shared_ptr<Run> run;
};

/// Takes in a line of the program's output, fields parted by tabs. Returns the progress if it tells that, else -1.
double takeToolLine(const std::string& line, ToolResult& result);

}  // namespace tesh::bramel::standalone
