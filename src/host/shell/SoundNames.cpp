// Finds a pad's sound in the sample library.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/shell/SoundNames.h"

#include "engine/samples/SampleLibrary.h"
#include "viewmodels/texts/PanelMacros.h"
#include "viewmodels/texts/ParameterSteps.h"

namespace tesh::bramel::vst {

std::string soundNameOf(BramelInstrument& instrument, std::size_t pad) {
  auto* const processor = instrument.processorHandle();
  const vimo::SampleLibrary* const library = processor == nullptr ? nullptr : processor->generator().sampleLibrary();
  if (library == nullptr || library->waveCount() < 1) {
    return {};
  }
  const float value = instrument.parameterValue(panel::padMacro(pad, panel::kSample));
  return library->waveName(library->flatIndexOf(quantizeValue(value, library->numberCount(), 0)));
}

std::string soundNameOnKey(BramelInstrument& instrument, int key) {
  const auto pad = panel::padOfNote(key);
  return pad ? soundNameOf(instrument, *pad) : std::string();
}

}  // namespace tesh::bramel::vst
