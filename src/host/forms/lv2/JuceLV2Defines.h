// JUCE's LV2 wrapper reads the plug-in's URI from a header of this name. Songs refer to the plug-in by it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#define JucePlugin_LV2URI "urn:tesh:sivray"  // NOLINT(cppcoreguidelines-macro-usage)
