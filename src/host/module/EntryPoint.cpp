// The function that a host calls after loading the library.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/adapter/CreateVstPlugin.h"

using tesh::bramel::vst::AEffect;
using tesh::bramel::vst::AudioEffect;
using tesh::bramel::vst::AudioMasterCallback;
using tesh::bramel::vst::createVstPlugin;

/// Returns a new plug-in's record, or null if its files are missing or broken. `audioMaster` may be null, as some
/// scanners have none: the plug-in then makes no calls to its host.
extern "C" SIVRAY_EXPORT AEffect* VSTPluginMain(AudioMasterCallback audioMaster) {
  AudioEffect* const plugin = createVstPlugin(audioMaster);
  return plugin == nullptr ? nullptr : plugin->getAeffect();
}
