// The page buttons in the glass of the upper ground: the page in front is an amber body, the others are words.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>

#include "Elements.h"
#include "Palette.h"

namespace sivray::art {
namespace {

struct PageButton {
  const char* word;
  Point place;  ///< Of the picture on the panel.
  float bodyX;  ///< On the panel: bodies stand 90 apart, pictures do not.
};

constexpr float kBodyY = 19.0F;
constexpr float kBodyWidth = 70.0F;
constexpr float kBodyHeight = 22.0F;
constexpr float kRadius = 4.0F;
constexpr float kBaseLine = 33.5F;
constexpr TextStyle kWord{8.7F, 0.8F};
constexpr float kWordShift = 0.2F;  // to the left, where whole pixels space the letters best
const std::array<PageButton, 3> kButtons{
    {{"SOUND", {272.0F, 18.0F}, 273.0F}, {"CHARACTER", {363.0F, 17.0F}, 363.0F}, {"MIX", {453.0F, 17.0F}, 453.0F}}};

}  // namespace

void drawPageButton(Canvas& canvas, const Lettering& lettering, int page, bool on) {
  const PageButton& button = kButtons[static_cast<std::size_t>(page)];
  const Box body = Box{button.bodyX, kBodyY, kBodyWidth, kBodyHeight} - button.place;
  if (on) {
    canvas.shadow(body.expanded(0.5F, 0.0F).withTrimmedTop(1.0F).withBottom(body.getBottom() + 1.45F), kRadius, 1.2F,
                  black(0.48F));
    canvas.fill(roundBox(body, kRadius), {{0.0F, rgb(0xFFD24A)}, {1.0F, rgb(0xFFB700)}});
    canvas.innerLine(body, kRadius, {{0.0F, white(0.6F)}, {0.5F, white(0.0F)}, {1.0F, black(0.12F)}});
  }
  canvas.printCentred(lettering.print(button.word, kWord), body.getCentreX() - kWordShift, kBaseLine - button.place.y,
                      on ? kNight : kPeriwinkle);
}

}  // namespace sivray::art
