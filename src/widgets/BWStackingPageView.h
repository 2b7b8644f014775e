// A page of a stacking view, with the items of the bar above it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "widgets/BWView.h"

namespace tesh::bramel {

class BWStackingView;

class BWStackingPageView : public BWView {
 public:
  BWStackingPageView();

  /// Called by the stacking view when the page is pushed; with null when it is popped or the view is destroyed.
  virtual void setStackingView(BWStackingView* view) { stackingView = view; }
  BWStackingView* getStackingView() const { return stackingView; }

  /// Items keep their size and are placed side by side.
  void addLeftItem(std::shared_ptr<juce::Component> item);
  void addRightItem(std::shared_ptr<juce::Component> item);
  /// The bar keeps its width until the next item is added.
  void clearRightItems();

  juce::Component& getLeftBar() { return *left.bar; }
  juce::Component& getRightBar() { return *right.bar; }

 private:
  struct Bar {
    std::shared_ptr<juce::Component> bar = std::make_shared<juce::Component>();
    std::vector<std::shared_ptr<juce::Component>> wrappers;
    std::vector<std::shared_ptr<juce::Component>> items;
  };

  void addItem(Bar& bar, std::shared_ptr<juce::Component> item);

  BWStackingView* stackingView = nullptr;  ///< Cleared by the stacking view.
  Bar right;
  Bar left;
};

}  // namespace tesh::bramel
