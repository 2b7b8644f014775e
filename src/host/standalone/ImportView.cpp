// A list in the look of the panel's sample browser.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/standalone/ImportView.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "host/standalone/ProgramFonts.h"
#include "views/ActionButton.h"
#include "widgets/ProvidedResources.h"

namespace tesh::bramel::standalone {
namespace {

using Kind = ToolResult::File::Kind;

constexpr int kImportHeader = 40;
constexpr int kImportInset = 6;
constexpr int kImportMargin = 8;
constexpr double kImportTitle = 16.0;
constexpr double kImportButton = 12.0;

std::string rowOf(const ToolResult::File& file) {
  const juce::File path(juce::String::fromUTF8(file.path.c_str()));
  const std::string name = path.getFileName().toStdString();
  switch (file.kind) {
    case Kind::added:
      return file.name + (file.note.empty() ? "" : ":  " + name + " " + file.note);
    case Kind::known:
      return file.name + ":  was there already";
    case Kind::unused:
      break;
  }
  return name + ":  not used, it " + file.note;
}

juce::String counted(std::ptrdiff_t count, const char* one, const char* several) {
  return juce::String(static_cast<int>(count)) + " " + (count == 1 ? one : several);
}

}  // namespace

juce::String summaryOf(const ToolResult& result) {
  const auto count = [&result](Kind kind) { return std::ranges::count(result.files, kind, &ToolResult::File::kind); };
  if (!result.isDone && result.usable().empty()) {
    const auto unused = count(Kind::unused);
    return unused > 0 ? counted(unused, "file", "files") + " not used"
                      : juce::String::fromUTF8(result.lastLine.c_str());
  }
  juce::StringArray parts;
  if (count(Kind::added) > 0 || count(Kind::known) == 0) {
    parts.add(counted(count(Kind::added), "sound", "sounds") + " added");
  }
  if (count(Kind::known) > 0) {
    parts.add(counted(count(Kind::known), "was", "were") + " there already");
  }
  if (count(Kind::unused) > 0) {
    parts.add(counted(count(Kind::unused), "file", "files") + " not used");
  }
  return parts.joinIntoString(", ");
}

ImportView::ImportView(const ToolResult& result, IBramelFontProvider& fonts, std::function<void()> newUndo)
    : undo(std::move(newUndo)),
      undoButton(makeActionButton("Undo", fontNamed(fonts, kListFace, kImportButton), *this)) {
  title.setFont(fontNamed(fonts, kListFace, kImportTitle));
  title.setColour(juce::Colours::white);
  title.setText(summaryOf(result));
  std::vector<ToolResult::File> files = result.files;
  std::ranges::stable_sort(files, [](const auto& a, const auto& b) { return a.kind > b.kind; });
  std::vector<std::string> rows;
  std::ranges::transform(files, std::back_inserter(rows), rowOf);
  list.setListTitle("Dropped files");
  list.setFontProvider(fonts);
  list.setItems(std::move(rows));
  for (juce::Component* const part :
       std::initializer_list<juce::Component*>{&header, &title, &list, undoButton.get()}) {
    addAndMakeVisible(*part);
  }
  undoButton->setVisible(undo != nullptr);
}

void ImportView::controlGestureBegan(IBWControl& /*control*/) {
  if (undo) {
    undo();
  }
}

void ImportView::resized() {
  auto area = getLocalBounds();
  const auto top = area.removeFromTop(kImportHeader);
  header.setBounds(top);
  title.setBounds(top.withTrimmedLeft(2 * kImportInset));
  undoButton->setBounds(top.getRight() - kImportMargin - kActionButtonWidth, top.getY() + kImportMargin,
                        kActionButtonWidth, kActionButtonHeight);
  list.setBounds(area);
}

}  // namespace tesh::bramel::standalone
