// Lets a new view show what an older one of its kind showed, where a panel is made anew under the user's hand.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

namespace tesh::bramel {

/// Call it with the new view once that stands in its window. It may outlive the old view.
using Continuation = std::function<void(juce::Component& newView)>;

/// Message thread only.
class IContinuedView {
 public:
  virtual ~IContinuedView() = default;
  /// What the view shows now: its page, and the pop-up that is open.
  virtual Continuation continuation() const = 0;
};

/// Does nothing for a view that is null or of no such kind.
inline Continuation continuationOf(const juce::Component* view) {
  const auto* const continued = dynamic_cast<const IContinuedView*>(view);
  return continued == nullptr ? [](juce::Component&) {} : continued->continuation();
}

}  // namespace tesh::bramel
