// Builds the program bar, steps through the programs and opens their list.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/BWPluginProgramSelectorView.h"

#include <array>
#include <cstdio>
#include <optional>
#include <utility>

#include "views/BWProgramListSaveAsView.h"
#include "views/BWProgramListView.h"
#include "views/MenuPlace.h"
#include "widgets/Text.h"

namespace tesh::bramel {
namespace {

constexpr int kProgramListWidth = 280;
constexpr int kProgramListHeight = 420;

/// Distance of the program's label from the ends of its rectangle.
constexpr int kLabelBorder = 5;

}  // namespace

BWPluginProgramSelectorView::BWPluginProgramSelectorView(const ProgramBarLook& look)
    : popupDirection(look.popupDirection), rightClick(nameButton, [this] { openMenu(); }) {
  setInterceptsMouseClicks(false, true);
  addButton(nameButton, look.nameButton, "Kit");
  nameLabel.setDisplayFont(look.font);
  nameLabel.setColour(look.colour);
  nameLabel.setBounds(look.label.reduced(kLabelBorder, 0));
  addAndMakeVisible(nameLabel);
  // The image is one pixel wider than its place. Clipping instead of scaling it keeps it sharp.
  nextButton.setImageBorder({0, 0, 0, -1});
  nextButton.setOffImage(look.nextImage);
  nextButton.setOnImage(look.nextImage);
  previousButton.setOffImage(look.previousImage);
  previousButton.setOnImage(look.previousImage);
  addButton(nextButton, look.next, "Next kit");
  addButton(previousButton, look.previous, "Previous kit");
}

BWPluginProgramSelectorView::~BWPluginProgramSelectorView() = default;

void BWPluginProgramSelectorView::addButton(BWToggleButton& button, juce::Rectangle<int> bounds, const char* title) {
  button.setMomentary(true);
  button.setShowPressed(true);
  button.setBounds(bounds);
  button.setTitle(title);
  button.setListener(this);
  addAndMakeVisible(button);
}

void BWPluginProgramSelectorView::openMenu() {
  if (menu) {
    menu().showMenuAsync(menuPlaceIn(nameButton).withMousePosition());
  }
}

void BWPluginProgramSelectorView::setViewModel(std::shared_ptr<IPluginEditViewModel> model) {
  viewModel = std::move(model);
  updateText();
}

/// Reading the name from the instrument also delivers reports that wait for a block, which never comes without a
/// device.
void BWPluginProgramSelectorView::updateText() {
  std::array<char, 256> text{};
  std::snprintf(text.data(), text.size(), "%02d:%s", static_cast<int>(viewModel->getProgramNumber()),
                viewModel->getProgramName().c_str());
  nameLabel.setText(textFrom(text.data()));
}

void BWPluginProgramSelectorView::controlGestureBegan(IBWControl& control) {
  if (&control == &nameButton) {
    openList();
  } else if (&control == &previousButton) {
    viewModel->selectPreviousProgram();
    updateText();
  } else if (&control == &nextButton) {
    viewModel->selectNextProgram();
    updateText();
  }
}

std::function<void(BWPluginProgramSelectorView&)> BWPluginProgramSelectorView::listContinuation() const {
  const auto pages = listStack();
  const auto* const list = pages == nullptr ? nullptr : dynamic_cast<BWProgramListView*>(pages->getFirstPage());
  if (list == nullptr) {
    return {};
  }
  std::optional<juce::String> name;
  if (auto* const page = dynamic_cast<BWProgramListSaveAsView*>(pages->getTopPage())) {
    name = page->nameEditor().getText();
  }
  return [bank = list->getShownBank(), name](BWPluginProgramSelectorView& bar) {
    bar.openList();
    const auto newPages = bar.listStack();
    auto& newList = dynamic_cast<BWProgramListView&>(*newPages->getFirstPage());
    newList.showBank(bank);
    if (name) {
      newList.openSaveAs();
      dynamic_cast<BWProgramListSaveAsView&>(*newPages->getTopPage()).nameEditor().setText(*name);
    }
  };
}

/// The list is destroyed with the bar's pop-up at the latest, so it may keep a pointer to the bar.
std::shared_ptr<BWProgramListView> BWPluginProgramSelectorView::makeProgramList() {
  auto page = std::make_shared<BWProgramListView>();
  page->setFontProvider(viewModel);
  page->setImageProvider(viewModel);
  page->setProgramList(viewModel->getProgramListViewModel());
  page->setWhenFilled([this] { updateText(); });
  return page;
}

void BWPluginProgramSelectorView::openList() {
  // Destroying the page removes the list's listener, so it must happen before the new page becomes the listener.
  popup.reset();
  const auto pages = std::make_shared<BWStackingView>();
  pages->pushPage(makeProgramList());
  stack = pages;
  popup = std::make_shared<BWPopupView>();
  popup->setContentSize(kProgramListWidth, kProgramListHeight);
  popup->setContent(pages);
  popup->setAnchor(&nameButton);
  popup->setDirection(popupDirection);
  popup->show();
}

}  // namespace tesh::bramel
