// A knob that shows its value as a frame of a film strip.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "widgets/BWImageListView.h"
#include "widgets/BWKnobBase.h"

namespace tesh::bramel {

class BWImageKnob : public BWKnobBase {
 public:
  BWImageKnob();

  /// Frames from the lowest value to the highest. Knobs of the same look share one set.
  void setFrames(ImageSet frames);
  /// Frames of the lowest and of the highest value: the first and the last unless set.
  void setMinimumFrame(float frame);
  void setMaximumFrame(float frame);
  std::size_t getFrame() const { return list.getIndex(); }

  void resized() override;

 protected:
  void refresh() override;

 private:
  BWImageListView list;
  std::optional<float> minimumFrame;
  std::optional<float> maximumFrame;
};

}  // namespace tesh::bramel
