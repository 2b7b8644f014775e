// Lays out the guide, the version and the two links.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/BWPluginSettingsView.h"

#include <array>
#include <cstdio>
#include <string>
#include <utility>

#include "SivrayVersion.h"
#include "platform/Files.h"
#include "views/ActionButton.h"
#include "views/JapaneseText.h"
#include "views/PanelRect.h"
#include "views/SettingsCatalogue.h"
#include "views/SettingsCell.h"
#include "widgets/PanelColours.h"
#include "widgets/ProvidedResources.h"

namespace tesh::bramel {
namespace {

constexpr PanelRect kGrid{16, 16, 404, 404};
constexpr PanelRect kCollectionTitle{416, 16, 300, 40};
constexpr PanelRect kVersion{416, 46, 300, 40};
constexpr int kMargin = 16;
constexpr int kTextRight = 720;
constexpr int kButtonsRight = 712;
constexpr int kButtonGap = 8;
constexpr int kButtonHeight = 24;
constexpr int kLinksTop = 364;
constexpr int kCloseTop = 396;
constexpr double kTitleFontHeight = 20.0;
constexpr double kProductFontHeight = 16.0;
constexpr double kBodyFontHeight = 12.0;
constexpr float kQuietAlpha = 0.8F;

/// A label with a wider line spacing, for continuous text.
class Paragraph : public juce::Label {
 public:
  void paint(juce::Graphics& graphics) override {
    constexpr float kExtraSpacing = 2.5F;
    juce::AttributedString text(getText());
    text.setFont(getFont());
    text.setColour(findColour(textColourId));
    text.setJustification(getJustificationType());
    text.setLineSpacing(kExtraSpacing);
    text.draw(graphics, getLocalBounds().toFloat());
  }
};

int gridRight() {
  return kGrid.x + kGrid.width + juce::LookAndFeel::getDefaultLookAndFeel().getDefaultScrollbarWidth();
}

}  // namespace

BWPluginSettingsView::BWPluginSettingsView() : face(japaneseFace("Meiryo")), japanese(face.isNotEmpty()) {}

BWPluginSettingsView::~BWPluginSettingsView() = default;

void BWPluginSettingsView::setSettingsViewModel(std::shared_ptr<IPluginSettingsViewModel> model) {
  settingsViewModel = std::move(model);
  build();
}

void BWPluginSettingsView::setFontProvider(std::shared_ptr<IBramelFontProvider> provider) {
  fontProvider = std::move(provider);
  build();
}

void BWPluginSettingsView::setImageProvider(std::shared_ptr<IBramelImageProvider> provider) {
  imageProvider = std::move(provider);
  build();
}

juce::Font BWPluginSettingsView::bodyFont(double height) const {
  return japanese ? juce::Font(face, static_cast<float>(height), juce::Font::plain)
                  : fontNamed(*fontProvider, "Open Sans Regular", height);
}

std::unique_ptr<juce::Label> BWPluginSettingsView::addLabel(juce::Rectangle<int> bounds, const juce::Font& labelFont,
                                                            juce::Justification justification) {
  auto label = std::make_unique<Paragraph>();
  label->setFont(labelFont);
  label->setJustificationType(justification);
  label->setBorderSize({});
  label->setMinimumHorizontalScale(1.0F);
  label->setColour(juce::Label::textColourId, juce::Colour(colours::kSlate));
  label->setInterceptsMouseClicks(false, false);
  label->setBounds(bounds);
  addAndMakeVisible(*label);
  return label;
}

std::shared_ptr<BWFlatToggleButton> BWPluginSettingsView::addButton(juce::Rectangle<int> bounds, const char* text) {
  auto button = makeActionButton(text, fontNamed(*fontProvider, "Open Sans Regular", kBodyFontHeight), *this);
  button->setOnColours(actionColours(colours::kActionFill, colours::kActionText));
  button->setBounds(bounds);
  addAndMakeVisible(*button);
  return button;
}

void BWPluginSettingsView::build() {
  if (settingsViewModel == nullptr || fontProvider == nullptr || imageProvider == nullptr) {
    return;
  }
  const int left = gridRight() + kMargin;
  const int right = kTextRight - left;
  const int half = (kButtonsRight - left) / 2;
  labels.clear();
  labels.push_back(addLabel(kCollectionTitle, fontNamed(*fontProvider, "Open Sans SemiBold", kTitleFontHeight),
                            juce::Justification::topRight));
  labels.back()->setText("Tesh Bramel 2 Plugins", juce::dontSendNotification);
  labels.push_back(addLabel(kVersion, bodyFont(kBodyFontHeight), juce::Justification::topRight));
  labels.back()->setText("Version " SIVRAY_PANEL_VERSION, juce::dontSendNotification);
  labels.back()->setAlpha(kQuietAlpha);
  titleLabel = addLabel({left, 100, right, 40}, fontNamed(*fontProvider, "Open Sans SemiBold", kProductFontHeight),
                        juce::Justification::topLeft);
  tagLabel = addLabel({left, 120, right, 40}, bodyFont(kBodyFontHeight), juce::Justification::topLeft);
  tagLabel->setAlpha(kQuietAlpha);
  descriptionLabel = addLabel({left, 156, right, 300}, bodyFont(kBodyFontHeight), juce::Justification::topLeft);
  productButton = addButton({left, kLinksTop, half, kButtonHeight}, "Product Page");
  acknowledgementsButton = addButton({left + kButtonGap + half, kLinksTop, half, kButtonHeight}, "Acknowledgements");
  closeButton = addButton({left, kCloseTop, right, kButtonHeight}, "Close");
  collection = std::make_unique<BWCollectionView>();
  collection->setBounds(juce::Rectangle<int>(kGrid).withRight(gridRight()));
  collection->setTitle("Guide");
  addAndMakeVisible(*collection);
  collection->setDataSource(this);
  const auto row = static_cast<int>(catalogueRowOf(settingsViewModel->getInstrumentName()));
  showRow(row);
  collection->scrollToCell(row);
}

void BWPluginSettingsView::showRow(int row) {
  const CatalogueRow& shown = settingsCatalogue()[static_cast<std::size_t>(row)];
  collection->setSelected(row);
  titleLabel->setText(shown.name, juce::dontSendNotification);
  tagLabel->setText(juce::String::fromUTF8(shown.tagLine), juce::dontSendNotification);
  const juce::String description =
      japanese ? inLines(juce::String::fromUTF8(shown.japaneseDescription), descriptionLabel->getFont(),
                         static_cast<float>(descriptionLabel->getWidth())) +
                     "\n"
               : juce::String::fromUTF8(shown.description);
  descriptionLabel->setText(description, juce::dontSendNotification);
}

int BWPluginSettingsView::getCellCount(BWCollectionView& /*view*/) {
  return static_cast<int>(settingsCatalogue().size());
}

juce::Point<int> BWPluginSettingsView::getCellSize(BWCollectionView& /*view*/) { return {101, 101}; }

std::shared_ptr<BWCollectionViewCell> BWPluginSettingsView::makeCell(BWCollectionView& /*view*/) {
  return std::make_shared<BramelCellView>(fontNamed(*fontProvider, "Open Sans SemiBold", kBodyFontHeight));
}

void BWPluginSettingsView::fillCell(BWCollectionView& /*view*/, BWCollectionViewCell& cell, int index) {
  const CatalogueRow& row = settingsCatalogue()[static_cast<std::size_t>(index)];
  std::array<char, 256> name{};
  std::snprintf(name.data(), name.size(), "collection_%s", row.name);
  auto& bramelCell = static_cast<BramelCellView&>(cell);  // All cells come from `makeCell`.
  bramelCell.setPicture(imageNamed(*imageProvider, name.data()));
  bramelCell.setCaption(row.name);
}

void BWPluginSettingsView::cellSelected(BWCollectionView& view) { showRow(view.getSelected()); }

void BWPluginSettingsView::openPage(InstalledPage page) {
  if (!openInstalledPage(page)) {
    const std::string path = platform::NativePath(installedPagePath(page)).shown();
    descriptionLabel->setText("This page cannot be opened:\n" + juce::String::fromUTF8(path.c_str()),
                              juce::dontSendNotification);
  }
}

void BWPluginSettingsView::controlGestureBegan(IBWControl& control) {
  if (&control == productButton.get()) {
    openPage(InstalledPage::manual);
  } else if (&control == acknowledgementsButton.get()) {
    openPage(InstalledPage::acknowledgements);
  } else if (&control == closeButton.get() && listener != nullptr) {
    listener->settingsViewClosed(*this);  // This page may have been deleted.
  }
}

}  // namespace tesh::bramel
