// Lays out the tooltip, and shows and hides it by a timed task.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/BWTooltip.h"

#include <array>

#include "platform/Clock.h"
#include "views/TooltipLayout.h"

namespace tesh::bramel {
namespace {

constexpr float kNameHeight = 13.0F;
constexpr float kValueHeight = 19.0F;
constexpr float kOutlineThickness = 2.0F;
constexpr std::int64_t kOneSecond = 10'000'000;  ///< In ticks of 100 nanoseconds.

}  // namespace

BWTooltip::BWTooltip() : scheduler(cofu::core::impl::TaskLoop::acquire()) {}

BWTooltip::~BWTooltip() = default;

void BWTooltip::setAnchor(juce::Component* newAnchor) {
  anchor = newAnchor;
  if (popup != nullptr) {
    popup->setAnchor(newAnchor);
  }
}

void BWTooltip::setName(const juce::String& newName) {
  name = newName;
  layOut();
}

void BWTooltip::setValue(const juce::String& newValue) {
  value = newValue;
  layOut();
}

std::unique_ptr<PanelText> BWTooltip::makeText(const juce::Font& font) const {
  auto text = std::make_unique<PanelText>();
  text->setFont(font);
  text->setColour(textColour);
  return text;
}

void BWTooltip::build() {
  popup = std::make_shared<BWPopupView>();
  popup->setInterceptsMouseClicks(false, false);
  popup->setPanelColour(juce::Colours::transparentBlack);
  content = std::make_shared<BWView>();
  content->setFill(fill);
  content->setOutline(outline);
  content->setOutlineThickness(kOutlineThickness);
  content->setCornerSize(BWPopupView::kCornerSize);
  nameFont = juce::Font(kNameHeight);
  valueFont = juce::Font(kValueHeight);
  nameText = makeText(nameFont);
  valueText = makeText(valueFont);
  content->addAndMakeVisible(*nameText);
  content->addAndMakeVisible(*valueText);
  layOut();
  popup->setContent(content);
  popup->setModal(false);
  popup->setDirections({UIPopupDirection::aboveCentre, UIPopupDirection::belowCentre});
  popup->setAnchor(anchor);
  popup->show();
}

void BWTooltip::layOut() {
  if (nameText == nullptr) {
    return;
  }
  nameText->setText(name);
  valueText->setText(value);
  const float nameHeight = name.isEmpty() ? 0.0F : nameFont.getHeight();
  const TooltipLayout layout = layOutTooltip(nameFont.getStringWidthFloat(name), nameHeight,
                                             valueFont.getStringWidthFloat(value), valueFont.getHeight());
  nameText->setBounds(layout.name.toNearestInt());
  valueText->setBounds(layout.value.toNearestInt());
  popup->setContentSize(layout.size.x, layout.size.y);
}

void BWTooltip::show() {
  if (popup == nullptr) {
    build();
  }
  ++showCount;
  popup->setVisible(true);
  // The task thread uses no component: it posts the end of the second to the message thread, unless the tooltip no
  // longer exists.
  const std::weak_ptr<BWTooltip> self = weak_from_this();
  const std::array<cofu::core::impl::Task, 1> task{{{platform::monotonicTicks() + kOneSecond, [self] {
                                                       if (self.expired()) {
                                                         return;
                                                       }
                                                       juce::MessageManager::callAsync([self] {
                                                         if (const auto tooltip = self.lock()) {
                                                           tooltip->hideAfterLastShow();
                                                         }
                                                       });
                                                     }}}};
  scheduler->postTasks(task.begin(), task.end());
}

void BWTooltip::hideAfterLastShow() {
  if (showCount-- < 2) {
    popup->setVisible(false);
  }
}

}  // namespace tesh::bramel
