// The VST 3 plug-in: JUCE's wrapper around the processor.
// SPDX-License-Identifier: GPL-3.0-or-later
#define JucePlugin_Build_VST3 1
#include "host/client/KeyNames.h"
#include "host/client/ProgramChoice.h"
#include "host/forms/FormSettings.h"
#include "host/message/X11Connection.h"

#include <juce_audio_plugin_client/juce_audio_plugin_client_VST3.cpp>  // NOLINT(bugprone-suspicious-include)

#if !defined(SIVRAY_CHANGED_juce_VST3_Wrapper) || !defined(SIVRAY_CHANGED_juce_FlagCache) || \
    !defined(SIVRAY_CHANGED_juce_LinuxMessageThread)
#error "JUCE's own wrapper, not that of <build>/juce, which cmake/PatchedJuce.cmake makes"
#endif
