// The panel in a wrapper's window: keyboard focus, scales, and closing one of several.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "client/ClientScene.h"
#include "host/editor/BramelInstrumentEditor.h"
#include "hosting/HostWindow.h"
#include "viewmodels/texts/PanelMacros.h"
#include "views/SivrayEditView.h"

namespace client {
namespace {

using sivray::hosting::HostWindow;
using sivray::hosting::WindowSize;
using tesh::bramel::plugin::sivray::SivrayEditView;

/// An editor inside a wrapper's component, as wrappers show it in the host's window.
struct Wrapper final : juce::Component {
  Wrapper(SivrayProcessor& processor, const HostWindow& window) : shown(processor.createEditorIfNeeded()) {
    addAndMakeVisible(*shown);
    fit();
    setVisible(true);
    addToDesktop(0, window.handle());
  }
  void setScale(float scale) {
    shown->setScaleFactor(scale);
    fit();
  }
  void fit() { setSize(shown->getBoundsInParent().getWidth(), shown->getBoundsInParent().getHeight()); }

  std::unique_ptr<juce::AudioProcessorEditor> shown;
};

/// Returns the panel's view below `component`, or null.
SivrayEditView* viewBelow(juce::Component& component) {
  for (juce::Component* const child : component.getChildren()) {
    auto* const view = dynamic_cast<SivrayEditView*>(child);
    if (SivrayEditView* const found = view != nullptr ? view : viewBelow(*child)) {
      return found;
    }
  }
  return nullptr;
}

template <typename Condition>
bool comesTrue(Condition condition) {
  for (int round = 0; round < 3000 && !condition(); ++round) {
    juce::MessageManager::getInstance()->runDispatchLoopUntil(10);
  }
  return condition();
}

class ClientEditor : public Client {
 protected:
  void SetUp() override {
    if (!HostWindow::findServer()) {
      FAIL() << "no X server, and Xvfb cannot be started: is it installed?";
    }
  }
};

TEST_F(ClientEditor, ShowsThePanelAtTheHostsScaleAndLeavesItTheKeys) {
  SivrayProcessor processor;
  const HostWindow window;
  Wrapper wrapper(processor, window);
  ASSERT_NE(viewBelow(wrapper), nullptr);
  EXPECT_TRUE(comesTrue([&] { return window.childSize() == WindowSize{768, 468} && !window.doesChildTakeKeys(); }));
  wrapper.setScale(1.5F);
  EXPECT_TRUE(comesTrue([&] { return window.childSize() == WindowSize{1152, 702}; }));
  EXPECT_NE(viewBelow(wrapper), nullptr);
  EXPECT_FALSE(window.doesChildTakeKeys());
}

TEST_F(ClientEditor, ClosesWithAMenuOpenAndLeavesTheOtherInstancesPanel) {
  SivrayProcessor first;
  SivrayProcessor second;
  const HostWindow firstWindow;
  const HostWindow secondWindow;
  auto closing = std::make_unique<Wrapper>(first, firstWindow);
  Wrapper staying(second, secondWindow);
  juce::PopupMenu menu;
  menu.addItem(1, "one");
  menu.showMenuAsync(juce::PopupMenu::Options().withTargetComponent(closing->shown.get()));
  EXPECT_EQ(juce::Component::getNumCurrentlyModalComponents(), 1);
  closing.reset();
  EXPECT_TRUE(comesTrue([] { return juce::Component::getNumCurrentlyModalComponents() == 0; }));
  EXPECT_EQ(firstWindow.childSize(), WindowSize{});
  second.instrument()->setProgram(0, 1);
  juce::MessageManager::getInstance()->runDispatchLoopUntil(20);
  EXPECT_NE(viewBelow(staying), nullptr);
  Wrapper again(first, firstWindow);
  EXPECT_TRUE(comesTrue([&] { return firstWindow.childSize() == WindowSize{768, 468}; }));
}

TEST_F(ClientEditor, IgnoresAPenOnAKnobThatTheMouseHoldsButNotOnAnother) {
  using Type = juce::MouseInputSource::InputSourceType;
  using Told = std::vector<std::string>;
  SivrayProcessor processor;
  NotingHost host;
  processor.addListener(&host);
  const HostWindow window;
  Wrapper wrapper(processor, window);
  std::int64_t time = juce::Time::currentTimeMillis();
  const auto point = [&](Type type, std::uint64_t parameter, int pixelsBelow, bool isDown) {
    juce::Component& knob = *viewBelow(wrapper)->getControl(parameter);
    const auto place = wrapper.getLocalPoint(&knob, knob.getLocalBounds().getCentre()).translated(0, pixelsBelow);
    wrapper.getPeer()->handleMouseEvent(type, place.toFloat(), isDown ? juce::ModifierKeys::leftButtonModifier : 0,
                                        juce::MouseInputSource::defaultPressure, 0.0F, time += 20);
  };
  /// Returns the calls to the host since the last call of this, without their values.
  const auto told = [&] {
    Told lines = std::exchange(host.told, {});
    for (std::string& line : lines) {
      line.resize(line.rfind(' '));
    }
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    return lines;
  };
  // The instrument hides each sixth parameter from its host.
  constexpr std::uint64_t kPitch = tesh::bramel::panel::kPitch;
  constexpr std::uint64_t kTime = tesh::bramel::panel::kEnvelopeTime;
  point(Type::mouse, kPitch, 0, false);
  point(Type::mouse, kPitch, 0, true);
  EXPECT_EQ(told(), Told{"begin 4"});
  point(Type::pen, kPitch, 0, true);
  point(Type::pen, kPitch, 40, true);
  point(Type::pen, kPitch, 40, false);
  EXPECT_EQ(told(), Told{}) << "the mouse holds it";
  point(Type::pen, kTime, 0, true);
  point(Type::pen, kTime, 0, false);
  EXPECT_EQ(told(), (Told{"begin 7", "end 7"}));
  point(Type::mouse, kPitch, 40, true);
  point(Type::mouse, kPitch, 40, false);
  EXPECT_EQ(told(), (Told{"set 4", "end 4"}));
  processor.removeListener(&host);
}

}  // namespace
}  // namespace client
