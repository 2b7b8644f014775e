// Builds an instrument step by step.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/shell/Construction.h"

#include <string>

#include "engine/SivrayPlugin.h"
#include "host/shell/BramelInstrument.h"
#include "macro/MacroDescription.h"
#include "storage/paths/Paths.h"
#include "storage/programs/UserProgramFile.h"
#include "viewmodels/texts/SivrayTooltipProvider.h"

namespace tesh::bramel::vst {
namespace {

using Processor = vimo::PluginMacroControllable<vimo::Generator<float>>;
using Plugin = plugin::sivray::SivrayPlugin<plugin::sivray::VstXSynth>;

/// The file with the index of all waves by category; if there is none, the one of the plain index.
std::string sampleListFile() {
  const std::string resources = directoryFor(kBramelDirectory_Resource);
  const std::string byCategory = pathBelow(resources, "SivrayPCM/drumparam_category.bin");
  return fileExists(byCategory) ? byCategory : pathBelow(resources, "SivrayPCM/drumparam.bin");
}

void readDescription(Processor& processor, const std::string& name) {
  const std::string folder = pathFor(kBramelPath_Macro, name);
  const auto text = readFile(pathBelow(folder, "readme.json"));
  vimo::loadDescription(text, vimo::filesOf(folder, name), processor, Processor::Controller::ChunkParts::all);
}

void readUserPrograms(Processor& processor, const std::string& name) {
  const auto file = readFile(pathFor(kBramelPath_UserProgram, name));
  if (const auto bank = vimo::readUserProgramFile(file)) {
    processor.controller().programs().loadDatabase(vimo::Bank::user, bank->image, bank->macroCount,
                                                   vimo::ProgramDatabase::Mode::replace);
  }
}

}  // namespace

std::unique_ptr<Processor> makeProcessor() {
  const std::string name(kInstrumentName);
  const std::string sampleList = sampleListFile();
  // Waves are loaded later, because the description's engine state names the waves of the pads.
  auto plugin = std::make_unique<Plugin>(plugin::sivray::kSampleFolder, plugin::sivray::kSlotFrames,
                                         plugin::sivray::WaveLoading::later);
  Plugin& frame = *plugin;
  auto processor = std::make_unique<Processor>(name, std::move(plugin));
  frame.setListener(processor.get());
  frame.sampleLibrary()->load(sampleList);
  readDescription(*processor, name);
  readUserPrograms(*processor, name);
  processor->programQueue.put(vimo::MidiEvent::programChange(1, 0, 0));
  frame.activate();
  return processor;
}

std::shared_ptr<BramelInstrument> makeInstrument() {
  auto instrument = std::make_shared<BramelInstrument>(makeProcessor());
  instrument->setTooltipProvider(std::make_unique<tooltip::SivrayTooltipProvider>());
  return instrument;
}

}  // namespace tesh::bramel::vst
