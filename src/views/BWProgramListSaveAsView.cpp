// Lays out the page and saves the program under the entered name.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/BWProgramListSaveAsView.h"

#include <string>
#include <utility>

#include "core/Utf8.h"
#include "storage/programs/ProgramRecord.h"
#include "views/ActionButton.h"
#include "widgets/BWStackingView.h"
#include "widgets/ProvidedResources.h"
#include "widgets/Text.h"

namespace tesh::bramel {
namespace {

constexpr float kNameFontHeight = 14.0F;
constexpr int kNameIndent = 7;
constexpr int kEditorMargin = 10;
constexpr int kEditorHeight = 24;

}  // namespace

BWProgramListSaveAsView::BWProgramListSaveAsView(std::shared_ptr<IProgramListViewModel> model,
                                                 IBramelFontProvider& fonts, std::function<void()> whenSaved)
    : programList(std::move(model)), saved(std::move(whenSaved)) {
  const juce::Font actionFont = fontNamed(fonts, "Open Sans Regular", kActionFontHeight);
  cancelButton = makeActionButton("Cancel", actionFont, *this);
  saveButton = makeActionButton("Save", actionFont, *this);
  addLeftItem(cancelButton);
  addRightItem(saveButton);
  editor.setTitle("Name");
  editor.setFont(juce::Font(kNameFontHeight));
  editor.setIndents(kNameIndent, editor.getTopIndent());
  editor.setText(textFrom(programList->getCurrentProgramName()), juce::dontSendNotification);
  editor.onReturnKey = [this] { afterTheKey(&BWProgramListSaveAsView::save); };
  editor.onEscapeKey = [this] { afterTheKey(&BWProgramListSaveAsView::leave); };
  addAndMakeVisible(editor);
}

void BWProgramListSaveAsView::resized() {
  BWStackingPageView::resized();
  editor.setBounds(kEditorMargin, kEditorMargin, getWidth() - 2 * kEditorMargin, kEditorHeight);
}

void BWProgramListSaveAsView::parentHierarchyChanged() {
  if (isShowing()) {
    editor.grabKeyboardFocus();
    editor.selectAll();
  }
}

void BWProgramListSaveAsView::controlGestureBegan(IBWControl& control) {
  if (&control == saveButton.get()) {
    save();
  } else if (&control == cancelButton.get()) {
    leave();
  }
}

/// Postponed, because the action may delete the page with its text field, which still uses itself after reporting a
/// key.
void BWProgramListSaveAsView::afterTheKey(void (BWProgramListSaveAsView::*action)()) {
  juce::MessageManager::callAsync([page = juce::Component::SafePointer<BWProgramListSaveAsView>(this), action] {
    if (page != nullptr) {
      (page.getComponent()->*action)();
    }
  });
}

void BWProgramListSaveAsView::save() {
  if (getStackingView() != nullptr) {
    constexpr std::size_t kLongestName = vimo::ProgramRecord::kTextBytes - 1;
    programList->saveProgramAs(std::string(cofu::core::utf8Start(editor.getText().toStdString(), kLongestName)));
    const std::function<void()> tell = saved;
    leave();
    tell();
  }
}

void BWProgramListSaveAsView::leave() {
  if (BWStackingView* const stack = getStackingView()) {
    stack->popPage();  // This page may have been deleted.
  }
}

}  // namespace tesh::bramel
