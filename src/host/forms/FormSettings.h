// What JUCE's plug-in wrappers need to know of a plug-in: names, ids, inputs and outputs. Songs refer to the plug-in by
// the ids, which therefore never change. A form defines its own macro before it includes this header.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SivrayVersion.h"

// NOLINTBEGIN(cppcoreguidelines-macro-usage): the wrappers read macros.

#define JucePlugin_Name "Sivray"
#define JucePlugin_Desc "Drum module with eight pads"
#define JucePlugin_Manufacturer "TESH"
#define JucePlugin_ManufacturerWebsite ""
#define JucePlugin_ManufacturerEmail ""
#define JucePlugin_ManufacturerCode 0x54657368  // "Tesh"
#define JucePlugin_PluginCode 0x54423130        // "TB10", the VST 2 plug-in's id.

#define JucePlugin_Version SIVRAY_VERSION_NUMBER
#define JucePlugin_VersionCode SIVRAY_VERSION_CODE
#define JucePlugin_VersionString SIVRAY_VERSION

#define JucePlugin_Vst3Category "Instrument|Drum"
#define JucePlugin_IsSynth 1
#define JucePlugin_IsMidiEffect 0
#define JucePlugin_WantsMidiInput 1
#define JucePlugin_ProducesMidiOutput 1
#define JucePlugin_EditorRequiresKeyboardFocus 0
#define JucePlugin_Enable_ARA 0

// NOLINTEND(cppcoreguidelines-macro-usage)
