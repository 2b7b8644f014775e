// Where a host comes in: it loads the library, calls this, and speaks to the record that it gets.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/adapter/CreateVstPlugin.h"

using tesh::bramel::vst::AEffect;
using tesh::bramel::vst::AudioEffect;
using tesh::bramel::vst::AudioMasterCallback;
using tesh::bramel::vst::createVstPlugin;

/// A new plug-in, or null when its files are missing or wrong. A scanner may come without a callback of its own: it
/// gets a plug-in that can be asked everything and never calls back.
extern "C" SIVRAY_EXPORT AEffect* VSTPluginMain(AudioMasterCallback audioMaster) {
  AudioEffect* const plugin = createVstPlugin(audioMaster);
  return plugin == nullptr ? nullptr : plugin->getAeffect();
}
