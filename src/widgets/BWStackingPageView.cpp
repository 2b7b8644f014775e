// A page of a stacking view.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/BWStackingPageView.h"

#include <utility>

#include "widgets/BWStackingView.h"

namespace tesh::bramel {
namespace {

constexpr int kSpacing = 8;

}  // namespace

BWStackingPageView::BWStackingPageView() {
  left.bar->setInterceptsMouseClicks(false, true);
  right.bar->setInterceptsMouseClicks(false, true);
}

void BWStackingPageView::addLeftItem(std::shared_ptr<juce::Component> item) { addItem(left, std::move(item)); }

void BWStackingPageView::addRightItem(std::shared_ptr<juce::Component> item) { addItem(right, std::move(item)); }

void BWStackingPageView::clearRightItems() {
  right.wrappers.clear();
  right.items.clear();
}

void BWStackingPageView::addItem(Bar& bar, std::shared_ptr<juce::Component> item) {
  int x = 0;
  for (const auto& other : bar.items) {
    x += other->getWidth() + kSpacing;
  }
  auto wrapper = std::make_shared<juce::Component>();
  wrapper->setBounds(x, 0, item->getWidth(), item->getHeight());
  wrapper->addAndMakeVisible(*item);
  bar.bar->addAndMakeVisible(*wrapper);
  bar.bar->setSize(x + wrapper->getWidth(), bar.bar->getHeight());
  bar.wrappers.push_back(std::move(wrapper));
  bar.items.push_back(std::move(item));
  if (stackingView != nullptr) {
    stackingView->layOut();
  }
}

}  // namespace tesh::bramel
