// Opens the dialogs for import and export, and passes the chosen file to the view model.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/ProgramFileDialogs.h"

#include <algorithm>
#include <utility>

#include "views/BWPopupSlotView.h"
#include "widgets/BWLabel.h"
#include "widgets/PanelColours.h"

namespace tesh::bramel {
namespace {

#ifdef _WIN32
constexpr bool kSystemsDialogs = true;
/// Virus scanners hold a newly written file open for a moment, during which it cannot be replaced.
constexpr int kExportTries = 10;
#else
/// Not the desktop's own dialogs: they run as separate processes and would not belong to a host's window.
constexpr bool kSystemsDialogs = false;
constexpr int kExportTries = 1;
#endif
constexpr int kExportPauseMilliseconds = 50;

constexpr const char* kOwnBank = "User";

/// The slot of the panel's pop-ups, or the top component if there is none.
juce::Component* frontOf(juce::Component& component) {
  auto* const slot = BWPopupSlotView::above(&component);
  return slot == nullptr ? component.getTopLevelComponent() : slot;
}

juce::String endingOf(const IProgramListViewModel& model) { return juce::String(".") + model.getExportFileStem(); }

juce::File documents() {
  const auto folder = juce::File::getSpecialLocation(juce::File::userDocumentsDirectory);
  return folder.isDirectory() ? folder : juce::File::getSpecialLocation(juce::File::userHomeDirectory);
}

/// The first component of this kind below `parent` for which `isWanted` is true.
template <typename Kind, typename IsWanted>
Kind* findBelow(juce::Component& parent, const IsWanted& isWanted) {
  for (juce::Component* const child : parent.getChildren()) {
    if (auto* const found = dynamic_cast<Kind*>(child); found != nullptr && isWanted(*found)) {
      return found;
    }
    if (auto* const found = findBelow<Kind>(*child, isWanted)) {
      return found;
    }
  }
  return nullptr;
}

/// Moves a question that was just opened into the panel: in its own window it might fall behind the host's.
void takeQuestionInto(juce::Component* front) {
  auto* const question = dynamic_cast<juce::AlertWindow*>(juce::Component::getCurrentlyModalComponent());
  if (question != nullptr && question->isOnDesktop() && front != nullptr) {
    front->addAndMakeVisible(question);
    question->setCentrePosition(front->getLocalBounds().getCentre());
    auto* const field = findBelow<juce::TextEditor>(*question, [](auto&) { return true; });
    (field == nullptr ? static_cast<juce::Component*>(question) : field)->grabKeyboardFocus();
  }
}

/// Makes a button of the dialog first add the missing ending to the name, and then move its questions into `front`.
void extend(juce::TextButton& button, juce::TextEditor* name, const juce::String& ending, juce::Component& front) {
  button.onClick = [act = button.onClick, name, ending, top = juce::Component::SafePointer(&front)] {
    if (name != nullptr && name->getText().isNotEmpty() && !name->getText().endsWithIgnoreCase(ending)) {
      name->setText(name->getText() + ending);
    }
    act();
    takeQuestionInto(top);
  };
}

/// Fits JUCE's dialog, which was just opened in `front`, into the panel, with the focus in its name field.
void fitInto(juce::Component& front, juce::FileChooserDialogBox& dialog, const juce::String& ending) {
  constexpr int kWidth = 600;
  constexpr int kHeight = 420;
  constexpr int kNoticeMargin = 12;
  const auto area = front.getLocalBounds().reduced(kNoticeMargin);
  dialog.setResizable(false, false);
  dialog.setDraggable(false);
  dialog.setBounds(area.withSizeKeepingCentre(std::min(kWidth, area.getWidth()), std::min(kHeight, area.getHeight())));
  auto& browser = *findBelow<juce::FileBrowserComponent>(dialog, [](auto&) { return true; });
  auto* const name =
      findBelow<juce::TextEditor>(browser, [&](auto& field) { return field.getParentComponent() == &browser; });
  const auto buttonNamed = [&](const juce::String& text) {
    return findBelow<juce::TextButton>(dialog, [&](auto& button) { return button.getButtonText() == text; });
  };
  if (browser.isSaveMode()) {
    extend(*buttonNamed(browser.getActionVerb()), name, ending, front);
    extend(*buttonNamed("New Folder"), nullptr, ending, front);
  }
  // The text field uses the key itself.
  name->onEscapeKey = [cancel = buttonNamed("Cancel")] { cancel->triggerClick(); };
  name->grabKeyboardFocus();
}

/// The content of a pop-up: one line.
std::shared_ptr<juce::Component> makeLine(const juce::String& text) {
  constexpr float kFontHeight = 14.0F;
  auto line = std::make_shared<BWLabel>();
  line->setFont(juce::Font(kFontHeight));
  line->setColour(juce::Colour(colours::kSlate));
  line->setJustification(juce::Justification::centred);
  line->setText(text);
  return line;
}

}  // namespace

// The dialogs do not block: if a host closes the editor under an open dialog, the message thread must not be inside a
// nested loop of the view that is deleted.

void ProgramFileDialogs::open(juce::Component& opener, int mode, const juce::String& title, const juce::File& start,
                              const juce::String& ending, const std::function<bool(const juce::File&)>& use,
                              const char* fault) {
  juce::Component* const front = frontOf(opener);
  chooser = std::make_unique<juce::FileChooser>(title, start, "*" + ending, kSystemsDialogs, false, front);
  const auto take = [this, use, fault, anchor = juce::Component::SafePointer(&opener)](const juce::FileChooser& done) {
    const juce::File file = done.getResult();
    if (file != juce::File() && !use(file)) {
      say(anchor, file.getFileName() + fault);
    }
  };
  chooser->launchAsync(mode | juce::FileBrowserComponent::canSelectFiles, take);
  if (auto* const dialog = findBelow<juce::FileChooserDialogBox>(*front, [](auto&) { return true; })) {
    fitInto(*front, *dialog, ending);
  }
}

void ProgramFileDialogs::say(juce::Component* anchor, const juce::String& line) {
  constexpr int kWidth = 440;
  constexpr int kHeight = 56;
  notice = std::make_shared<BWPopupView>();
  notice->setContentSize(kWidth, kHeight);
  notice->setContent(makeLine(line));
  notice->setAnchor(anchor);
  notice->setDirection(UIPopupDirection::over);
  notice->show();
}

void ProgramFileDialogs::openImport(juce::Component& opener, const std::shared_ptr<IProgramListViewModel>& model,
                                    std::function<void()> whenImported) {
  const auto use = [model, tell = std::move(whenImported)](const juce::File& file) {
    const std::uint64_t before = model->getProgramCount(kOwnBank);
    model->importPrograms(file.getFullPathName().toStdString());
    const bool hasMore = model->getProgramCount(kOwnBank) > before;
    tell();
    return hasMore;
  };
  open(opener, juce::FileBrowserComponent::openMode, "Import User Programs", documents(), endingOf(*model), use,
       " holds no kits that can be read.");
}

void ProgramFileDialogs::openExport(juce::Component& opener, const std::shared_ptr<IProgramListViewModel>& model) {
  const juce::String ending = endingOf(*model);
  const auto use = [this, model, anchor = juce::Component::SafePointer(&opener)](const juce::File& file) {
    exportTo(file, anchor, model, kExportTries);
    return true;  // It reports its own errors.
  };
  open(opener, juce::FileBrowserComponent::saveMode | juce::FileBrowserComponent::warnAboutOverwriting,
       "Export User Programs", documents().getChildFile("My Kits" + ending), ending, use, "");
}

/// Tries again later, without making the panel's thread wait, unless the opener no longer exists by then.
void ProgramFileDialogs::exportTo(const juce::File& file, const juce::Component::SafePointer<juce::Component>& opener,
                                  const std::shared_ptr<IProgramListViewModel>& model, int tries) {
  if (model->exportPrograms(file.getFullPathName().toStdString())) {
    return;
  }
  if (tries <= 1) {
    say(opener, file.getFileName() + " could not be written.");
    return;
  }
  juce::Timer::callAfterDelay(kExportPauseMilliseconds, [this, file, opener, tries, held = std::weak_ptr(model)] {
    const auto kept = held.lock();
    if (opener != nullptr && kept != nullptr) {
      exportTo(file, opener, kept, tries - 1);
    }
  });
}

}  // namespace tesh::bramel
