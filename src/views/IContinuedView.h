// Transfers a view's visible state to its replacement, when a panel is rebuilt while the user works with it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

namespace tesh::bramel {

/// To be called with the new view once it is in its window. May outlive the old view.
using Continuation = std::function<void(juce::Component& newView)>;

/// Message thread only.
class IContinuedView {
 public:
  virtual ~IContinuedView() = default;
  /// Captures the view's page and its open pop-up.
  virtual Continuation continuation() const = 0;
};

/// Empty for a null view, or one that is no IContinuedView.
inline Continuation continuationOf(const juce::Component* view) {
  const auto* const continued = dynamic_cast<const IContinuedView*>(view);
  return continued == nullptr ? [](juce::Component&) {} : continued->continuation();
}

}  // namespace tesh::bramel
