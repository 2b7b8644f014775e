// JUCE's LV2 wrapper reads the plug-in's URI from a header of this name; with our patches also the addresses that hosts
// show. Songs refer to the plug-in by its URI.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// NOLINTBEGIN(cppcoreguidelines-macro-usage): the wrapper reads macros.

#define JucePlugin_LV2URI "urn:tesh:sivray"
#define JucePlugin_LV2License "https://spdx.org/licenses/GPL-3.0-or-later"
#define JucePlugin_LV2Homepage JucePlugin_LV2URI  // There is no web page; the field must hold a URI.

// NOLINTEND(cppcoreguidelines-macro-usage)
