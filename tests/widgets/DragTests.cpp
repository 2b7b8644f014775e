// The formulas of dragging, and the tracking views and knobs that use them.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

#include "support/Hand.h"
#include "widgets/BWImageKnob.h"
#include "widgets/BWImageSlider.h"
#include "widgets/BWTracking2DView.h"
#include "widgets/BWTrackingView.h"
#include "widgets/DragLaw.h"

namespace tesh::bramel {
namespace {

using sivray::test::ControlLog;
using sivray::test::Hand;
using sivray::test::RepaintCounter;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

std::uint32_t testTime = 0;
std::uint32_t readTestTime() { return testTime; }

TEST(DragLaw, StepsGrowWithSpeedByTheirPower) {
  const drag::Settings plain;
  // 100 pixels per second: (100 * 0.00013) ^ 1.1. The shortest time is a millisecond: (1000 * 0.00013) ^ 1.1.
  EXPECT_NEAR(drag::step(1, 0.01, plain, false), 0.0084205F, 1e-6F);
  EXPECT_NEAR(drag::step(-1, 0.01, plain, false), -0.0084205F, 1e-6F);
  EXPECT_NEAR(drag::step(1, 0.0, plain, false), 0.1060103F, 1e-5F);
  EXPECT_EQ(drag::step(1, -5.0, plain, false), drag::step(1, 0.001, plain, false));
  EXPECT_EQ(drag::step(0, 0.01, plain, false), 0.0F);
  EXPECT_NEAR(drag::step(1, 0.01, plain, true) / drag::step(1, 0.01, plain, false), std::pow(0.1F, 1.1F), 1e-5F);
  EXPECT_NEAR(drag::step(1, 0.01, {true, 0.6F}, false), 0.0084205F * std::pow(0.6F, 1.1F), 1e-6F);
}

TEST(DragLaw, TheRawValueIsHeldAtItsEndsAndTurnsAtOnce) {
  drag::State state{{0, 0}, 0.0, 0.99F};
  const drag::Settings vertical{true};
  drag::advance(state, vertical, {500, -300}, 0.01, false);
  EXPECT_EQ(state.rawValue, 1.0F);
  EXPECT_EQ(state.last.y, -300);
  drag::advance(state, vertical, {900, -299}, 0.02, false);
  EXPECT_NEAR(state.rawValue, 1.0F - 0.0084205F, 1e-5F);
}

TEST(DragLaw, ValuesTakeTheStatesOfTheirQuantizer) {
  const CParameterQuantizer nearest;
  const NormalParameterQuantizer normal;
  EXPECT_EQ(drag::quantize(0.1F, 4, nearest), 0.0F);
  EXPECT_EQ(drag::quantize(0.1F, 4, normal), 1.0F / 3.0F);
  EXPECT_EQ(drag::quantize(0.5F, 128, nearest), 64.0F / 127.0F);
  EXPECT_EQ(drag::quantize(0.7F, 1, nearest), 0.0F);
  for (const std::uint64_t steps : {0U, 2U, 128U}) {
    EXPECT_EQ(drag::quantize(1.5F, steps, normal), 1.0F);
    EXPECT_EQ(drag::quantize(-0.5F, steps, normal), 0.0F);
    EXPECT_EQ(drag::quantize(kNan, steps, nearest), 0.0F);
  }
  EXPECT_EQ(drag::positionOf({30, 20}, 120, 80, false), 0.25F);
  EXPECT_EQ(drag::positionOf({30, 20}, 120, 80, true), 0.75F);
  EXPECT_EQ(drag::positionOf({30, 20}, 0, 0, true), 0.0F);
}

class Tracking : public testing::Test {
 protected:
  Tracking() {
    testTime = 1000;
    view.setSize(50, 100);
    view.setVertical(true);
    view.setClock(&readTestTime);
    view.setListener(&log);
    view.setQuantizer(std::make_shared<CParameterQuantizer>());
  }
  void drag(Hand& hand, int y) {
    testTime += 10;
    hand.drag(10, y);
  }

