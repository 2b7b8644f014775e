// A stack of pages, of which the top one is visible, below a bar with the top page's items. The second press of a
// double click that changes the page does not reach the new page.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "widgets/BWStackingPageView.h"
#include "widgets/DoubleClickShield.h"

namespace tesh::bramel {

class BWStackingView : public BWView {
 public:
  static constexpr int kBarHeight = 40;
  static constexpr int kBarMargin = 8;
  static constexpr int kBarItemHeight = kBarHeight - 2 * kBarMargin;

  BWStackingView();
  ~BWStackingView() override;

  void pushPage(std::shared_ptr<BWStackingPageView> page);
  /// Removes the top page and releases it. Does nothing if there is none.
  void popPage();
  /// Null if there is none.
  BWStackingPageView* getTopPage() const { return topPage.get(); }
  /// The bottom page; null if there is none.
  BWStackingPageView* getFirstPage() const { return pages.empty() ? nullptr : pages.front().get(); }

  /// Lays out the page and its bars; a page calls it when its bars change.
  void layOut();

  void resized() override;

 private:
  void showTop();

  juce::Component content;
  juce::Component leftHolder;
  juce::Component rightHolder;
  std::shared_ptr<BWStackingPageView> topPage;
  std::vector<std::shared_ptr<BWStackingPageView>> pages;
  DoubleClickShield shield;
};

}  // namespace tesh::bramel
