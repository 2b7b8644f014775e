// The list itself, group by group.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "PictureList.h"

#include <iterator>

#include "Elements.h"
#include "Palette.h"

namespace sivray::art {
namespace {

using Pictures = std::vector<Picture>;

void addGrounds(Pictures& list) {
  list.push_back({"SIVRAY_BACKGROUND", 768, 468, drawBackground});
  for (int page = 0; page < 3; ++page) {
    list.push_back({"SIVRAY_LAYER_" + std::to_string(page), 768, 337,
                    [page](Canvas& canvas, const Lettering& letters) { drawPage(canvas, letters, page); }});
  }
}

void addKnobStrips(std::vector<Strip>& list, const std::string& name, Ring ring) {
  constexpr int kFrames = 32;
  for (int first = 0; first < kKnobFrames; first += kFrames) {
    list.push_back({name + std::to_string(first / kFrames), 55, kFrames,
                    [ring, first](Canvas& canvas, int frame) { drawKnob(canvas, ring, first + frame); }});
  }
}

/// The pair NAME_OFF and NAME_ON.
template <class Draw>
void addPair(Pictures& list, const std::string& name, int width, int height, const Draw& draw) {
  for (const bool on : {false, true}) {
    list.push_back({name + (on ? "_ON" : "_OFF"), width, height,
                    [draw, on](Canvas& canvas, const Lettering& letters) { draw(canvas, letters, on); }});
  }
}

void addSwitches(Pictures& list) {
  for (const bool gate : {false, true}) {
    list.push_back({gate ? "SIVRAY_EG_GATE" : "SIVRAY_EG_ONESHOT", 45, 19,
                    [gate](Canvas& canvas, const Lettering& letters) { drawEnvelopeSwitch(canvas, letters, gate); }});
  }
  addPair(list, "SIVRAY_REVERSE", 35, 21, drawReverseSwitch);
  addPair(list, "SIVRAY_MFX", 35, 21, drawEffectSwitch);
  addPair(list, "SIVRAY_MUTE", 39, 24, drawMuteSwitch);
  const char* const groups[] = {"SIVRAY_GROUP_OFF", "SIVRAY_GROUP_A", "SIVRAY_GROUP_B"};
  for (int state = 0; state < 3; ++state) {
    list.push_back({groups[state], 33, 18,
                    [state](Canvas& canvas, const Lettering& letters) { drawGroupSwitch(canvas, letters, state); }});
  }
}

void addButtons(Pictures& list) {
  addPair(list, "SIVRAY_PAD", 72, 72, [](Canvas& canvas, const Lettering&, bool on) { drawPad(canvas, on); });
  for (int page = 0; page < 3; ++page) {
    addPair(list, "SIVRAY_SELECT_" + std::to_string(page), 72, 25,
            [page](Canvas& canvas, const Lettering& letters, bool on) { drawPageButton(canvas, letters, page, on); });
  }
  list.push_back({"SIVRAY_PROGRAM_DEC_OFF", 35, 24,
                  [](Canvas& canvas, const Lettering&) { drawStepArrow(canvas, Direction::previous); }});
  list.push_back({"SIVRAY_PROGRAM_INC_OFF", 36, 24,
                  [](Canvas& canvas, const Lettering&) { drawStepArrow(canvas, Direction::next); }});
  list.push_back({"SIVRAY_SAMPLE_LCD", 71, 31, [](Canvas& canvas, const Lettering&) { drawSampleDisplay(canvas); }});
  list.push_back({"SIVRAY_SLIDER", 50, 43, [](Canvas& canvas, const Lettering&) { drawFader(canvas); }});
}

void addIcons(Pictures& list) {
  for (const bool chosen : {false, true}) {
    const juce::Colour colour = chosen ? kAmber : juce::Colours::white;
    const std::string suffix = chosen ? "_ORANGE" : "_WHITE";
    list.push_back(
        {"FACTORY" + suffix, 30, 30, [colour](Canvas& canvas, const Lettering&) { drawFactoryIcon(canvas, colour); }});
    list.push_back(
        {"FOLDER" + suffix, 30, 30, [colour](Canvas& canvas, const Lettering&) { drawFolderIcon(canvas, colour); }});
  }
}

void addCatalogue(Pictures& list) {
  for (int row = 0; row < static_cast<int>(std::size(kCatalogue)); ++row) {
    const juce::String name(kCatalogue[row]);
    list.push_back({"COLLECTION_" + name.toUpperCase().toStdString(), 252, 181,
                    [row](Canvas& canvas, const Lettering& letters) { drawCatalogueTile(canvas, letters, row); }});
  }
}

}  // namespace

std::vector<Picture> allPictures() {
  Pictures list;
  addGrounds(list);
  addSwitches(list);
  addButtons(list);
  addIcons(list);
  addCatalogue(list);
  return list;
}

juce::Image render(const Picture& picture, const Lettering& lettering, int scale) {
  Canvas canvas(picture.width, picture.height, scale);
  picture.draw(canvas, lettering);
  return canvas.image();
}

std::vector<Strip> allStrips() {
  std::vector<Strip> list;
  addKnobStrips(list, "SIVRAY_KNOB_INDEX_32_SWEEP_STRIP_", Ring::sweep);
  addKnobStrips(list, "SIVRAY_KNOB_BIDIRECTIONAL_STRIP_", Ring::biDirectional);
  return list;
}

juce::Image render(const Strip& strip, int scale) {
  const int side = strip.side * scale;
  juce::Image picture(juce::Image::ARGB, side * strip.frames, side, true, juce::SoftwareImageType());
  juce::Graphics graphics(picture);
  for (int frame = 0; frame < strip.frames; ++frame) {
    Canvas canvas(strip.side, strip.side, scale);
    strip.draw(canvas, frame);
    graphics.drawImageAt(canvas.image(), side * frame, 0);
  }
  return picture;
}

}  // namespace sivray::art
