// Lists side by side, in the look of the panel's sample browser.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/standalone/SetupView.h"

#include <algorithm>
#include <string>
#include <utility>

#include "host/standalone/ProgramFonts.h"
#include "views/ActionButton.h"
#include "widgets/PanelColours.h"
#include "widgets/ProvidedResources.h"

namespace tesh::bramel::standalone {
namespace {

constexpr int kHeaderHeight = 40;
constexpr int kLabelHeight = 28;
constexpr int kStateHeight = 28;
constexpr int kInset = 6;
constexpr int kButtonMargin = 8;
constexpr int kOutputWidth = 232;
constexpr int kNumberWidth = 80;
constexpr int kNotesWidth = 150;
constexpr int kTestWidth = 76;

constexpr double kTitleHeight = 16.0;
constexpr double kLabelFontHeight = 15.0;
constexpr double kRowFontHeight = 13.0;
constexpr double kButtonFontHeight = 12.0;

/// Rows with a box before each text, which is filled while the row's device or map is on.
class SwitchRows final : public IBWSimpleListViewRenderer {
 public:
  SwitchRows(const juce::Font& rowFont, std::vector<bool> areOn) : font(rowFont), on(std::move(areOn)) {}

  void paintRow(const juce::String& text, int row, juce::Graphics& graphics, int width, int height,
                bool /*selected*/) const override {
    constexpr float kBox = 12.0F;
    constexpr int kTextLeft = 26;
    if (row > 0) {
      graphics.setColour(juce::Colour(colours::kSeparator));
      graphics.fillRect(0.0F, 0.0F, static_cast<float>(width), 0.5F);
    }
    const auto box =
        juce::Rectangle<float>(kBox, kBox)
            .withCentre({static_cast<float>(kInset) + kBox / 2.0F + 1.0F, static_cast<float>(height) / 2.0F});
    if (static_cast<std::size_t>(row) < on.size() && on[static_cast<std::size_t>(row)]) {
      graphics.setColour(juce::Colour(colours::kCobalt));
      graphics.fillRoundedRectangle(box.reduced(3.0F), 1.0F);
    }
    graphics.setColour(juce::Colour(colours::kActionText));
    graphics.drawRoundedRectangle(box, 3.0F, 1.0F);
    graphics.setFont(font);
    graphics.drawText(text, kTextLeft, 0, width - kTextLeft - kInset, height, juce::Justification::centredLeft);
  }

 private:
  juce::Font font;
  std::vector<bool> on;
};

template <typename Value>
int indexOf(const std::vector<Value>& values, const Value& wanted) {
  const auto found = std::find(values.begin(), values.end(), wanted);
  return found == values.end() ? -1 : static_cast<int>(found - values.begin());
}

}  // namespace

/// A heading and the list below it.
class SetupView::Column : public juce::Component {
 public:
  Column(const char* heading, IBramelFontProvider& fonts, IBWSimpleListViewListener& listener)
      : rowFont(fontNamed(fonts, kListFace, kRowFontHeight)) {
    label.setFont(fontNamed(fonts, kHeadingFace, kLabelFontHeight));
    label.setColour(juce::Colour(colours::kListLabel));
    label.setText(heading);
    list.setListTitle(heading);
    list.setFontProvider(fonts);
    list.setListener(&listener);
    addAndMakeVisible(label);
    addAndMakeVisible(list);
  }

  void show(std::vector<std::string> rows, int selected) {
    list.setItems(std::move(rows));
    list.selectRow(selected);
  }

  void showSwitches(std::vector<std::string> names, std::vector<bool> areOn) {
    list.setRenderer(std::make_shared<SwitchRows>(rowFont, std::move(areOn)));
    list.setItems(std::move(names));
  }

  void resized() override {
    label.setBounds(kInset, 0, getWidth() - kInset, kLabelHeight);
    list.setBounds(getLocalBounds().withTrimmedTop(kLabelHeight));
  }

  BWSimpleListView list;
  BWLabel label;

