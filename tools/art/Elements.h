// One drawing function per element. Each draws at 0, 0 of the canvas, in panel pixels; the sizes given are the
// pictures'.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Canvas.h"
#include "Lettering.h"

namespace sivray::art {

constexpr int kKnobFrames = 128;

/// How a knob's ring is lit: from its lower end, or from its centre to either side.
enum class Ring { sweep, biDirectional };
/// 55 x 55. `frame` is 0 to 127.
void drawKnob(Canvas& canvas, Ring ring, int frame);

/// 72 x 72.
void drawPad(Canvas& canvas, bool on);

/// 45 x 19: one-shot, or gate.
void drawEnvelopeSwitch(Canvas& canvas, const Lettering& lettering, bool gate);
/// 35 x 21.
void drawReverseSwitch(Canvas& canvas, const Lettering& lettering, bool on);
/// 35 x 21.
void drawEffectSwitch(Canvas& canvas, const Lettering& lettering, bool on);
/// 39 x 24.
void drawMuteSwitch(Canvas& canvas, const Lettering& lettering, bool on);
/// 33 x 18. `state` is 0 for no group, 1 for A, 2 for B.
void drawGroupSwitch(Canvas& canvas, const Lettering& lettering, int state);

/// 72 x 25. `page` is 0 to 2.
void drawPageButton(Canvas& canvas, const Lettering& lettering, int page, bool on);

/// The ground around a display, which determines the brightness of its lower edge.
enum class Ground { cobalt, bisque };
/// A window with the panel's rim round it.
void drawGlass(Canvas& canvas, Box box, float radius, Ground ground);
/// 71 x 31: a part's display.
void drawSampleDisplay(Canvas& canvas);
/// The mark of a menu: rows of whole pixels, each two shorter than the one above, or a smooth triangle at finer scales.
/// `width` is odd.
void drawOpensMark(Canvas& canvas, Point topLeft, int width, juce::Colour colour);

/// 50 x 43; 8 columns at the left and 8 at the right stay empty.
void drawFader(Canvas& canvas);

enum class Direction { previous, next };
/// 35 x 24 and 36 x 24.
void drawStepArrow(Canvas& canvas, Direction direction);
/// 30 x 30.
void drawFactoryIcon(Canvas& canvas, juce::Colour colour);
void drawFolderIcon(Canvas& canvas, juce::Colour colour);

/// 768 x 468.
void drawBackground(Canvas& canvas, const Lettering& lettering);
/// 768 x 337. `page` is 0 to 2.
void drawPage(Canvas& canvas, const Lettering& lettering, int page);
/// The product's name, with an inverted V for its A.
Word productName(const Lettering& lettering, TextStyle style);
const Ramp& cobaltGround();
const Ramp& bisqueGround();

/// Rows of the guide on the settings page, in its order.
inline constexpr const char* kCatalogue[] = {"Sivray", "Pads",    "Sound", "Character",
                                             "Mix",    "Effects", "Kits",  "Samples"};
/// 252 x 181. `row` is an index of kCatalogue.
void drawCatalogueTile(Canvas& canvas, const Lettering& lettering, int row);

}  // namespace sivray::art
