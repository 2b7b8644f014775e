// A switch with one image per state. Each press selects the next state, and after the last the first.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/BWImageListView.h"
#include "widgets/BWSwitchBase.h"

namespace tesh::bramel {

/// Without images, a press only notifies begin and end.
class BWToggleSwitch : public BWSwitchBase {
 public:
  BWToggleSwitch();

  /// One for each state.
  void setImages(ImageSet images);
  std::uint64_t getStateCount() const override { return list.getImageCount(); }
  juce::Image getImage() const { return list.getImage(); }

  void resized() override;

 protected:
  void onTrackingBegan() override;
  void refresh() override;

 private:
  BWImageListView list;
};

}  // namespace tesh::bramel
