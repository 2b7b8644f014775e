// A button of images.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/BWToggleButton.h"

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

void BWToggleButton::setImage(Slot slot, const juce::Image& image) {
  images[slot] = image;
  giveImages();
}

void BWToggleButton::giveImages() {
  list.setImages(makeImageSet({images.begin(), images.end()}));
  refresh();
}

// Called once a button is held that shows it. One copy serves both states if they look alike.
void BWToggleButton::darken() {
  const bool lacksOff = images[pressedOff].isNull() && images[off].isValid();
  const bool lacksOn = images[pressedOn].isNull() && images[on].isValid();
  if (lacksOff) {
    images[pressedOff] = darkened(images[off]);
  }
  if (lacksOn) {
    images[pressedOn] = images[on] == images[off] ? images[pressedOff] : darkened(images[on]);
  }
  if (lacksOff || lacksOn) {
    list.setImages(makeImageSet({images.begin(), images.end()}));
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