  ControlLog log;
  BWTrackingView view;
};

TEST_F(Tracking, ADragTellsItsBeginChangesAndEnd) {
  view.setValueQuietly(0.5F);
  Hand hand(view);
  hand.press(10, 50);
  drag(hand, 49);
  EXPECT_NEAR(view.getValue(), 0.5F + 0.0084205F, 1e-5F);
  drag(hand, 49);
  hand.release();
  EXPECT_THAT(log.take(), ElementsAre("began", "changed", "ended"));
  const float before = view.getValue();
  Hand fine(view);
  fine.alt().press(10, 50);
  drag(fine, 49);
  EXPECT_NEAR(view.getValue() - before, 0.0084205F * 0.0794328F, 1e-6F);
}

TEST_F(Tracking, SlowDragsAddUpToTheNextState) {
  view.setStepCount(11);
  view.setValueQuietly(0.5F);
  Hand hand(view);
  hand.press(10, 50);
  for (int i = 1; i <= 5; ++i) {
    drag(hand, 50 - i);
  }
  EXPECT_EQ(view.getValue(), 0.5F);
  drag(hand, 44);
  EXPECT_EQ(view.getValue(), 0.6F);
  EXPECT_THAT(log.take(), ElementsAre("began", "changed"));
}

TEST_F(Tracking, ASetterIsSilentAndLeavesADragWhereTheHandIs) {
  view.setValueQuietly(0.5F);
  Hand hand(view);
  hand.press(10, 50);
  view.setValueQuietly(0.0F);
  EXPECT_EQ(view.getValue(), 0.0F);
  drag(hand, 49);
  EXPECT_NEAR(view.getValue(), 0.5F + 0.0084205F, 1e-5F);
  EXPECT_THAT(log.take(), ElementsAre("began", "changed"));
}

TEST_F(Tracking, OtherButtonsAndDisabledViewsDoNothing) {
  Hand(view).rightButton().press(10, 50).drag(10, 0).release();
  Hand(view).drag(10, -1000).release();
  view.setEnabled(false);
  Hand(view).press(10, 50).drag(10, 0).release();
  EXPECT_THAT(log.take(), IsEmpty());
  EXPECT_EQ(view.getValue(), 0.0F);
}

TEST_F(Tracking, AGestureEndsThoughAnotherButtonTookOver) {
  Hand hand(view);
  hand.press(10, 50).rightButton().drag(10, 0).release();
  EXPECT_THAT(log.take(), ElementsAre("began", "ended"));
}

TEST_F(Tracking, OneHandAtATimeHoldsIt) {
  Hand first(view);
  first.press(10, 50);
  Hand second(view);
  second.press(10, 90);
  EXPECT_THAT(log.take(), ElementsAre("began"));
  view.moveTo(0.25F);
  EXPECT_THAT(log.take(), ElementsAre("changed")) << "within the hand's gesture";
  first.release();
  second.release();
  EXPECT_THAT(log.take(), ElementsAre("ended"));
}

TEST_F(Tracking, AbsoluteModeFollowsThePointer) {
  view.setMode(BWTrackingView::Mode::absolute);
  Hand(view).press(10, 25).drag(10, 25).drag(10, 60).release();
  EXPECT_THAT(log.take(), ElementsAre("changed", "began", "changed", "ended"));
  EXPECT_NEAR(view.getValue(), 0.4F, 1e-6F);
}

TEST_F(Tracking, ADoubleClickIsAlsoAGesture) {
  Hand(view).press(10, 50, 2).release();
  EXPECT_THAT(log.take(), ElementsAre("began", "double click", "ended"));
}

TEST(Tracking2D, GivesBothAxesInsideItsBorder) {
  ControlLog log;
  BWTracking2DView view;
  view.setSize(120, 60);
  view.setBorder({10, 20, 10, 20});  // Top, left, bottom, right.
  view.setListener(&log);
  Hand(view).press(40, 20).drag(0, 100).release();
  EXPECT_THAT(log.take(), ElementsAre("changed", "began", "changed", "ended"));
  EXPECT_EQ(view.getValueX(), 0.0F);
  EXPECT_EQ(view.getValueY(), 0.0F);
  view.setSteps(3, 0);
  Hand(view).press(60, 20, 2).release();
  EXPECT_EQ(view.getValueX(), 0.5F);
  EXPECT_EQ(view.getValueY(), 0.75F);
  EXPECT_THAT(log.take(), ElementsAre("changed", "began", "ended", "double click"));
}

ImageSet strip(int count) {
  std::vector<juce::Image> images;
  for (int i = 0; i < count; ++i) {
    images.emplace_back(juce::Image::ARGB, 4, 4, true);
  }
  return makeImageSet(std::move(images));
}

TEST(ImageKnob, ShowsTheFrameOfItsValueAndRepaintsForThatAlone) {
  BWImageKnob knob;
  knob.setSize(55, 55);
  knob.setFrames(strip(128));
  RepaintCounter repaints(knob);
  knob.setValue(0.5F);
  EXPECT_EQ(knob.getFrame(), 64U);
  EXPECT_EQ(repaints.take(), 1);
  knob.setValue(0.501F);
  EXPECT_EQ(repaints.take(), 0);
  knob.setValue(1.0F);
  EXPECT_EQ(knob.getFrame(), 127U);
  knob.setMinimumFrame(10.0F);
  knob.setMaximumFrame(20.0F);
  knob.setValue(0.25F);
  EXPECT_EQ(knob.getFrame(), 13U);  // 12.5 is rounded up.
}

TEST(ImageKnob, HasARangeAndSpeaksUnderItsOwnName) {
  ControlLog log;
  BWImageKnob knob;
  log.names[&knob] = "knob";
  knob.setSize(55, 55);
  knob.setListener(&log);
  knob.setMinimum(10.0F);
  knob.setMaximum(20.0F);
  knob.setValue(12.5F);
  EXPECT_EQ(knob.getValue(), 12.5F);
  knob.setInverted(true);
  EXPECT_EQ(knob.getValue(), 17.5F);
  knob.setStepCount(11);
  knob.setValue(13.0F);
  EXPECT_NEAR(knob.getValue(), 13.0F, 1e-5F);
  EXPECT_THAT(log.take(), IsEmpty());
  knob.setVertical(true);
  Hand(knob).press(10, 10).drag(10, -1000000).release();
  EXPECT_EQ(knob.getValue(), 10.0F);
  EXPECT_THAT(log.take(), ElementsAre("knob began", "knob changed", "knob ended"));
  EXPECT_EQ(knob.getProperty("index"), nullptr);
}

TEST(ImageSlider, PlacesItsHandleInPanelPixelsWhateverTheImage) {
  BWImageSlider slider;
  slider.setVertical(true);
  slider.setSize(34, 163);
  slider.setHandle(juce::Image(juce::Image::ARGB, 100, 86, true), 50, 43);
  EXPECT_EQ(slider.getHandleBounds(), juce::Rectangle<int>(-8, 120, 50, 43));
  slider.setValue(0.3F);
  EXPECT_EQ(slider.getHandleBounds().getY(), 84);
  slider.setVertical(false);
  EXPECT_EQ(slider.getHandleBounds().getPosition(), juce::Point<int>(-4, 60));  // -4.8 is rounded towards 0.
}

/// Deletes a control during one of its calls.
class Deleter : public IBWControlListener {
 public:
  std::unique_ptr<BWImageKnob> knob = std::make_unique<BWImageKnob>();
  void controlGestureBegan(IBWControl& /*control*/) override { knob.reset(); }
};

TEST(ImageKnob, MayBeDeletedByItsListener) {
  Deleter deleter;
  deleter.knob->setSize(55, 55);
  deleter.knob->setListener(&deleter);
  deleter.knob->setTrackingMode(BWTrackingView::Mode::absolute);
  Hand(*deleter.knob).press(10, 10, 2).drag(10, 0).release();
  EXPECT_EQ(deleter.knob, nullptr);
}

}  // namespace
}  // namespace tesh::bramel
