// Draws the strip in the panel's colours: a glazed background, a raised button and a dark display.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/standalone/TransportStrip.h"

#include "host/standalone/ProgramFonts.h"
#include "widgets/PanelColours.h"
#include "widgets/ProvidedResources.h"

namespace tesh::bramel::standalone {
namespace {

// Panel pixels. The edges align with the panel's kit display and pads.
constexpr int kLeft = 28;
constexpr int kRight = 742;
constexpr int kBodyWidth = 72;
constexpr int kBodyHeight = 22;
constexpr int kGlassWidth = 438;
constexpr int kGlassHeight = 24;
constexpr int kGlassMargin = 12;
constexpr int kMarkWidth = 24;
constexpr int kHintGap = 18;

constexpr double kCaptionHeight = 12.9;
constexpr double kHintHeight = 10.0;
constexpr double kDisplayHeight = 13.0;
constexpr float kCaptionTracking = 0.06F;

void fillDown(juce::Graphics& graphics, juce::Rectangle<float> area, float corner, juce::uint32 top,
              juce::uint32 bottom) {
  graphics.setGradientFill(juce::ColourGradient::vertical(juce::Colour(top), juce::Colour(bottom), area));
  graphics.fillRoundedRectangle(area, corner);
}

void outlineDown(juce::Graphics& graphics, juce::Rectangle<float> area, float corner, juce::uint32 top,
                 juce::uint32 bottom) {
  graphics.setGradientFill(juce::ColourGradient::vertical(juce::Colour(top), juce::Colour(bottom), area));
  graphics.drawRoundedRectangle(area.reduced(0.5F), corner, 1.0F);
}

/// Looks like the panel's page buttons: dark, and amber while the demo plays.
class DemoButton final : public BWButtonBase {
 public:
  explicit DemoButton(const juce::Font& captionFont) {
    text.setFont(captionFont);
    text.setText("DEMO");
    text.setAccessible(false);
    addAndMakeVisible(text);
    setTitle("Demo");
    refresh();
  }

  void resized() override { text.setBounds(getLocalBounds().withTrimmedLeft(18)); }

  void paint(juce::Graphics& graphics) override {
    constexpr float kCorner = 4.0F;
    const auto body = getLocalBounds().toFloat();
    if (getState()) {
      fillDown(graphics, body, kCorner, 0xffffd24a, 0xffffb700);
      outlineDown(graphics, body, kCorner, 0x99ffffff, 0x1fffffff);
    } else {
      fillDown(graphics, body, kCorner, 0xff2c2e4e, 0xff191a34);
      outlineDown(graphics, body, kCorner, 0x38ffffff, 0x1f000000);
    }
    graphics.setColour(sign());
    const float middle = body.getCentreY();
    juce::Path mark;
    if (getState()) {
      mark.addRectangle(13.0F, middle - 4.0F, 8.0F, 8.0F);
    } else {
      mark.addTriangle(13.0F, middle - 5.0F, 13.0F, middle + 5.0F, 21.0F, middle);
    }
    graphics.fillPath(mark);
  }

 protected:
  void refresh() override {
    text.setColour(sign());
    repaint();
  }

 private:
  juce::Colour sign() const { return juce::Colour(getState() ? colours::kNight : colours::kPeriwinkle); }

  PanelText text;
};

/// A display with the mark of a menu.
class DeviceDisplay final : public BWButtonBase {
 public:
  DeviceDisplay() {
    setMomentary(true);
    setTitle("Sound and MIDI");
  }

  void paint(juce::Graphics& graphics) override {
    constexpr float kCorner = 4.0F;
    const auto rim = getLocalBounds().toFloat();
    const auto glass = rim.reduced(1.0F);
    outlineDown(graphics, rim, kCorner + 1.0F, 0x57000000, 0x33ffffff);
    fillDown(graphics, glass, kCorner, 0xff0c0d22, 0xff191b3a);
    graphics.setGradientFill(juce::ColourGradient::vertical(juce::Colour(0x73000000), glass.getY(),
                                                            juce::Colours::transparentBlack, glass.getY() + 4.0F));
    graphics.fillRoundedRectangle(glass.withHeight(4.0F), kCorner);
    graphics.setColour(juce::Colour(colours::kPeriwinkle).withAlpha(0.75F));
    const int middle = getWidth() - kMarkWidth / 2 - 4;
    for (int row = 0; row < 4; ++row) {
      graphics.fillRect(middle - 3 + row, getHeight() / 2 - 2 + row, 7 - 2 * row, 1);
    }
  }
};

}  // namespace

TransportStrip::TransportStrip(IBramelFontProvider& fonts, IBWControlListener& listener)
    : demo(std::make_unique<DemoButton>(
          fontNamed(fonts, kCaptionFace, kCaptionHeight).withExtraKerningFactor(kCaptionTracking))),
      display(std::make_unique<DeviceDisplay>()) {
  setOpaque(true);
  demo->setListener(&listener);
  display->setListener(&listener);
  hint.setFont(fontNamed(fonts, kCaptionFace, kHintHeight).withExtraKerningFactor(kCaptionTracking));
  hint.setColour(juce::Colour(colours::kEditLabel));
  hint.setJustification(juce::Justification::centredLeft);
  hint.setText("KEYS  A S D F G H J K  PLAY THE PADS");
  deviceText.setDisplayFont(fontNamed(fonts, kDisplayFace, kDisplayHeight));
  deviceText.setJustification(juce::Justification::centredLeft);
  for (juce::Component* const part :
       {static_cast<juce::Component*>(demo.get()), static_cast<juce::Component*>(&hint),
        static_cast<juce::Component*>(display.get()), static_cast<juce::Component*>(&deviceText)}) {
    addAndMakeVisible(*part);
  }
}

TransportStrip::~TransportStrip() = default;

void TransportStrip::showDevice(const juce::String& text, bool isFault) {
  deviceText.setColour(juce::Colour(isFault ? colours::kAmber : colours::kPeriwinkle));
  deviceText.setText(text);
  display->setDescription(text);
}

void TransportStrip::paint(juce::Graphics& graphics) {
  const auto area = getLocalBounds().toFloat();
  graphics.setGradientFill(juce::ColourGradient::vertical(juce::Colour(0xff1d2184), juce::Colour(0xff171a6a), area));
  graphics.fillRect(area);
  graphics.setColour(juce::Colours::white.withAlpha(0.16F));
  graphics.fillRect(area.withHeight(1.0F));
  graphics.setColour(juce::Colours::black.withAlpha(0.34F));
  graphics.fillRect(area.withTop(area.getBottom() - 1.0F));
}

void TransportStrip::resized() {
  const int middle = getHeight() / 2;
  demo->setBounds(kLeft, middle - kBodyHeight / 2, kBodyWidth, kBodyHeight);
  const juce::Rectangle<int> glass(kRight - kGlassWidth, middle - kGlassHeight / 2, kGlassWidth, kGlassHeight);
  display->setBounds(glass);
  deviceText.setBounds(glass.withTrimmedLeft(kGlassMargin).withTrimmedRight(kMarkWidth));
  const int hintX = kLeft + kBodyWidth + kHintGap;
  hint.setBounds(hintX, 0, glass.getX() - hintX, getHeight());
}

}  // namespace tesh::bramel::standalone
