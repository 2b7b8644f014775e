// Makes the plug-in from the instrument that the provider gives.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/adapter/CreateVstPlugin.h"

#include "host/adapter/BramelVstAdapter.h"
#include "host/adapter/SivrayInstrumentProvider.h"

namespace tesh::bramel::vst {

AudioEffect* createVstPlugin(AudioMasterCallback audioMaster) {
  try {
    return new BramelVstAdapter(audioMaster, SivrayInstrumentProvider().createInstrument());
  } catch (...) {
    return nullptr;
  }
}

}  // namespace tesh::bramel::vst
