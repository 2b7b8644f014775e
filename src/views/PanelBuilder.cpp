// Creates knobs, faders, buttons and switches with their pictures.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/PanelBuilder.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "widgets/BWImageKnob.h"
#include "widgets/BWImageSlider.h"
#include "widgets/BWStubControl.h"
#include "widgets/BWToggleButton.h"
#include "widgets/BWToggleSwitch.h"

namespace tesh::bramel::plugin::sivray {
namespace {

using panel::ControlKind;

using HeldSet = std::weak_ptr<const std::vector<juce::Image>>;

/// `held` is what the last panel took: its frames serve as long as they are those of the provider.
ImageSet stripNamed(IBramelImageProvider& provider, const std::string& name, HeldSet& held) {
  std::vector<juce::Image> frames{imageNamed(provider, name + "_0")};
  if (ImageSet strip = held.lock(); strip != nullptr && strip->front() == frames.front()) {
    return strip;
  }
  frames.reserve(panel::kStripFrames);
  for (int frame = 1; frame < panel::kStripFrames; ++frame) {
    frames.push_back(imageNamed(provider, name + "_" + std::to_string(frame)));
  }
  ImageSet strip = makeImageSet(std::move(frames));
  held = strip;
  return strip;
}

ImageSet sweepFrames(IBramelImageProvider& provider) {
  static HeldSet held;
  return stripNamed(provider, panel::kSweepStrip, held);
}

ImageSet centredFrames(IBramelImageProvider& provider) {
  static HeldSet held;
  return stripNamed(provider, panel::kCentredStrip, held);
}

BuiltControl makeStub(std::uint64_t stepCount) {
  auto stub = std::make_shared<BWStubSwitch>();
  stub->setStateCount(stepCount);
  return {.control = std::move(stub)};
}

template <typename Widget>
BuiltControl built(std::shared_ptr<Widget> widget) {
  Widget* const itself = widget.get();
  return {.control = std::move(widget), .component = itself, .spoken = itself};
}

}  // namespace

PanelBuilder::PanelBuilder(IBramelImageProvider& provider)
    : images(provider), sweepStrip(sweepFrames(provider)), centredStrip(centredFrames(provider)) {}

BuiltControl PanelBuilder::make(ControlKind kind, std::uint64_t stepCount) const {
  switch (kind) {
    case ControlKind::stub:
      return makeStub(stepCount);
    case ControlKind::sweepKnob:
      return makeKnob(sweepStrip);
    case ControlKind::centredKnob:
      return makeKnob(centredStrip);
    case ControlKind::levelFader:
      return makeFader();
    default:
      break;
  }
  const auto* const row = std::find_if(panel::kStateImages.begin(), panel::kStateImages.end(),
                                       [kind](const panel::StateImages& entry) { return entry.kind == kind; });
  return row->names.back() == nullptr ? makeButton(*row) : makeSwitch(*row);
}

BuiltControl PanelBuilder::makeKnob(const ImageSet& strip) const {
  auto knob = std::make_shared<BWImageKnob>();
  knob->setVertical(true);
  knob->setSensitivity(panel::kKnobSensitivity);
  knob->setFrames(strip);
  return built(std::move(knob));
}

BuiltControl PanelBuilder::makeFader() const {
  auto fader = std::make_shared<BWImageSlider>();
  fader->setVertical(true);
  fader->setSensitivity(panel::kFaderSensitivity);
  fader->setHandle(imageNamed(images, panel::kFaderHandle), panel::kFaderHandleSize.width,
                   panel::kFaderHandleSize.height);
  return built(std::move(fader));
}

BuiltControl PanelBuilder::makeButton(const panel::StateImages& row) const {
  auto button = std::make_shared<BWToggleButton>();
  button->setOffImage(imageNamed(images, row.names[0]));
  button->setOnImage(imageNamed(images, row.names[1]));
  return built(std::move(button));
}

BuiltControl PanelBuilder::makeSwitch(const panel::StateImages& row) const {
  auto control = std::make_shared<BWToggleSwitch>();
  std::vector<juce::Image> states;
  for (const char* const name : row.names) {
    states.push_back(imageNamed(images, name));
  }
  control->setImages(makeImageSet(std::move(states)));
  return built(std::move(control));
}

}  // namespace tesh::bramel::plugin::sivray
