// The layout of the panel: rectangles, image names, colours and fonts. Panel pixels at 100 %, from the top left corner.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "viewmodels/texts/PanelMacros.h"
#include "views/PanelRect.h"

namespace tesh::bramel::panel {

inline constexpr int kPanelWidth = 768;
inline constexpr int kPanelHeight = 468;

/// Distance between the columns of two pads.
inline constexpr int kColumnWidth = 92;

enum Page : std::uint64_t { soundPage, characterPage, mixPage };
inline constexpr std::size_t kPageCount = 3;

enum class ControlKind {
  stub,  ///< Not on the panel, but updated like a control.
  sweepKnob,
  centredKnob,
  envelopeMode,
  reverse,
  effectSend,
  mute,
  exclusiveGroup,
  levelFader
};

/// A control of pad 0. For pad k, add 12 k to the macro and k columns to the position.
struct PadControl {
  PadMacro macro;
  Page page;
  ControlKind kind;
  PanelRect bounds;
};

/// In building order: a control covers the earlier ones.
inline constexpr std::array<PadControl, kMacrosPerPad> kPadControls{{
    {kSample, soundPage, ControlKind::stub, {}},
    {kPitch, soundPage, ControlKind::centredKnob, {34, 193, 55, 55}},
    {kEnvelopeTime, soundPage, ControlKind::sweepKnob, {34, 267, 55, 55}},
    {kEnvelopeMode, soundPage, ControlKind::envelopeMode, {40, 342, 45, 19}},
    {kPunch, characterPage, ControlKind::sweepKnob, {34, 193, 55, 55}},
    {kLowBoost, characterPage, ControlKind::sweepKnob, {34, 267, 55, 55}},
    {kReverse, characterPage, ControlKind::reverse, {28, 342, 35, 21}},
    {kEffectSend, characterPage, ControlKind::effectSend, {62, 342, 35, 21}},
    {kPan, mixPage, ControlKind::centredKnob, {34, 193, 55, 55}},
    {kMute, mixPage, ControlKind::mute, {23, 266, 39, 24}},
    {kExclusiveGroup, mixPage, ControlKind::exclusiveGroup, {65, 270, 33, 18}},
    {kLevel, mixPage, ControlKind::levelFader, {45, 291, 34, 163}},
}};

struct MasterControl {
  std::size_t macro;
  ControlKind kind;
  PanelRect bounds;
};

inline constexpr std::array<MasterControl, 4> kMasterControls{{
    {kEffectTypeMacro, ControlKind::stub, {}},
    {kEffectEdit1Macro, ControlKind::sweepKnob, {496, 54, 55, 55}},
    {kEffectEdit2Macro, ControlKind::sweepKnob, {587, 54, 55, 55}},
    {kMasterLevelMacro, ControlKind::sweepKnob, {679, 54, 55, 55}},
}};

/// The images of a control with one image per state.
struct StateImages {
  ControlKind kind;
  std::array<const char*, 3> names;  ///< Null after the last state.
};

inline constexpr std::array<StateImages, 5> kStateImages{{
    {ControlKind::envelopeMode, {"Sivray_EG_Oneshot", "Sivray_EG_Gate", nullptr}},
    {ControlKind::reverse, {"Sivray_Reverse_Off", "Sivray_Reverse_On", nullptr}},
    {ControlKind::effectSend, {"Sivray_MFX_Off", "Sivray_MFX_On", nullptr}},
    {ControlKind::mute, {"Sivray_Mute_Off", "Sivray_Mute_On", nullptr}},
    {ControlKind::exclusiveGroup, {"Sivray_Group_Off", "Sivray_Group_A", "Sivray_Group_B"}},
}};

inline constexpr const char* kBackgroundImage = "Sivray_background";
inline constexpr std::array<const char*, kPageCount> kPageImages{"Sivray_Layer_0", "Sivray_Layer_1", "Sivray_Layer_2"};
inline constexpr PanelRect kPageBounds{0, 131, 768, 337};

/// A film strip: the name of frame n is this, an underscore and n.
inline constexpr const char* kSweepStrip = "Sivray Knob Index 32 sweep";
inline constexpr const char* kCentredStrip = "Sivray Knob BiDirectional";
inline constexpr int kStripFrames = 128;

inline constexpr const char* kFaderHandle = "Sivray_Slider";
inline constexpr PanelSize kFaderHandleSize{50, 43};
inline constexpr float kKnobSensitivity = 1.0F;
inline constexpr float kFaderSensitivity = 0.6F;

/// A button's images for off and on, and its position.
struct ButtonRow {
  PanelRect bounds;
  const char* off;
  const char* on;
};

inline constexpr std::array<ButtonRow, kPageCount> kPageButtons{{
    {{272, 18, 72, 25}, "Sivray_Select_0_Off", "Sivray_Select_0_On"},
    {{363, 17, 72, 25}, "Sivray_Select_1_Off", "Sivray_Select_1_On"},
    {{453, 17, 72, 25}, "Sivray_Select_2_Off", "Sivray_Select_2_On"},
}};

/// The container of the pads, and the pads in it.
inline constexpr PanelRect kPadContainer{0, 369, 768, 72};
inline constexpr std::array<int, kPads> kPadX{27, 119, 211, 303, 395, 488, 580, 672};
inline constexpr int kPadSize = 72;
inline constexpr const char* kPadOff = "Sivray_Pad_Off";
inline constexpr const char* kPadOn = "Sivray_Pad_On";
inline constexpr std::array<const char*, kPads> kPadCaptions{"C1", "C#1", "D1", "D#1", "E1", "F1", "F#1", "G1"};
/// Space around the caption in a pad: top, left, bottom, right.
inline constexpr std::array<int, 4> kPadCaptionBorder{kPadSize - 22, 0, 4, 1};

/// Display of pad 0.
inline constexpr const char* kDisplayImage = "Sivray_Sample_LCD";
inline constexpr PanelRect kDisplay{28, 145, 71, 31};
inline constexpr PanelRect kPadNumber{29, 145, 73, 15};
inline constexpr PanelRect kSampleName{29, 160, 69, 15};

inline constexpr PanelRect kProgramLabel{41, 80, 152, 23};
inline constexpr PanelRect kProgramButton{41, 81, 152, 23};
inline constexpr PanelRect kPreviousProgram{211, 75, 35, 24};
inline constexpr PanelRect kNextProgram{246, 75, 35, 24};
inline constexpr const char* kPreviousImage = "Sivray_Program_Dec_Off";
inline constexpr const char* kNextImage = "Sivray_Program_Inc_Off";
inline constexpr PanelRect kSettingsZone1{28, 19, 58, 21};
inline constexpr PanelRect kSettingsZone2{623, 17, 112, 27};
inline constexpr PanelRect kEffectButton{317, 81, 152, 23};
inline constexpr PanelRect kFirstEditLabel{486, 100, 75, 30};
inline constexpr PanelRect kSecondEditLabel{577, 100, 75, 30};

inline constexpr PanelSize kSampleSelectorSize{380, 380};

inline constexpr const char* kDisplayFace = "PF Arma Five";
inline constexpr double kDisplayHeight = 18.0;
inline constexpr double kPadDisplayHeight = 13.0;
inline constexpr const char* kCaptionFace = "Oswald Medium";
inline constexpr double kCaptionHeight = 10.0;

// Colours as 0xAARRGGBB.
inline constexpr std::uint32_t kDisplayColour = 0xff95a8ef;
inline constexpr std::uint32_t kEditLabelColour = 0xffa8b1cd;
inline constexpr std::uint32_t kPadCaptionColour = 0x7fffffff;
inline constexpr std::uint32_t kTooltipFill = 0xe6222792;
inline constexpr std::uint32_t kTooltipOutline = 0xf2222792;
inline constexpr std::uint32_t kTooltipText = 0xff94a8f2;

}  // namespace tesh::bramel::panel
