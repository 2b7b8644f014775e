// A simulated mouse: sends mouse events to the component below the pointer, without a screen. Also a listener that
// records the notifications of controls, and a counter of repaints.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "widgets/IBWControl.h"

namespace sivray::test {

/// Coordinates are those of the root. The pressed component gets all events until the release, as with a real mouse; if
/// it is deleted meanwhile, nobody gets them. Example: `Hand(knob).press(10, 40).drag(10, 20).release()`.
class Hand {
 public:
  explicit Hand(juce::Component& rootComponent) : root(&rootComponent) {
    if (rootComponent.getParentComponent() == nullptr) {
      rootComponent.setVisible(true);
    }
  }

  Hand& rightButton() { return button(juce::ModifierKeys::rightButtonModifier); }
  Hand& alt() { return button(juce::ModifierKeys::leftButtonModifier | juce::ModifierKeys::altModifier); }

  /// Moves without a button. The root is called, too, as a component that listens to its children.
  Hand& move(int x, int y) {
    here = down = juce::Point<int>(x, y).toFloat();
    target = root == nullptr ? nullptr : root->getComponentAt(here);
    return send(&juce::Component::mouseMove, toRootToo);
  }
  Hand& leave() { return send(&juce::Component::mouseExit, toRootToo); }

  /// `clicks` is 2 for the second press of a double click.
  Hand& press(int x, int y, int clicks = 1) {
    clickCount = clicks;
    down = here = juce::Point<int>(x, y).toFloat();
    target = root == nullptr ? nullptr : root->getComponentAt(here);
    return send(&juce::Component::mouseDown);
  }
  Hand& drag(int x, int y) {
    here = juce::Point<int>(x, y).toFloat();
    return send(&juce::Component::mouseDrag);
  }
  Hand& release() {
    send(&juce::Component::mouseUp);
    return clickCount == 2 ? send(&juce::Component::mouseDoubleClick) : *this;
  }
  Hand& click(int x, int y) { return press(x, y).release(); }

 private:
  Hand& button(int flags) {
    modifiers = juce::ModifierKeys(flags);
    return *this;
  }

  enum Receivers { toTarget, toRootToo };

  Hand& send(void (juce::Component::*handler)(const juce::MouseEvent&), Receivers receivers = toTarget) {
    if (root == nullptr || target == nullptr) {
      return *this;
    }
    const juce::Time now = juce::Time::getCurrentTime();
    const juce::MouseEvent event(juce::Desktop::getInstance().getMainMouseSource(), target->getLocalPoint(root, here),
                                 modifiers, juce::MouseInputSource::defaultPressure, 0.0F, 0.0F, 0.0F, 0.0F, target,
                                 target, now, target->getLocalPoint(root, down), now, clickCount, here != down);
    (target->*handler)(event);
    if (receivers == toRootToo && root != nullptr) {
      (root->*handler)(event);
    }
    return *this;
  }

  juce::Component::SafePointer<juce::Component> root;
  juce::Component::SafePointer<juce::Component> target;
  juce::Point<float> down;
  juce::Point<float> here;
  juce::ModifierKeys modifiers{juce::ModifierKeys::leftButtonModifier};
  int clickCount = 1;
};

/// Writes a line for each call: "began", "changed", "ended", "double click", with the control's name if it has one.
class ControlLog : public tesh::bramel::IBWControlListener {
 public:
  std::map<const tesh::bramel::IBWControl*, std::string> names;

  /// Returns the lines so far and clears them.
  std::vector<std::string> take() { return std::exchange(lines, {}); }

  void controlValueChanged(tesh::bramel::IBWControl& control) override { write(control, "changed"); }
  void controlGestureBegan(tesh::bramel::IBWControl& control) override { write(control, "began"); }
  void controlGestureEnded(tesh::bramel::IBWControl& control) override { write(control, "ended"); }
  void controlDoubleClicked(tesh::bramel::IBWControl& control) override { write(control, "double click"); }

 private:
  void write(const tesh::bramel::IBWControl& control, const std::string& what) {
    const auto name = names.find(&control);
    lines.push_back(name == names.end() ? what : name->second + " " + what);
  }
  std::vector<std::string> lines;
};

/// Counts the repaints that a component and its children request.
class RepaintCounter {
 public:
  explicit RepaintCounter(juce::Component& component) {
    component.setVisible(true);
    component.setCachedComponentImage(new Sink(component, asked));
    take();
  }

  /// Returns the repaints so far and resets the count.
  int take() { return std::exchange(*asked, {}).count; }
  /// Returns the bounding rectangle of all requested repaints and resets it.
  juce::Rectangle<int> takeArea() { return std::exchange(*asked, {}).area; }

 private:
  struct Asked {
    int count = 0;
    juce::Rectangle<int> area;
  };

  class Sink : public juce::CachedComponentImage {
   public:
    Sink(juce::Component& painted, std::shared_ptr<Asked> noted) : component(painted), asked(std::move(noted)) {}
    void paint(juce::Graphics& /*graphics*/) override {}
    bool invalidateAll() override { return invalidate(component.getLocalBounds()); }
    bool invalidate(const juce::Rectangle<int>& area) override {
      asked->area = asked->area.getUnion(area);
      return ++asked->count > 0;
    }
    void releaseResources() override {}

   private:
    juce::Component& component;
    std::shared_ptr<Asked> asked;
  };

  std::shared_ptr<Asked> asked = std::make_shared<Asked>();
};

}  // namespace sivray::test
