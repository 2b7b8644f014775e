// Passes each operation on to the part of the shell that implements it.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/shell/BramelInstrument.h"

#include <array>
#include <cmath>
#include <limits>

#include "core/MidiStatus.h"
#include "host/shell/BramelInstrumentImpl.h"
#include "host/shell/ProgramBanks.h"

namespace tesh::bramel::vst {
namespace {

/// Kinds of generators that play notes.
constexpr int kSoundGenerator = 0;
constexpr int kOtherSoundGenerator = 5;

}  // namespace

BramelInstrument::BramelInstrument(std::unique_ptr<Processor> processor)
    : impl(std::make_unique<Impl>(*this, std::move(processor))) {}

BramelInstrument::~BramelInstrument() = default;

std::uint64_t BramelInstrument::mapParameterSteps(std::uint64_t, std::uint64_t steps) const { return steps; }
float BramelInstrument::mapValueToHost(std::uint64_t, float value) const { return value; }
float BramelInstrument::mapValueFromHost(std::uint64_t, float value) const { return value; }

// Audio and time.

void BramelInstrument::process(float** inputs, float** outputs, std::int32_t frames) {
  constexpr std::size_t kChannels = vimo::kMainChannels;
  impl->block.process(inputs, outputs == nullptr ? std::span<float*>() : std::span(outputs, kChannels), frames);
}

void BramelInstrument::processOuts(std::span<float*> outputs, std::int32_t frames) {
  impl->block.process(nullptr, outputs, frames);
}

void BramelInstrument::makeOuts() { impl->block.makeOuts(); }

void BramelInstrument::sendMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) {
  impl->block.sendMidi(data, size, deltaFrames);
}

void BramelInstrument::sendEvents(const VstEvents& events) { impl->block.sendEvents(events); }

void BramelInstrument::sendKeyboardMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) {
  impl->block.sendKeyboardMidi(data, size, deltaFrames);
}

void BramelInstrument::setSampleRate(float rate) { impl->block.setSampleRate(rate); }
void BramelInstrument::setTempo(float bpm) { impl->block.setTempo(bpm); }

void BramelInstrument::setHostTempo(double bpm) {
  constexpr auto kFastest = static_cast<double>(std::numeric_limits<float>::max());
  if (std::fabs(bpm) <= kFastest) {
    setTempo(static_cast<float>(bpm));
  }
}

void BramelInstrument::setTransport(bool moves) {
  const std::array<std::uint8_t, 3> message{moves ? cofu::core::kMidiStart : cofu::core::kMidiStop, 0, 0};
  sendMidi(message.data(), message.size(), 0);
}

void BramelInstrument::resume() { impl->block.resume(); }
void BramelInstrument::suspend() { impl->block.suspend(); }
bool BramelInstrument::isActive() const { return impl->block.isActive(); }

// Parameters.

std::uint64_t BramelInstrument::parameterCount() const { return impl->parameters.visibleCount(); }
std::uint64_t BramelInstrument::cachedParameterCount() const { return impl->parameters.cache.count(); }

std::uint64_t BramelInstrument::parameterId(std::uint64_t visibleIndex) const {
  return impl->parameters.idOf(visibleIndex);
}

std::string BramelInstrument::parameterName(std::uint64_t id) const {
  return impl->parameters.cache.fact(id, &ParameterInfo::name);
}

std::string BramelInstrument::parameterDisplay(std::uint64_t id) const { return impl->parameters.cache.display(id); }

std::uint64_t BramelInstrument::parameterSteps(std::uint64_t id) const {
  return mapParameterSteps(id, impl->parameters.cache.fact(id, &ParameterInfo::steps));
}

float BramelInstrument::parameterDefault(std::uint64_t id) const {
  return impl->parameters.cache.fact(id, &ParameterInfo::defaultValue);
}

float BramelInstrument::parameterValue(std::uint64_t id) {
  impl->flushWrites();
  const ParameterCache& cache = impl->parameters.cache;
  return id < cache.count() ? mapValueToHost(id, cache.value(id)) : 0.0F;
}

float BramelInstrument::latestValue(std::uint64_t id) const {
  const ParameterCache& cache = impl->parameters.cache;
  return id < cache.count() ? mapValueToHost(id, cache.latest(id)) : 0.0F;
}

void BramelInstrument::announceParameter(std::uint64_t id, float value) {
  impl->parameters.cache.setComing(id, mapValueFromHost(id, value));
}

std::uint64_t BramelInstrument::parameterInteger(std::uint64_t id) {
  impl->flushWrites();
  return impl->parameters.cache.integer(id);
}

float BramelInstrument::engineParameter(std::uint64_t engineId) const {
  const MainLock lock(impl->core.mainMutex);
  if (!impl->core.processor) {
    return 0.0F;
  }
  const bool isKnown = engineId <= std::numeric_limits<std::uint32_t>::max();
  return isKnown ? impl->core.processor->generator().getParameter(static_cast<std::uint32_t>(engineId)) : -1.0F;
}

void BramelInstrument::setParameter(std::uint64_t id, float value) { impl->parameters.set(id, value); }
void BramelInstrument::setParameters(std::span<const std::uint64_t> ids, std::span<const float> values) {
  impl->parameters.setAll(ids, values);
}
void BramelInstrument::setParameterFromEditor(std::uint64_t id, float value) {
  impl->parameters.setFromEditor(id, value);
}
void BramelInstrument::setParameterInteger(std::uint64_t id, std::uint64_t value) {
  impl->parameters.setInteger(id, value);
}
void BramelInstrument::beginGesture(std::uint64_t id) { impl->parameters.setGesture(id, true); }
void BramelInstrument::endGesture(std::uint64_t id) { impl->parameters.setGesture(id, false); }

