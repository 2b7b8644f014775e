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

/// `held` is the set of the previous panel, which is reused if its frames are still the provider's.
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

template <typename Widget>
BuiltControl withImages(const ImageSet& images) {
  auto widget = std::make_shared<Widget>();
  widget->setImages(images);
  return built(std::move(widget));
}

}  // namespace

PanelBuilder::PanelBuilder(IBramelImageProvider& provider)
    : sweepStrip(sweepFrames(provider)),
      centredStrip(centredFrames(provider)),
      faderHandle(imageNamed(provider, panel::kFaderHandle)) {
  for (std::size_t row = 0; row < stateImages.size(); ++row) {
    std::vector<juce::Image> states;
    for (const char* const name : panel::kStateImages[row].names) {
      if (name != nullptr) {
        states.push_back(imageNamed(provider, name));
      }
    }
    stateImages[row] = makeImageSet(std::move(states));
  }
}

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
  const ImageSet& states = stateImages[static_cast<std::size_t>(row - panel::kStateImages.begin())];
  return states->size() == 2 ? withImages<BWToggleButton>(states) : withImages<BWToggleSwitch>(states);
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
  fader->setHandle(faderHandle, panel::kFaderHandleSize.width, panel::kFaderHandleSize.height);
  return built(std::move(fader));
}

}  // namespace tesh::bramel::plugin::sivray
