// The real panel on a whole instrument with a small library, a host that records its calls, and a simulated mouse.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "shell/ShellScene.h"
#include "support/DrumModule.h"
#include "support/Hand.h"
#include "viewmodels/IPluginEditViewModelOwner.h"
#include "viewmodels/texts/PanelMacros.h"
#include "views/BWPopupSlotView.h"
#include "views/SivrayEditView.h"
#include "views/SivrayEditorProvider.h"
#include "widgets/PanelText.h"

namespace views {

using namespace tesh::bramel;
using namespace tesh::bramel::panel;
using plugin::sivray::SivrayEditView;
using shell::Log;
using sivray::test::Hand;
using tesh::cofu::core::boxed::valueIn;

class Panel : public testing::Test {
 protected:
  explicit Panel(const std::vector<support::Wave>& waves = support::categorisedWaves()) : folder(waves) {
    ::setenv("BRAMEL_DOCUMENTS", folder.pathOf("documents").c_str(), 1);
    instrument = support::makeInstrument(folder);
    host = std::make_shared<shell::NotingHost>(*instrument);
    instrument->setHostCallback(host);
    plugin::sivray::SivrayEditorProvider provider;
    const auto parts = provider.createEditor(instrument, 1);
    owner = *valueIn<std::shared_ptr<IPluginEditViewModelOwner>>(parts.viewModel);
    component = *valueIn<std::shared_ptr<juce::Component>>(parts.view);
    slot.setBounds(component->getLocalBounds());
    slot.addAndMakeVisible(*component);
    host->log.clear();
  }

  /// Replaces the panel by a new one with the larger pictures, as a change of scale does.
  void remake() {
    const Continuation asBefore = continuationOf(component.get());
    slot.removeChildComponent(component.get());
    component.reset();
    const auto parts = plugin::sivray::SivrayEditorProvider().createEditor(instrument, 2);
    owner = *valueIn<std::shared_ptr<IPluginEditViewModelOwner>>(parts.viewModel);
    component = *valueIn<std::shared_ptr<juce::Component>>(parts.view);
    slot.addAndMakeVisible(*component);
    asBefore(*component);
  }

  SivrayEditView& view() { return dynamic_cast<SivrayEditView&>(*component); }
  Hand hand() { return Hand(slot); }

  juce::Point<int> middleOf(std::uint64_t parameter) {
    juce::Component& control = *view().getControl(parameter);
    return slot.getLocalPoint(&control, control.getLocalBounds().getCentre());
  }
  void click(std::uint64_t parameter) { hand().click(middleOf(parameter).x, middleOf(parameter).y); }

  /// Renders a block, in which the engine applies pending changes.
  void run() {
    std::array<float, 64> samples{};
    std::array<float*, 2> outputs{samples.data(), samples.data()};
    instrument->process(nullptr, outputs.data(), static_cast<std::int32_t>(samples.size()));
  }

  /// Returns the calls to the host since the last call of this, without key lights.
  Log takeHostLog() {
    Log log = std::exchange(host->log, {});
    std::erase_if(log, [](const std::string& line) { return line.starts_with("key "); });
    return log;
  }

  template <typename Kind>
  Kind* topPopup() {
    auto* const popup = dynamic_cast<BWPopupView*>(slot.getChildComponent(slot.getNumChildComponents() - 1));
    return popup == nullptr ? nullptr : findIn<Kind>(*popup);
  }

  template <typename Kind>
  static Kind* findIn(juce::Component& parent) {
    for (juce::Component* const child : parent.getChildren()) {
      if (auto* const found = dynamic_cast<Kind*>(child)) {
        return found;
      }
      if (auto* const below = findIn<Kind>(*child)) {
        return below;
      }
    }
    return nullptr;
  }

  /// Returns the newest visible tooltip, as "name: value"; empty if there is none.
  juce::String tooltip() {
    juce::String texts;
    for (juce::Component* const child : slot.getChildren()) {
      bool takesClicks = true;
      bool childrenDo = true;
      child->getInterceptsMouseClicks(takesClicks, childrenDo);
      if (child->isVisible() && !takesClicks) {
        texts.clear();
        addTexts(*child, texts);
      }
    }
    return texts;
  }
  static void addTexts(juce::Component& parent, juce::String& texts) {
    for (juce::Component* const child : parent.getChildren()) {
      if (const auto* const text = dynamic_cast<PanelText*>(child)) {
        texts << (texts.isEmpty() ? "" : ": ") << text->getText();
      }
      addTexts(*child, texts);
    }
  }

  /// Moves a parameter as the host does.
  void automate(std::uint64_t parameter, float value) {
    instrument->setParameter(parameter, value);
    owner->notifyParameterChanged(parameter);
  }

  /// Returns a descendant of `parent` whose text or title is `name`.
  static juce::Component* named(juce::Component& parent, const juce::String& name) {
    for (juce::Component* const child : parent.getChildren()) {
      if (child->isVisible() && child->getTitle() == name) {
        return child;
      }
      if (auto* const below = named(*child, name)) {
        return below;
      }
    }
    return nullptr;
  }

  void clickOn(juce::Component& target) {
    const juce::Point<int> middle = slot.getLocalPoint(&target, target.getLocalBounds().getCentre());
    hand().click(middle.x, middle.y);
  }

  const support::SampleFolder folder;
  std::shared_ptr<vst::BramelInstrument> instrument;
  std::shared_ptr<shell::NotingHost> host;
  std::shared_ptr<IPluginEditViewModelOwner> owner;
  std::shared_ptr<juce::Component> component;
  BWPopupSlotView slot;
};

}  // namespace views
