// A stack of pages, of which the top one is visible.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/BWStackingView.h"

#include <utility>

namespace tesh::bramel {

BWStackingView::BWStackingView() {
  leftHolder.setInterceptsMouseClicks(false, true);
  rightHolder.setInterceptsMouseClicks(false, true);
  addAndMakeVisible(content);
  addAndMakeVisible(leftHolder);
  addAndMakeVisible(rightHolder);
  addChildComponent(shield);
}

BWStackingView::~BWStackingView() {
  for (const auto& page : pages) {
    page->setStackingView(nullptr);
  }
}

void BWStackingView::pushPage(std::shared_ptr<BWStackingPageView> page) {
  page->setStackingView(this);
  pages.push_back(std::move(page));
  showTop();
}

void BWStackingView::popPage() {
  if (pages.empty()) {
    return;
  }
  const std::shared_ptr<BWStackingPageView> popped = pages.back();
  pages.pop_back();
  showTop();
  popped->setStackingView(nullptr);
}

void BWStackingView::showTop() {
  content.removeAllChildren();
  leftHolder.removeAllChildren();
  rightHolder.removeAllChildren();
  const bool replacesOne = topPage != nullptr;
  topPage = pages.empty() ? nullptr : pages.back();
  if (topPage != nullptr) {
    content.addAndMakeVisible(*topPage);
    leftHolder.addAndMakeVisible(topPage->getLeftBar());
    rightHolder.addAndMakeVisible(topPage->getRightBar());
  }
  layOut();
  if (replacesOne && topPage != nullptr) {
    shield.raise();
  }
}

void BWStackingView::resized() {
  BWView::resized();
  layOut();
}

void BWStackingView::layOut() {
  content.setBounds(0, kBarHeight, getWidth(), getHeight() - kBarHeight);
  shield.setBounds(getLocalBounds());
  if (topPage == nullptr) {
    return;
  }
  topPage->setBounds(content.getLocalBounds());
  juce::Component& leftBar = topPage->getLeftBar();
  juce::Component& rightBar = topPage->getRightBar();
  leftBar.setBounds(0, 0, leftBar.getWidth(), kBarItemHeight);
  rightBar.setBounds(0, 0, rightBar.getWidth(), kBarItemHeight);
  leftHolder.setBounds(kBarMargin, kBarMargin, leftBar.getWidth(), kBarItemHeight);
  rightHolder.setBounds(getWidth() - kBarMargin - rightBar.getWidth(), kBarMargin, rightBar.getWidth(), kBarItemHeight);
}

}  // namespace tesh::bramel
