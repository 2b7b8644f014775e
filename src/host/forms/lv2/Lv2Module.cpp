// The LV2 plug-in: JUCE's wrapper around the processor.
// SPDX-License-Identifier: GPL-3.0-or-later
#define JucePlugin_Build_LV2 1
#include "JuceLV2Defines.h"
#include "Midnam.h"
#include "host/client/KeyNames.h"
#include "host/forms/FormSettings.h"
#include "host/message/X11Connection.h"

#include <juce_audio_plugin_client/juce_audio_plugin_client_LV2.cpp>  // NOLINT(bugprone-suspicious-include)

#if !defined(SIVRAY_CHANGED_juce_LV2_Client) || !defined(SIVRAY_CHANGED_juce_FlagCache) || \
    !defined(SIVRAY_CHANGED_juce_LinuxMessageThread)
#error "JUCE's own wrapper, not that of <build>/juce, which cmake/PatchedJuce.cmake makes"
#endif
