// A fader whose handle is an image.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/BWKnobBase.h"

namespace tesh::bramel {

class BWImageSlider : public BWKnobBase {
 public:
  BWImageSlider();

  /// Width and height are panel pixels, to which the image is stretched. A handle wider than the fader is clipped on
  /// both sides.
  void setHandle(const juce::Image& image, int width, int height);
  juce::Rectangle<int> getHandleBounds() const { return handle.getBounds(); }

  void resized() override;

 protected:
  void refresh() override;

 private:
  juce::ImageComponent handle;
  int handleWidth = 0;
  int handleHeight = 0;
};

}  // namespace tesh::bramel
