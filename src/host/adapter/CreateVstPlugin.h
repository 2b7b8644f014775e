// The library's door.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/vst/AudioEffect.h"
#include "host/vst/VstRecords.h"

#ifdef _WIN32
#define SIVRAY_EXPORT __declspec(dllexport)
#else
#define SIVRAY_EXPORT __attribute__((visibility("default")))
#endif

namespace tesh::bramel::vst {

/// A new drum module for the host behind `audioMaster`, which may be null. The host ends it with effClose, or its
/// holder with delete. Null when the instrument's files are missing or wrong; nothing is thrown.
extern "C" SIVRAY_EXPORT AudioEffect* createVstPlugin(AudioMasterCallback audioMaster);

}  // namespace tesh::bramel::vst
