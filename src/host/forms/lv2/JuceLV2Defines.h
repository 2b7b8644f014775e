// JUCE's LV2 wrapper reads the plug-in's URI from a header of this name, and with our changes the addresses that hosts
// show. Songs refer to the plug-in by its URI.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// NOLINTBEGIN(cppcoreguidelines-macro-usage): the wrapper reads macros.

#define JucePlugin_LV2URI "urn:tesh:sivray"
#define JucePlugin_LV2License "https://spdx.org/licenses/GPL-3.0-or-later"
#define JucePlugin_LV2Homepage JucePlugin_LV2URI  // It has no page; a name is an address, too.

// NOLINTEND(cppcoreguidelines-macro-usage)