// Identity.

std::string BramelInstrument::productName() const {
  return impl->core.processor ? impl->core.processor->instrumentName() : "Error";
}

int BramelInstrument::inputCount() const {
  return impl->core.processor ? impl->core.processor->generator().inputCount() : 0;
}

int BramelInstrument::outputCount() const {
  return impl->core.processor ? impl->core.processor->generator().outputCount() : 0;
}

bool BramelInstrument::isSynth() const {
  const int kind = impl->core.processor ? impl->core.processor->generator().kind() : kSoundGenerator;
  return kind == kSoundGenerator || kind == kOtherSoundGenerator;
}

BramelInstrument::Processor* BramelInstrument::processorHandle() const { return impl->core.processor.get(); }

void BramelInstrument::setControllers(std::map<std::uint8_t, std::uint64_t> ids) {
  const MainLock lock(impl->core.mainMutex);
  if (impl->core.processor != nullptr) {
    impl->core.processor->controller().ccMap.swap(ids);  // The old map is freed after the lock is released.
  }
}

// Keys and properties.

std::uint32_t BramelInstrument::keyState(int note) const { return impl->keys.state(note); }

void BramelInstrument::setKeyState(int note, std::uint32_t state) {
  impl->keys.set(note, state, [this](int changed) { impl->reportKey(changed); });
}

void BramelInstrument::setAllKeyStates(std::uint32_t state) {
  impl->keys.setAll(state, [this](int changed) { impl->reportKey(changed); });
}

BramelInstrument::Property BramelInstrument::property(const std::string& name) const {
  const MainLock lock(impl->core.mainMutex);
  const auto& properties = impl->properties(lock);
  const auto found = properties.find(name);
  return found == properties.end() ? nullptr : copyOf(found->second);
}

void BramelInstrument::setProperty(const std::string& name, const Property& value) {
  const MainLock lock(impl->core.mainMutex);
  impl->properties(lock)[name] = copyOf(value);
}

// Programs and state.

std::uint64_t BramelInstrument::currentProgram() { return impl->programs.currentProgram(); }
std::uint64_t BramelInstrument::currentBank() const { return numberOf(impl->programs.currentBank()); }
std::string BramelInstrument::currentProgramName() { return impl->programs.currentProgramName(); }

std::uint64_t BramelInstrument::programCount(std::uint64_t bank) const {
  return impl->programs.programCount(bankOf(bank));
}

std::string BramelInstrument::programName(std::uint64_t bank, std::uint64_t index) const {
  return impl->programs.programName(bankOf(bank), index);
}

void BramelInstrument::setProgram(std::uint64_t bank, std::uint64_t index, Origin origin) {
  impl->programs.setProgram(bankOf(bank), index, origin);
}

void BramelInstrument::saveProgramAs(std::uint64_t bank, const std::string& name) {
  impl->programs.saveAs(bankOf(bank), name);
}

void BramelInstrument::overwriteProgram() { impl->programs.overwrite(); }

void BramelInstrument::deleteProgram(std::uint64_t bank, std::uint64_t index) {
  impl->programs.remove(bankOf(bank), index);
}

void BramelInstrument::moveProgram(std::uint64_t bank, std::uint64_t from, std::uint64_t to) {
  impl->programs.move(bankOf(bank), from, to);
}

void BramelInstrument::renameCurrentProgram(const std::string& name) { impl->programs.rename(name); }
void BramelInstrument::importPrograms(const std::string& path) { impl->programs.importFrom(path); }
bool BramelInstrument::exportPrograms(const std::string& path) { return impl->programs.exportTo(path); }
bool BramelInstrument::areProgramsWritten() const { return impl->programs.areWritten(); }

std::vector<std::uint8_t> BramelInstrument::getState(std::span<const StateValue> replaced) {
  return impl->programs.getState([&](vimo::ChunkValues& values) {
    for (const StateValue& each : replaced) {
      if (each.id < values.entries.size()) {
        values.entries[static_cast<std::size_t>(each.id)].value = mapValueFromHost(each.id, each.value);
      }
    }
  });
}
bool BramelInstrument::setState(const void* data, std::size_t size) { return impl->programs.setState(data, size); }

// Wiring.

void BramelInstrument::setHostCallback(std::weak_ptr<BramelInstrumentHostCallback> callback) {
  const MainLock lock(impl->core.mainMutex);
  impl->core.hostCallback = std::move(callback);
}

void BramelInstrument::setUICallback(std::weak_ptr<BramelInstrumentUICallback> callback) {
  const MainLock lock(impl->core.mainMutex);
  impl->core.uiCallback = std::move(callback);
}

void BramelInstrument::setHostKind(int kind) {
  const MainLock lock(impl->core.mainMutex);
  impl->hostKind = kind;
}

void BramelInstrument::setHostVendor(const std::string& vendor) {
  const MainLock lock(impl->core.mainMutex);
  impl->hostVendor = vendor;
}

void BramelInstrument::setTooltipProvider(std::unique_ptr<tooltip::BramelTooltipProvider> provider) {
  impl->parameters.cache.setTooltipProvider(std::move(provider));
}

}  // namespace tesh::bramel::vst
