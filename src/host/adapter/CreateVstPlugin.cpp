// Makes the plug-in from the instrument and the editor that the provider gives.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/adapter/CreateVstPlugin.h"

#include "host/adapter/BramelVstAdapter.h"
#include "host/adapter/SivrayInstrumentProvider.h"

namespace tesh::bramel::vst {

AudioEffect* createVstPlugin(AudioMasterCallback audioMaster) {
  try {
    SivrayInstrumentProvider provider;
    const std::shared_ptr<BramelInstrumentBase> instrument = provider.createInstrument();
    return new BramelVstAdapter(audioMaster, instrument, provider.createEditor(instrument));
  } catch (...) {
    return nullptr;
  }
}

}  // namespace tesh::bramel::vst
