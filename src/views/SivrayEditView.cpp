// Builds the drum module's panel from the panel's tables.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/SivrayEditView.h"

#include <string>
#include <utility>

#include "viewmodels/texts/EditScreenEffects.h"
#include "views/BWSampleSelectorView.h"
#include "views/FinderMenus.h"
#include "views/MenuPlace.h"
#include "widgets/PropertyKeys.h"
#include "widgets/Text.h"

namespace tesh::bramel::plugin::sivray {

using namespace panel;

namespace {

juce::String twoDigits(std::size_t number) { return juce::String(number).paddedLeft('0', 2); }

juce::Rectangle<int> inColumn(juce::Rectangle<int> bounds, std::size_t pad) {
  return bounds.translated(static_cast<int>(pad) * kColumnWidth, 0);
}

}  // namespace

SivrayEditView::SivrayEditView() = default;

SivrayEditView::~SivrayEditView() = default;

void SivrayEditView::setViewModel(std::shared_ptr<IPluginEditViewModel> newModel) {
  editViewModel = std::dynamic_pointer_cast<ISivrayEditViewModel>(newModel);
  BWPluginEditView::setViewModel(std::move(newModel));
}

void SivrayEditView::createControls() {
  setTooltipColours(juce::Colour(kTooltipFill), juce::Colour(kTooltipOutline), juce::Colour(kTooltipText));
  builder = std::make_unique<PanelBuilder>(model());
  createBackground(image(kBackgroundImage));
  createPages();
  createPageButtons();
  createPads();
  createProgramBar();
  createDisplays();
  createPadControls();
  createMasterSection();
  createSettingsZone(kSettingsZone1);
  createSettingsZone(kSettingsZone2);
  updatePageVisibility();
}

void SivrayEditView::createPages() {
  for (std::size_t number = 0; number < kPageCount; ++number) {
    auto page = std::make_unique<juce::ImageComponent>();
    page->setImagePlacement(juce::RectanglePlacement::stretchToFit);
    page->setBounds(kPageBounds);
    addChildComponent(*page);
    pages.push_back(std::move(page));
  }
}

void SivrayEditView::createPageButtons() {
  static constexpr std::array<const char*, kPageCount> kTitles{"Sound page", "Character page", "Mix page"};
  pageSelector = std::make_shared<BWVirtualToggleGroup>();
  pageSelector->setListener(this);
  for (std::size_t page = 0; page < kPageCount; ++page) {
    const ButtonRow& row = kPageButtons[page];
    pageButtons.push_back(addButton(*this, row.bounds, imagesOf(row.off, row.on)));
    pageButtons.back()->setTitle(kTitles[page]);
  }
  pageSelector->setButtons({pageButtons.begin(), pageButtons.end()});
}

void SivrayEditView::createPads() {
  padContainer = std::make_unique<juce::Component>();
  padContainer->setInterceptsMouseClicks(false, true);
  padContainer->setBounds(kPadContainer);
  addAndMakeVisible(*padContainer);
  const ImageSet padImages = imagesOf(kPadOff, kPadOn);
  BWVirtualDrumPadGroup::Pads pads;
  for (std::size_t pad = 0; pad < kPads; ++pad) {
    const auto button = addButton(*padContainer, {kPadX[pad], 0, kPadSize, kPadSize}, padImages);
    button->setMomentary(true);
    button->setTitle("Pad " + juce::String(pad + 1));
    if (model().getEditorKind() == 1) {
      const auto& border = kPadCaptionBorder;
      button->setTextBorder({border[0], border[1], border[2], border[3]});
      button->getText().setFont(font(kCaptionFace, kCaptionHeight));
      button->getText().setColour(juce::Colour(kPadCaptionColour));
      button->getText().setText(kPadCaptions[pad]);
    }
    pads.emplace(static_cast<std::uint8_t>(padNote(pad)), button);
  }
  padGroup.setKeyboardViewModel(model().getKeyboardViewModel());
  padGroup.setPads(std::move(pads));
}

void SivrayEditView::createProgramBar() {
  createProgramSelector({.label = kProgramLabel,
                         .nameButton = kProgramButton,
                         .previous = kPreviousProgram,
                         .next = kNextProgram,
                         .previousImage = image(kPreviousImage),
                         .nextImage = image(kNextImage),
                         .font = font(kDisplayFace, kDisplayHeight),
                         .colour = juce::Colour(kDisplayColour)});
  programBar().setMenu([this] { return varyMenu(editViewModel->getSampleFinder()); });
}

void SivrayEditView::createDisplays() {
  const juce::Font face = font(kDisplayFace, kPadDisplayHeight);
  const ImageSet displayImages = imagesOf(kDisplayImage, kDisplayImage);
  for (std::size_t pad = 0; pad < kPads; ++pad) {
    const auto display = addButton(*this, inColumn(kDisplay, pad), displayImages);
    display->setMomentary(true);
    display->setTitle("Sample of pad " + juce::String(pad + 1));
    display->setProperty(keys::kSample, makeBox<std::uint64_t>(pad));
    display->setListener(this);
    sampleDisplays.push_back(display);
    rightClicks.push_back(std::make_unique<RightClick>(*display, [this, pad] { openSimilar(pad); }));
    padNumbers.push_back(addText(inColumn(kPadNumber, pad), kDisplayColour));
    padNumbers.back()->setDisplayFont(face);
    padNumbers.back()->setText(twoDigits(pad + 1));
    sampleNames.push_back(addText(inColumn(kSampleName, pad), kDisplayColour));
    sampleNames.back()->setDisplayFont(face);
  }
}

void SivrayEditView::createPadControls() {
  for (std::size_t pad = 0; pad < kPads; ++pad) {
    for (const PadControl& row : kPadControls) {
      juce::Component& page = *pages[static_cast<std::size_t>(row.page)];
      addControl(page, padMacro(pad, row.macro), row.kind, inColumn(row.bounds, pad) - page.getPosition());
    }
  }
}

void SivrayEditView::createMasterSection() {
  for (const MasterControl& row : kMasterControls) {
    addControl(*this, row.macro, row.kind, row.bounds);
  }
  effectButton = std::make_shared<BWToggleButton>();
  effectButton->setMomentary(true);
  effectButton->setTitle("Effect");
  effectButton->setBounds(kEffectButton);
  effectButton->setListener(this);
  effectButton->getText().setDisplayFont(font(kDisplayFace, kDisplayHeight));
  effectButton->getText().setColour(juce::Colour(kDisplayColour));
  addAndMakeVisible(*effectButton);
  const juce::Font captions = font(kCaptionFace, kCaptionHeight);
  firstEditLabel = addText(kFirstEditLabel, kEditLabelColour);
  firstEditLabel->setFont(captions);
  secondEditLabel = addText(kSecondEditLabel, kEditLabelColour);
  secondEditLabel->setFont(captions);
}

ImageSet SivrayEditView::imagesOf(const char* off, const char* on) const {
  return makeImageSet({image(off), image(on)});
}

std::shared_ptr<BWToggleButton> SivrayEditView::addButton(juce::Component& parent, juce::Rectangle<int> bounds,
                                                          ImageSet images) {
  auto button = std::make_shared<BWToggleButton>();
  button->setImages(std::move(images));
  button->setBounds(bounds);
  parent.addAndMakeVisible(*button);
  return button;
}

std::unique_ptr<PanelText> SivrayEditView::addText(juce::Rectangle<int> bounds, std::uint32_t colour) {
  auto text = std::make_unique<PanelText>();
  text->setColour(juce::Colour(colour));
  text->setBounds(bounds);
  addAndMakeVisible(*text);
  return text;
}

void SivrayEditView::addControl(juce::Component& parent, std::size_t macro, ControlKind kind,
                                juce::Rectangle<int> bounds) {
  const auto [control, component, spoken] = builder->make(kind, stepCount(macro));
  if (component != nullptr) {
    component->setTitle(textFrom(model().getParameterName(macro)));
    component->setBounds(bounds);
    parent.addAndMakeVisible(*component);
  }
  if (spoken != nullptr) {
    spoken->setValueText([this, macro] { return textFrom(shownValue(macro)); });
    spoken->setValueOfText([this, macro](const juce::String& text) { return valueOfText(macro, text); });
  }
  registerControl(macro, control);
}

// From the user.

void SivrayEditView::controlValueChanged(IBWControl& control) {
  if (&control == pageSelector.get()) {
    selectedPage = pageSelector->getState();
    updatePageVisibility();
  } else if (&control == effectButton.get()) {
    if (effectButton->getState()) {
      openEffectList();
    }
  } else {
    BWPluginEditView::controlValueChanged(control);
  }
}

void SivrayEditView::controlGestureBegan(IBWControl& control) {
  if (const auto part = property<std::uint64_t>(control, keys::kSample)) {
    openSampleSelector(*part);
  } else {
    BWPluginEditView::controlGestureBegan(control);
  }
}

void SivrayEditView::selectPage(std::uint64_t page) {
  if (page < kPageCount) {
    pageSelector->setState(page);
    selectedPage = page;
    updatePageVisibility();
  }
}

// Decoding a page's picture takes a tenth of the first opening, so it is done when the page is first shown.
void SivrayEditView::updatePageVisibility() {
  juce::ImageComponent& shown = *pages[selectedPage];
  if (shown.getImage().isNull()) {
    shown.setImage(image(kPageImages[selectedPage]));
    shown.setOpaque(shown.getImage().isValid());
  }
  for (std::size_t page = 0; page < pages.size(); ++page) {
    pages[page]->setVisible(page == selectedPage);
  }
  padContainer->setVisible(selectedPage != mixPage);
}

void SivrayEditView::openEffectList() {
  std::vector<std::string> names;
  names.reserve(kEditScreenEffects.size());
  for (const EditScreenEffect& row : kEditScreenEffects) {
    names.emplace_back(row.name);
  }
  openParameterList(kEffectTypeMacro, names, *effectButton, UIPopupDirection::rightCentre);
}

void SivrayEditView::openSampleSelector(std::uint64_t part) {
  auto selector = std::make_shared<BWSampleSelectorView>();
  selector->setSelector(editViewModel->getSampleSelectorViewModel());
  selector->setFontProvider(editViewModel);
  selector->setFinder(editViewModel->getSampleFinder());
  selector->setPart(part);
  auto newPopup = std::make_shared<BWPopupView>();
  newPopup->setAnchor(this);
  newPopup->setDirection(UIPopupDirection::over);
  newPopup->setContent(std::move(selector));
  newPopup->setContentSize(kSampleSelectorSize.width, kSampleSelectorSize.height);
  showPopup(std::move(newPopup));
}

void SivrayEditView::openSimilar(std::uint64_t part) {
  const auto selector = editViewModel->getSampleSelectorViewModel();
  similarMenu({selector, editViewModel->getSampleFinder()}, part, selector->getCategoryIndex(part),
              selector->getSampleIndex(part), {})
      .showMenuAsync(menuPlaceIn(*sampleDisplays[static_cast<std::size_t>(part)]).withMousePosition());
}

Continuation SivrayEditView::continuation() const {
  return [page = selectedPage, reopen = popupContinuation()](juce::Component& newView) {
    auto& view = dynamic_cast<SivrayEditView&>(newView);
    view.selectPage(page);
    if (reopen) {
      reopen(view);
    }
  };
}

std::function<void(SivrayEditView&)> SivrayEditView::popupContinuation() const {
  if (const auto reopenList = programBar().listContinuation()) {
    return [reopenList](SivrayEditView& view) { reopenList(view.programBar()); };
  }
  juce::Component* const content = lastPopup() == nullptr ? nullptr : lastPopup()->getContent();
  if (const auto* const browser = dynamic_cast<BWSampleSelectorView*>(content)) {
    return [part = browser->shownPart(), category = browser->shownCategory()](SivrayEditView& view) {
      view.openSampleSelector(part);
      dynamic_cast<BWSampleSelectorView&>(*view.lastPopup()->getContent()).showCategory(category);
    };
  }
  if (dynamic_cast<BWSimpleListView*>(content) != nullptr) {
    return &SivrayEditView::openEffectList;
  }
  if (content == nullptr) {
    return {};
  }
  return &SivrayEditView::openSettings;
}

// From the model.

void SivrayEditView::onParameterUpdated(std::uint64_t index) {
  if (index == kEffectTypeMacro) {
    updateEffect();
  } else if (choosesSound(index)) {
    const std::uint64_t part = index / kMacrosPerPad;
    sampleNames[static_cast<std::size_t>(part)]->setText(textFrom(editViewModel->getSampleName(part)));
  }
}

void SivrayEditView::updateEffect() {
  const float value = model().getParameterValue(kEffectTypeMacro);
  const auto state = model().getParameterQuantizer()->valueToState(value, stepCount(kEffectTypeMacro));
  const auto step = static_cast<std::size_t>(state);
  effectButton->getText().setText(editScreenName(step));
  firstEditLabel->setText(editScreenLabel(step, 0));
  secondEditLabel->setText(editScreenLabel(step, 1));
}

}  // namespace tesh::bramel::plugin::sivray
