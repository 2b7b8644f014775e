// Sets the panel's look-and-feel as JUCE's default while any panel exists.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "viewmodels/resources/IBramelFontProvider.h"
#include "widgets/PanelLookAndFeel.h"

namespace tesh::bramel {

/// One object per process, made by the first panel and destroyed with the last. Message thread only.
class PanelLook {
 public:
  /// `fonts` provides the default typeface, "Roboto".
  static std::shared_ptr<PanelLook> acquire(IBramelFontProvider& fonts);

  explicit PanelLook(IBramelFontProvider& fonts);
  ~PanelLook();
  PanelLook(const PanelLook&) = delete;
  PanelLook& operator=(const PanelLook&) = delete;

 private:
  PanelLookAndFeel look;
};

}  // namespace tesh::bramel
