// A button of images: off, on, and a darker pair while it is pressed.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "widgets/BWButtonBase.h"
#include "widgets/BWImageListView.h"
#include "widgets/PanelText.h"

namespace tesh::bramel {

/// Without images it is an invisible clickable area.
class BWToggleButton : public BWButtonBase {
 public:
  /// A colour set under this id fills the button behind its image.
  static constexpr int kBackgroundColourId = 0x1006501;

  BWToggleButton();

  /// Images for off and on, and optionally for pressed off and pressed on. Buttons of the same look share one set.
  void setImages(ImageSet newImages);
  void setOffImage(const juce::Image& image) { setImage(off, image); }
  void setOnImage(const juce::Image& image) { setImage(on, image); }
  /// Pressed images that were not set are made at the first press: the other images, every pixel darker by 0.3.
  void setPressedOffImage(const juce::Image& image) { setImage(pressedOff, image); }
  void setPressedOnImage(const juce::Image& image) { setImage(pressedOn, image); }
  /// Whether to show the pressed images while the button is held; off at first.
  void setShowPressed(bool show);
  /// The visible image; empty if there is none.
  juce::Image getImage() const { return list.getImage(); }

  void setImagePlacement(juce::RectanglePlacement placement) { list.setImagePlacement(placement); }
  void setImageBorder(juce::BorderSize<int> border);
  void setTextBorder(juce::BorderSize<int> border);
  /// The text on the button, empty at first.
  PanelText& getText();

  void resized() override;
  void paint(juce::Graphics& graphics) override;

 protected:
  void refresh() override;

 private:
  enum Slot : std::size_t { off, on, pressedOff, pressedOn, kSlots };

  void setImage(Slot slot, const juce::Image& image);
  /// The images of all four slots, empty where there is none.
  std::vector<juce::Image> allImages() const;
  void darken();

  ImageSet images;  ///< Null for none.
  BWImageListView list;
  std::unique_ptr<PanelText> text;  ///< Made on first use, because most buttons have none.
  juce::BorderSize<int> imageBorder;
  juce::BorderSize<int> textBorder;
  bool showPressed = false;
};

}  // namespace tesh::bramel
