// Shows one image of a set, stretched to the view's size.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <cstddef>

#include "widgets/ProvidedResources.h"

namespace tesh::bramel {

/// Ignores clicks. `getImage` returns the visible image, or an empty image if there is none.
class BWImageListView : public juce::ImageComponent {
 public:
  BWImageListView();

  /// Shows the same index of the new set; null shows nothing.
  void setImages(ImageSet newImages);
  std::size_t getImageCount() const { return images == nullptr ? 0 : images->size(); }

  /// Ignores an index past the end.
  void setIndex(std::size_t newIndex);
  std::size_t getIndex() const { return index; }

 private:
  void show();

  ImageSet images;
  std::size_t index = 0;
};

}  // namespace tesh::bramel
