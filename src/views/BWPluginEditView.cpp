// Binds controls to the view model, opens the pop-ups and shows the tooltips.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/BWPluginEditView.h"

#include <algorithm>
#include <utility>

#include "views/BWPluginSettingsView.h"
#include "widgets/PropertyKeys.h"
#include "widgets/ProvidedResources.h"
#include "widgets/Text.h"

namespace tesh::bramel {
namespace {

constexpr int kParameterListWidth = 200;
constexpr int kParameterListHeight = 360;
constexpr int kSettingsWidth = 736;
constexpr int kSettingsHeight = 436;

}  // namespace

BWPluginEditView::BWPluginEditView() {
  setOpaque(true);
  setSize(kWidth, kHeight);
}

BWPluginEditView::~BWPluginEditView() {
  for (const std::uint64_t index : openGestures) {
    // The control was held when the panel closed: nobody else would end the edit.
    viewModel->endParameterGesture(index);
  }
}

void BWPluginEditView::setViewModel(std::shared_ptr<IPluginEditViewModel> model) {
  viewModel = std::move(model);
  panelLook = PanelLook::acquire(*viewModel);
  const auto count = static_cast<std::size_t>(std::max<std::int64_t>(viewModel->getParameterCount(), 0));
  controls.resize(count);
  tooltips.assign(count, nullptr);
  createControls();
  updateAllControls();
}

void BWPluginEditView::registerControl(std::uint64_t index, const std::shared_ptr<IBWControl>& control) {
  if (auto* const continuous = control->asContinuous()) {
    continuous->setMinimum(0.0F);
    continuous->setMaximum(1.0F);
    continuous->setQuantizer(viewModel->getParameterQuantizer());
    continuous->setStepCount(stepCount(index));
  }
  control->setListener(this);
  control->setProperty(keys::kIndex, makeBox(index));
  controls.set(index, control);
}

std::uint64_t BWPluginEditView::stepCount(std::uint64_t index) const {
  return static_cast<std::uint64_t>(std::max<std::int64_t>(viewModel->getParameterStepCount(index), 0));
}

juce::Font BWPluginEditView::font(const char* name, double height) const { return fontNamed(*viewModel, name, height); }

juce::Image BWPluginEditView::image(const std::string& name) const { return imageNamed(*viewModel, name); }

void BWPluginEditView::createBackground(const juce::Image& picture) {
  background = std::make_unique<juce::ImageComponent>();
  background->setImage(picture, juce::RectanglePlacement::stretchToFit);
  background->setInterceptsMouseClicks(false, false);
  background->setOpaque(picture.isValid());
  background->setBounds(getLocalBounds());
  addAndMakeVisible(*background);
}

void BWPluginEditView::createProgramSelector(const ProgramBarLook& look) {
  programSelector = std::make_unique<BWPluginProgramSelectorView>(look);
  programSelector->setBounds(getLocalBounds());
  programSelector->setViewModel(viewModel);
  addAndMakeVisible(*programSelector);
}

void BWPluginEditView::createSettingsZone(juce::Rectangle<int> bounds) {
  auto zone = std::make_unique<BWToggleButton>();
  zone->setMomentary(true);
  zone->setBounds(bounds);
  zone->setTitle("Settings");
  zone->setListener(this);
  addAndMakeVisible(*zone);
  settingsZones.push_back(std::move(zone));
}

void BWPluginEditView::setTooltipColours(juce::Colour fill, juce::Colour outline, juce::Colour text) {
  tooltipFill = fill;
  tooltipOutline = outline;
  tooltipText = text;
}

void BWPluginEditView::paint(juce::Graphics& graphics) { graphics.fillAll(juce::Colours::black); }

// From the user to the model.

void BWPluginEditView::controlValueChanged(IBWControl& control) {
  if (const auto index = parameterOf(control)) {
    takeMove(*index, valueOf(control, *viewModel->getParameterQuantizer()));
  }
}

void BWPluginEditView::takeMove(std::uint64_t index, float value) {
  viewModel->setParameterValue(index, value);
  tellTooltip(index, value);
  onParameterUpdated(index);
  showTooltip(index);
}

void BWPluginEditView::controlGestureBegan(IBWControl& control) {
  if (const auto index = parameterOf(control)) {
    showTooltip(*index);
    openGestures.insert(*index);
    viewModel->beginParameterGesture(*index);
    return;
  }
  const bool isZone = std::any_of(settingsZones.begin(), settingsZones.end(),
                                  [&control](const auto& zone) { return zone.get() == &control; });
  if (isZone) {
    openSettings();
  }
}

void BWPluginEditView::controlGestureEnded(IBWControl& control) {
  if (const auto index = parameterOf(control)) {
    openGestures.erase(*index);
    viewModel->endParameterGesture(*index);
  }
}

// From the model to the controls.

void BWPluginEditView::updateControl(std::uint64_t index) {
  if (index >= controls.size()) {
    return;
  }
  const float value = viewModel->getParameterValue(index);
  if (IBWControl* const control = controls.at(index)) {
    setValueOf(*control, value, *viewModel->getParameterQuantizer(), stepCount(index));
  }
  tellTooltip(index, value);
  onParameterUpdated(index);
}

void BWPluginEditView::updateAllControls() {
  if (programSelector != nullptr) {
    programSelector->updateText();
  }
  for (std::uint64_t index = 0; index < controls.size(); ++index) {
    updateControl(index);
  }
}

void BWPluginEditView::onAllParametersChanged(IPluginEditViewModel& /*model*/) { updateAllControls(); }

void BWPluginEditView::onParameterChanged(IPluginEditViewModel& /*model*/, std::uint64_t index) {
  updateControl(index);
}

// Lists and pages.

void BWPluginEditView::openParameterList(std::uint64_t index, const std::vector<std::string>& names,
                                         juce::Component& anchor, UIPopupDirection direction) {
  IBWControl* const control = controls.at(index);
  if (control == nullptr) {
    return;
  }
  const IParameterQuantizer& quantizer = *viewModel->getParameterQuantizer();
  const auto list = std::make_shared<BWSimpleListView>();
  list->setListener(this);
  list->setFontProvider(*viewModel);
  list->setItems(names);
  list->setTellsMarkedRow(true);
  list->selectRow(static_cast<int>(quantizer.valueToState(valueOf(*control, quantizer), stepCount(index))));
  openList = list;
  openListControl = control;
  auto newPopup = std::make_shared<BWPopupView>();
  newPopup->setAnchor(&anchor);
  newPopup->setDirection(direction);
  newPopup->setContent(list);
  newPopup->setContentSize(kParameterListWidth, kParameterListHeight);
  showPopup(std::move(newPopup));
}

void BWPluginEditView::listRowSelected(BWSimpleListView& list, int row) {
  if (openList.lock().get() != &list || openListControl == nullptr || row < 0) {
    return;
  }
  if (const auto index = parameterOf(*openListControl)) {
    applyState(*index, row);
  } else {
    onListRowChosen(*openListControl, row);
  }
}

void BWPluginEditView::applyState(std::uint64_t index, int state) {
  applyValue(index, viewModel->getParameterQuantizer()->stateToValue(state, stepCount(index)));
}

void BWPluginEditView::applyValue(std::uint64_t index, float value) {
  IBWControl* const control = controls.at(index);
  if (control == nullptr) {
    takeMove(index, value);
    return;
  }
  setValueOf(*control, value, *viewModel->getParameterQuantizer(), stateCountOf(*control));
  control->notifyChanged();
}

void BWPluginEditView::showPopup(std::shared_ptr<BWPopupView> newPopup) {
  popup = std::move(newPopup);
  popup->show();
}

void BWPluginEditView::openSettings() {
  auto page = std::make_shared<BWPluginSettingsView>();
  page->setSettingsViewModel(viewModel->getSettingsViewModel());
  page->setFontProvider(viewModel);
  page->setImageProvider(viewModel);
  page->setListener(this);
  auto newPopup = std::make_shared<BWPopupView>();
  newPopup->setAnchor(this);
  newPopup->setDirection(UIPopupDirection::over);
  newPopup->setContent(std::move(page));
  newPopup->setContentSize(kSettingsWidth, kSettingsHeight);
  showPopup(std::move(newPopup));
}

void BWPluginEditView::settingsViewClosed(BWPluginSettingsView& /*view*/) { popup.reset(); }

// Tooltips.

juce::Component* BWPluginEditView::getControl(std::uint64_t index) {
  return dynamic_cast<juce::Component*>(controls.at(index));
}

std::string BWPluginEditView::getTooltipName(std::uint64_t index) {
  const auto texts = viewModel->getTooltipViewModel();
  const std::string name = texts != nullptr ? texts->getName(index) : std::string();
  return name.empty() ? viewModel->getParameterName(index) : name;
}

std::string BWPluginEditView::getTooltipValue(std::uint64_t index) {
  const auto texts = viewModel->getTooltipViewModel();
  return texts != nullptr ? texts->getText(index) : std::string();
}

std::string BWPluginEditView::shownValue(std::uint64_t index) {
  if (IBWControl* const control = controls.at(index)) {
    tellTooltip(index, valueOf(*control, *viewModel->getParameterQuantizer()));
  }
  return getTooltipValue(index);
}

std::optional<float> BWPluginEditView::valueOfText(std::uint64_t index, const juce::String& text) {
  constexpr std::uint64_t kStatesOfContinuous = 128;
  const std::uint64_t steps = stepCount(index);
  const std::uint64_t states = steps > 1 ? steps : kStatesOfContinuous;
  const juce::String wanted = text.trim();
  const bool isNumber = wanted.isNotEmpty() && wanted.containsOnly("+-0123456789");
  std::optional<float> found;
  for (std::uint64_t state = 0; state < states && !found; ++state) {
    const float value = viewModel->getParameterQuantizer()->stateToValue(static_cast<std::int64_t>(state), states);
    tellTooltip(index, value);  // The texts are computed from the values that the tooltips were told.
    const juce::String shown = textFrom(getTooltipValue(index));
    const bool isSameNumber =
        isNumber && shown.containsAnyOf("0123456789") && shown.getIntValue() == wanted.getIntValue();
    if (shown.equalsIgnoreCase(wanted) || isSameNumber) {
      found = value;
    }
  }
  tellTooltip(index, viewModel->getParameterValue(index));
  return found;
}

void BWPluginEditView::tellTooltip(std::uint64_t index, float value) {
  if (const auto texts = viewModel->getTooltipViewModel()) {
    texts->onValueChanged(index, value);
  }
}

void BWPluginEditView::showTooltip(std::uint64_t index) {
  juce::Component* const control = getControl(index);
  if (control == nullptr) {
    return;
  }
  BWTooltip& tooltip = tooltipOf(index, *control);
  tooltip.setName(textFrom(getTooltipName(index)));
  tooltip.setValue(textFrom(getTooltipValue(index)));
  tooltip.show();
}

BWTooltip& BWPluginEditView::tooltipOf(std::uint64_t index, juce::Component& control) {
  std::shared_ptr<BWTooltip>& tooltip = tooltips[static_cast<std::size_t>(index)];
  if (tooltip == nullptr) {
    tooltip = std::make_shared<BWTooltip>();
    tooltip->setFill(tooltipFill);
    tooltip->setOutline(tooltipOutline);
    tooltip->setTextColour(tooltipText);
  }
  tooltip->setAnchor(&control);
  return *tooltip;
}

}  // namespace tesh::bramel
