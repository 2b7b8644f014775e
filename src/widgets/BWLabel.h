// A line of text that fills its component.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/PanelText.h"

namespace tesh::bramel {

/// Left-aligned and vertically centred.
class BWLabel : public PanelText {
 public:
  BWLabel() { setJustification(juce::Justification::centredLeft); }
};

}  // namespace tesh::bramel
