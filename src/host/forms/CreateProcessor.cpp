// The function by which JUCE's wrappers make the plug-in.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/client/SivrayProcessor.h"

juce::AudioProcessor* JUCE_CALLTYPE createPluginFilter() { return new tesh::bramel::vst::SivrayProcessor(); }
