// The tool's commands, and the actions after each result.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/standalone/Imports.h"

#include <string>
#include <utility>
#include <vector>

#include "host/standalone/ImportView.h"
#include "platform/SpecialFolders.h"

namespace tesh::bramel::standalone {

bool Imports::canImport() const {
  const std::vector<std::string> places = platform::commonFilesPlaces();
  return tool.isThere() && !places.empty() && places.front() == platform::ownContentFolder();
}

void Imports::tell(const juce::String& text) {
  line = text;
  wishes.changed();
}

void Imports::add(const juce::StringArray& paths, std::optional<int> pad) {
  if (!tool.isThere() || tool.isRunning() || paths.isEmpty()) {
    return;
  }
  latest.reset();
  juce::StringArray arguments{"add", "--fields"};
  if (pad) {
    arguments.add("--pad");
    arguments.add(juce::String(*pad + 1));
  }
  // The paths go into a file, because many would exceed Windows' limit for a command line.
  list = std::make_unique<juce::TemporaryFile>(".txt");
  const std::string lines = paths.joinIntoString("\n").toStdString();
  list->getFile().replaceWithData(lines.data(), lines.size());
  arguments.add("--from");
  arguments.add(list->getFile().getFullPathName());
  before = wishes.state();
  tool.start(
      arguments, [this](double done) { tell("Adding sounds: " + juce::String(juce::roundToInt(done * 100.0)) + " %"); },
      [this, pad](const ToolResult& result) {
        latest = result;
        list.reset();
        const auto usable = result.usable();
        if (result.isDone && !usable.empty()) {
          wishes.reload({}, pad, usable.front());
        }
        tell(summaryOf(result));
      });
  tell("Adding sounds");
}

void Imports::undo() {
  if (!canUndo()) {
    return;
  }
  juce::StringArray arguments{"remove"};
  for (const int number : latest->added()) {
    arguments.add(juce::String(number));
  }
  latest.reset();
  tool.start(
      arguments, [](double) {},
      [this](const ToolResult& result) {
        if (result.isDone) {
          wishes.reload(before, std::nullopt, 0);
        }
        tell(result.isDone ? juce::String() : juce::String::fromUTF8(result.lastLine.c_str()));
      });
  tell("Taking the sounds back");
}

void Imports::refresh() {
  if (!tool.isThere() || tool.isRunning()) {
    return;
  }
  tool.start(
      {"refresh"}, [](double) {},
      [this](const ToolResult& result) {
        const juce::String said = juce::String::fromUTF8(result.lastLine.c_str());
        if (result.isDone && said.startsWith("Your sounds are")) {
          wishes.reload({}, std::nullopt, 0);
          tell(said);
        }
      });
}

}  // namespace tesh::bramel::standalone