 private:
  juce::Font rowFont;
};

SetupView::SetupView(SoundDevice& sound, const MidiInputs& midi, const NoteMaps& maps, const Settings& remembered,
                     IBramelFontProvider& fonts, Wishes newWishes)
    : soundDevice(sound),
      midiInputs(midi),
      noteMaps(maps),
      settings(remembered),
      wishes(std::move(newWishes)),
      testButton(makeActionButton("Test tone", fontNamed(fonts, kListFace, kButtonFontHeight), *this)),
      outputs(std::make_unique<Column>("Output", fonts, *this)),
      rates(std::make_unique<Column>("Rate, Hz", fonts, *this)),
      blocks(std::make_unique<Column>("Block", fonts, *this)),
      inputs(std::make_unique<Column>("MIDI inputs", fonts, *this)),
      notes(std::make_unique<Column>("Notes", fonts, *this)),
      choices(std::make_unique<Column>("Samples", fonts, *this)),
      controllers(std::make_unique<Column>("Controllers", fonts, *this)) {
  title.setFont(fontNamed(fonts, kListFace, kTitleHeight));
  title.setColour(juce::Colours::white);
  title.setText("Sound and MIDI");
  state.setFont(fontNamed(fonts, kListFace, kButtonFontHeight));
  state.setColour(juce::Colour(colours::kListLabel));
  for (juce::Component* const part : std::initializer_list<juce::Component*>{
           &header, &title, &state, testButton.get(), outputs.get(), rates.get(), blocks.get(), inputs.get(),
           notes.get(), choices.get(), controllers.get()}) {
    addAndMakeVisible(*part);
  }
  refresh();
}

SetupView::~SetupView() = default;

void SetupView::refresh() {
  devices = soundDevice.available();
  refreshLists();
}

void SetupView::refreshLists() {
  const DeviceChoice current = soundDevice.current();
  std::vector<std::string> names;
  for (const auto& choice : devices) {
    names.push_back((choice.type + ": " + choice.name + (choice.hasOuts ? ", an out for each pad" : "")).toStdString());
  }
  const DeviceChoice named{.type = current.type, .name = current.name, .hasOuts = current.hasOuts};
  outputs->show(std::move(names), indexOf(devices, named));
  std::vector<std::string> rateTexts;
  for (const double rate : soundDevice.rates()) {
    rateTexts.push_back(std::to_string(juce::roundToInt(rate)));
  }
  rates->show(std::move(rateTexts), indexOf(soundDevice.rates(), current.rate));
  std::vector<std::string> blockTexts;
  for (const int block : soundDevice.blocks()) {
    blockTexts.push_back(std::to_string(block));
  }
  blocks->show(std::move(blockTexts), indexOf(soundDevice.blocks(), current.block));
  std::vector<std::string> inputNames;
  std::vector<bool> areOpen;
  for (const auto& device : midiInputs.devices()) {
    const bool isRefused = device.isOn && !device.isOpen;
    inputNames.push_back((device.name + (isRefused ? juce::String(": ") + midiInputs.refusal() : "")).toStdString());
    areOpen.push_back(device.isOpen);
  }
  inputs->showSwitches(std::move(inputNames), std::move(areOpen));
  notes->show(NoteMaps::names(), noteMaps.chosenRow());
  choices->showSwitches({"Sound when chosen"}, {settings.hearsChoices()});
  controllers->show({"Learn"}, -1);
  juce::String text = soundDevice.describe();
  if (soundDevice.isOpen() && soundDevice.problem().isNotEmpty()) {
    text << ".  Not opened: " << soundDevice.problem();
  }
  if (midiInputs.devices().empty()) {
    text << ".  No MIDI input found";
  }
  state.setText(text);
}

void SetupView::listRowSelected(BWSimpleListView& list, int row) {
  if (row < 0 || !wishes.device) {
    return;
  }
  const DeviceChoice current = soundDevice.current();
  DeviceChoice wanted = current;
  const auto index = static_cast<std::size_t>(row);
  if (&list == &outputs->list && index < devices.size()) {
    wanted.type = devices[index].type;
    wanted.name = devices[index].name;
    wanted.hasOuts = devices[index].hasOuts;
  } else if (&list == &rates->list && index < soundDevice.rates().size()) {
    wanted.rate = soundDevice.rates()[index];
  } else if (&list == &blocks->list && index < soundDevice.blocks().size()) {
    wanted.block = soundDevice.blocks()[index];
  } else {
    return;
  }
  if (wanted == current) {  // The marked row was clicked again.
    return;
  }
  if (&list == &outputs->list) {
    wanted = devices[index];  // Rate and block are left to the device.
  }
  wishes.device(wanted);
}

void SetupView::listRowClicked(BWSimpleListView& list, int row, const juce::MouseEvent& /*event*/) {
  const auto& midiDevices = midiInputs.devices();
  const auto index = static_cast<std::size_t>(row);
  if (&list == &inputs->list && row >= 0 && index < midiDevices.size() && wishes.midi) {
    const MidiInputs::Device device = midiDevices[index];
    wishes.midi(device.name, !device.isOn);
  } else if (&list == &notes->list && row >= 0 && wishes.notes) {
    wishes.notes(row);
  } else if (&list == &choices->list && row == 0 && wishes.hearsChoices) {
    wishes.hearsChoices(!settings.hearsChoices());
  } else if (&list == &controllers->list && row == 0 && wishes.controllers) {
    wishes.controllers();
  }
}

void SetupView::controlGestureBegan(IBWControl& /*control*/) {
  if (wishes.testTone) {
    wishes.testTone();
  }
}

void SetupView::resized() {
  auto area = getLocalBounds();
  const auto top = area.removeFromTop(kHeaderHeight);
  header.setBounds(top);
  title.setBounds(top.withTrimmedLeft(2 * kInset));
  testButton->setBounds(top.getRight() - kButtonMargin - kTestWidth, top.getY() + kButtonMargin, kTestWidth,
                        kActionButtonHeight);
  state.setBounds(area.removeFromBottom(kStateHeight).withTrimmedLeft(kInset));
  outputs->setBounds(area.removeFromLeft(kOutputWidth));
  rates->setBounds(area.removeFromLeft(kNumberWidth));
  blocks->setBounds(area.removeFromLeft(kNumberWidth));
  auto right = area.removeFromRight(kNotesWidth);
  const int mapRows = static_cast<int>(NoteMaps::names().size());
  notes->setBounds(right.removeFromTop(kLabelHeight + mapRows * BWSimpleListView::kRowHeight));
  choices->setBounds(right.removeFromTop(kLabelHeight + BWSimpleListView::kRowHeight));
  controllers->setBounds(right);
  inputs->setBounds(area);
}

}  // namespace tesh::bramel::standalone
