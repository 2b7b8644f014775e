// Carries out the host's calls on an instance: start, stop, state and kits.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/clap/ClapPlugin.h"

#include <cmath>
#include <exception>
#include <utility>
#include <vector>

#include "SivrayVersion.h"
#include "host/clap/ClapKits.h"
#include "host/clap/ClapStreams.h"
#include "host/resample/CFsConverterWrapper.h"
#include "host/shell/Construction.h"
#include "views/SivrayEditorProvider.h"

namespace tesh::bramel::clap {
namespace {

constexpr const char* kFeatures[] = {"instrument", "drum-machine", "drum", "sampler", "stereo", nullptr};

constexpr double kLargestRate = 10'000'000.0;  ///< Hz; above it a rate is a mistake.

}  // namespace

const Descriptor& pluginDescriptor() {
  static constexpr Descriptor kDescriptor{
      {}, kPluginId, "Sivray", "TESH", "", "", "", SIVRAY_VERSION, "Drum module with eight pads", kFeatures};
  return kDescriptor;
}

ClapPlugin::ClapPlugin(const Host* newHost) : host(newHost) { fillRecord(); }

const Plugin* ClapPlugin::make(const Host* host) { return &(new ClapPlugin(host))->record; }

bool ClapPlugin::init() {
  if (instrument != nullptr) {
    return false;
  }
  host.findExtensions();
  try {
    auto made = vst::makeInstrument();
    panel = std::make_shared<vst::BramelInstrumentEditor>(
        made, std::make_shared<plugin::sivray::SivrayEditorProvider>(), vst::MessageThread::Kind::own);
    parameters = std::make_unique<ClapParameters>(*made);
    reports = std::make_shared<ClapReports>(*made, *parameters, host);
    block = std::make_unique<ClapBlock>(*made, *parameters, *reports);
    session = std::make_unique<vst::EditorSession>(panel);
    made->currentProgram();  // Applies the first program now: in the first block it would replace what the host sets
                             // before.
    made->setHostCallback(reports);
    made->setUICallback(panel);
    instrument = std::move(made);
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

bool ClapPlugin::activate(double sampleRate) {
  if (instrument == nullptr || isActive || !(sampleRate > 0.0) || sampleRate > kLargestRate) {
    return false;
  }
  instrument->setSampleRate(static_cast<float>(sampleRate));
  instrument->makeOuts();
  instrument->resume();
  const auto frames = static_cast<std::uint32_t>(vst::CFsConverterWrapper::latency(sampleRate));
  if (latency.exchange(frames) != frames) {
    host.latencyChanged();
  }
  reports->setTakesMidi(true);
  isActive = true;
  return true;
}

void ClapPlugin::deactivate() {
  if (isActive.exchange(false)) {
    reports->setTakesMidi(false);
    instrument->suspend();
    block->reset();
  }
}

std::int32_t ClapPlugin::process(const Process* given) {
  return given != nullptr && isActive ? block->process(*given) : ProcessStatus::error;
}

void ClapPlugin::reset() {
  if (isActive) {
    instrument->suspend();
    instrument->resume();
    block->reset();
  }
}

bool ClapPlugin::save(const OutputStream* stream) {
  std::vector<vst::BramelInstrument::StateValue> bases;  // A state holds no modulation.
  for (std::uint32_t index = 0; index < parameters->count(); ++index) {
    if (block->isModulated(index)) {
      bases.push_back({parameters->idAt(index), block->baseOf(index)});
    }
  }
  return writeAll(stream, instrument->getState(bases));
}

bool ClapPlugin::load(const InputStream* stream) {
  const auto bytes = readAll(stream);
  if (!bytes || !instrument->setState(bytes->data(), bytes->size())) {
    return false;
  }
  reports->stateLoaded();
  return true;
}

bool ClapPlugin::loadKit(std::uint32_t locationKind, const char* location, const char* loadKey) {
  const auto place = kitPlaceOf(locationKind, location, loadKey);
  if (!place || place->program >= instrument->programCount(place->bank)) {
    host.presetFailed(locationKind, location, loadKey, "There is no such kit.");
    return false;
  }
  instrument->setProgram(place->bank, place->program, vst::Origin::host);
  host.presetLoaded(locationKind, location, loadKey);
  return true;
}

double ClapPlugin::valueOf(std::uint32_t index) {
  const bool isModulated = block->isModulated(index);
  const float value = isModulated ? block->baseOf(index) : instrument->parameterValue(parameters->idAt(index));
  reports->askForCall();  // The value may have been written since the last block.
  return parameters->hostValue(index, value);
}

}  // namespace tesh::bramel::clap
