// Pages one above the other, of which the top one shows, below a bar that holds the top page's items. The second press
// of the double click that changes the page does not reach the new one.
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
  /// Takes the top page off and lets go of it. Does nothing if there is none.
  void popPage();
  /// Null if there is none.
  BWStackingPageView* getTopPage() const { return topPage.get(); }
  /// The page that all others cover; null if there is none.
  BWStackingPageView* getFirstPage() const { return pages.empty() ? nullptr : pages.front().get(); }

  /// Places the page and its bars anew; a page calls it when its bars change.
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
