// The library's exported function, which makes the plug-in.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/vst/AudioEffect.h"
#include "host/vst/VstRecords.h"
#include "platform/Export.h"

namespace tesh::bramel::vst {

/// Makes a drum module for the host behind `audioMaster`, which may be null. effClose or `delete` destroys it. Returns
/// null if the instrument's files are missing or broken; throws nothing.
extern "C" SIVRAY_EXPORT AudioEffect* createVstPlugin(AudioMasterCallback audioMaster);

}  // namespace tesh::bramel::vst
