// A button of images.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/BWToggleButton.h"

#include <utility>

namespace tesh::bramel {
namespace {

constexpr float kPressedDarker = 0.3F;
constexpr float kBackgroundCorner = 3.0F;

juce::Image darkened(const juce::Image& image) {
  juce::Image copy = image.createCopy();
  juce::Image::BitmapData pixels(copy, juce::Image::BitmapData::readWrite);
  for (int y = 0; y < pixels.height; ++y) {
    for (int x = 0; x < pixels.width; ++x) {
      pixels.setPixelColour(x, y, pixels.getPixelColour(x, y).darker(kPressedDarker));
    }
  }
  return copy;
}

}  // namespace

BWToggleButton::BWToggleButton() { addAndMakeVisible(list); }

void BWToggleButton::setShowPressed(bool show) {
  showPressed = show;
  refresh();
}

PanelText& BWToggleButton::getText() {
  if (text == nullptr) {
    text = std::make_unique<PanelText>();
    text->setAccessible(false);
    addAndMakeVisible(*text);
    resized();
  }
  return *text;
}

void BWToggleButton::setImages(ImageSet newImages) {
  images = std::move(newImages);
  list.setImages(images);
  refresh();
}

void BWToggleButton::setImage(Slot slot, const juce::Image& image) {
  std::vector<juce::Image> changed = allImages();
  changed[slot] = image;
  setImages(makeImageSet(std::move(changed)));
}

std::vector<juce::Image> BWToggleButton::allImages() const {
  std::vector<juce::Image> all = images == nullptr ? std::vector<juce::Image>() : *images;
  all.resize(kSlots);
  return all;
}

// States of the same look share one copy.
void BWToggleButton::darken() {
  std::vector<juce::Image> all = allImages();
  const bool lacksOff = all[pressedOff].isNull() && all[off].isValid();
  const bool lacksOn = all[pressedOn].isNull() && all[on].isValid();
  if (lacksOff) {
    all[pressedOff] = darkened(all[off]);
  }
  if (lacksOn) {
    all[pressedOn] = all[on] == all[off] ? all[pressedOff] : darkened(all[on]);
  }
  if (lacksOff || lacksOn) {
    images = makeImageSet(std::move(all));
    list.setImages(images);
  }
}

void BWToggleButton::setImageBorder(juce::BorderSize<int> border) {
  imageBorder = border;
  resized();
}

void BWToggleButton::setTextBorder(juce::BorderSize<int> border) {
  textBorder = border;
  resized();
}

void BWToggleButton::resized() {
  list.setBounds(imageBorder.subtractedFrom(getLocalBounds()));
  if (text != nullptr) {
    text->setBounds(textBorder.subtractedFrom(getLocalBounds()));
  }
}

void BWToggleButton::paint(juce::Graphics& graphics) {
  if (isColourSpecified(kBackgroundColourId)) {
    graphics.setColour(findColour(kBackgroundColourId));
    graphics.fillRoundedRectangle(getLocalBounds().toFloat(), kBackgroundCorner);
  }
}

void BWToggleButton::refresh() {
  const bool down = showPressed && isPressed();
  if (down) {
    darken();
  }
  if (getState()) {
    list.setIndex(down ? pressedOn : on);
  } else {
    list.setIndex(down ? pressedOff : off);
  }
}

}  // namespace tesh::bramel
