// Shows one image of a set.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/BWImageListView.h"

#include <utility>

namespace tesh::bramel {

BWImageListView::BWImageListView() {
  setInterceptsMouseClicks(false, false);
  setAccessible(false);
  setImagePlacement(juce::RectanglePlacement::stretchToFit);
}

void BWImageListView::setImages(ImageSet newImages) {
  images = std::move(newImages);
  show();
}

void BWImageListView::setIndex(std::size_t newIndex) {
  if (newIndex != index && newIndex < getImageCount()) {
    index = newIndex;
    show();
  }
}

// JUCE repaints only if the image differs.
void BWImageListView::show() { setImage(index < getImageCount() ? (*images)[index] : juce::Image()); }

}  // namespace tesh::bramel
