// Keeps the panel's look-and-feel JUCE's default while any panel exists.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "viewmodels/resources/IBramelFontProvider.h"
#include "widgets/PanelLookAndFeel.h"

namespace tesh::bramel {

/// One object of the process, made by the first panel and ended with the last. Message thread only.
class PanelLook {
 public:
  /// `fonts` gives the default face, "Roboto".
  static std::shared_ptr<PanelLook> acquire(IBramelFontProvider& fonts);

  explicit PanelLook(IBramelFontProvider& fonts);
  ~PanelLook();
  PanelLook(const PanelLook&) = delete;
  PanelLook& operator=(const PanelLook&) = delete;

 private:
  PanelLookAndFeel look;
};

}  // namespace tesh::bramel
