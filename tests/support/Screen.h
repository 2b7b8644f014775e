// A screen that repaints only the areas that components request, as a window does.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <cstdint>
#include <cstdlib>
#include <memory>

namespace sivray::test {

/// Tracks the root and all components below it. Without a window JUCE requests no repaint where a component is removed.
class Screen {
 public:
  explicit Screen(juce::Component& shown, float pixelsOfOne = 1.0F) : root(shown), scale(pixelsOfOne) {
    root.setVisible(true);
    root.setCachedComponentImage(new Asked(root, *dirty));
    picture = paintedWhole();
    dirty->clear();
  }
  ~Screen() { root.setCachedComponentImage(nullptr); }

  /// Paints the areas requested since the last call, and returns the number of pixels that differ from a complete
  /// painting of the root.
  int update() {
    juce::Graphics graphics(picture);
    graphics.addTransform(juce::AffineTransform::scale(scale));
    graphics.reduceClipRegion(*dirty);
    root.paintEntireComponent(graphics, true);
    dirty->clear();
    return differences(paintedWhole());
  }

 private:
  class Asked : public juce::CachedComponentImage {
   public:
    Asked(juce::Component& ofComponent, juce::RectangleList<int>& askedFor) : component(ofComponent), asked(askedFor) {}
    void paint(juce::Graphics& /*graphics*/) override {}
    bool invalidateAll() override { return invalidate(component.getLocalBounds()); }
    bool invalidate(const juce::Rectangle<int>& area) override {
      asked.add(area);
      return true;
    }
    void releaseResources() override {}

   private:
    juce::Component& component;
    juce::RectangleList<int>& asked;
  };

  juce::Image paintedWhole() const {
    juce::Image whole(juce::Image::RGB, juce::roundToInt(scale * static_cast<float>(root.getWidth())),
                      juce::roundToInt(scale * static_cast<float>(root.getHeight())), true);
    juce::Graphics graphics(whole);
    graphics.addTransform(juce::AffineTransform::scale(scale));
    root.paintEntireComponent(graphics, true);
    return whole;
  }

  /// Whether two pixels are equal, except for rounding at the edges of rounded clips, which may differ in a partial
  /// repaint.
  static bool isAlike(const std::uint8_t* a, const std::uint8_t* b) {
    constexpr int kRounding = 4;
    return std::abs(a[0] - b[0]) <= kRounding && std::abs(a[1] - b[1]) <= kRounding &&
           std::abs(a[2] - b[2]) <= kRounding;
  }

  int differences(const juce::Image& whole) const {
    const juce::Image::BitmapData shown(picture, juce::Image::BitmapData::readOnly);
    const juce::Image::BitmapData wanted(whole, juce::Image::BitmapData::readOnly);
    int count = 0;
    for (int y = 0; y < shown.height; ++y) {
      for (int x = 0; x < shown.width; ++x) {
        count += isAlike(shown.getPixelPointer(x, y), wanted.getPixelPointer(x, y)) ? 0 : 1;
      }
    }
    return count;
  }

  juce::Component& root;
  const float scale;
  std::unique_ptr<juce::RectangleList<int>> dirty = std::make_unique<juce::RectangleList<int>>();
  juce::Image picture;
};

}  // namespace sivray::test
