// Construction, time, identity, keys and wiring.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/shell/BramelInstrument.h"

#include <cmath>

#include "core/RealTimeLock.h"
#include "core/Uuid.h"
#include "host/shell/BramelInstrumentImpl.h"

namespace tesh::bramel::vst {
namespace {

constexpr std::size_t kMailNodes = 256;
/// Program changes wait in a queue of eight, whose events may join the MIDI of a block.
constexpr std::size_t kQueuedPrograms = 8;
constexpr std::size_t kMidiOutRoom = 256;
/// Kinds of generators that take notes.
constexpr int kSoundGenerator = 0;
constexpr int kOtherSoundGenerator = 5;

bool isKey(int note) { return note >= 0 && note < kKeys; }

}  // namespace

BramelInstrument::Impl::Impl(BramelInstrument& instrument, std::unique_ptr<Processor> engine)
    : owner(instrument),
      processor(std::move(engine)),
      mail(std::make_shared<cofu::core::impl::MailServer<vimo::ProcessorEvent>>(kMailNodes)),
      converter(*this),
      editorSource(cofu::core::makeUuid()),
      hostSource(cofu::core::makeUuid()) {
  midiIn.reserve(kMostMidiIn + kQueuedPrograms);
  midiOut.reserve(kMidiOutRoom);
  converter.reset();
  converter.setSampleRate(kEngineRate);
  keyStates.fill(kKeyAtRest);
  if (!processor) {
    return;
  }
  processor->editor = this;
  takesInput = processor->generator().inputCount() != 0;
  processor->sampleRate = kEngineRate;
  processor->generator().setSampleRate(kEngineRate);
  const auto& controller = processor->controller();
  parameterMap.build(controller.macroCount(), [&](std::uint64_t id) { return controller.isHidden(id); });
  latest.resize(static_cast<std::size_t>(controller.macroCount()));
  processor->generator().tempoChanged(tempo);
  cache.fill(controller);
}

void BramelInstrument::Impl::restart() {
  midiIn.clear();
  converter.reset();
  converter.setSampleRate(converter.sampleRate());
}

BramelInstrument::BramelInstrument(std::unique_ptr<Processor> processor)
    : impl(std::make_unique<Impl>(*this, std::move(processor))) {}

BramelInstrument::~BramelInstrument() = default;

std::uint64_t BramelInstrument::mapParameterSteps(std::uint64_t, std::uint64_t steps) const { return steps; }
float BramelInstrument::mapValueToHost(std::uint64_t, float value) const { return value; }
float BramelInstrument::mapValueFromHost(std::uint64_t, float value) const { return value; }

void BramelInstrument::process(float** inputs, float** outputs, std::int32_t frames) {
  impl->process(inputs, outputs, frames);
}

void BramelInstrument::sendMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) {
  const cofu::core::RealTimeLock lock(impl->mainMutex);
  impl->sendMidi(data, size, deltaFrames);
}

void BramelInstrument::sendKeyboardMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) {
  const std::lock_guard lock(impl->mainMutex);
  impl->sendKeyboardMidi(data, size, deltaFrames);
}

void BramelInstrument::setSampleRate(float rate) {
  if (!std::isfinite(rate) || rate <= 0.0F) {
    return;
  }
  const std::lock_guard lock(impl->mainMutex);
  impl->hostSampleRate = rate;
  impl->converter.setSampleRate(rate);
}

void BramelInstrument::setTempo(float bpm) {
  const cofu::core::RealTimeLock lock(impl->mainMutex);
  if (!std::isfinite(bpm) || bpm == impl->tempo) {
    return;
  }
  impl->tempo = bpm;
  if (impl->processor) {
    impl->processor->generator().tempoChanged(bpm);
  }
}

void BramelInstrument::resume() {
  const std::lock_guard lock(impl->mainMutex);
  if (!impl->processor) {
    return;
  }
  impl->active = true;
  impl->restart();
  impl->processor->generator().activate();
}

void BramelInstrument::suspend() {
  const std::lock_guard lock(impl->mainMutex);
  if (!impl->processor) {
    return;
  }
  impl->processor->generator().deactivate();
  impl->active = false;
}

bool BramelInstrument::isActive() const {
  const std::lock_guard lock(impl->mainMutex);
  return impl->active;
}

std::string BramelInstrument::productName() const {
  return impl->processor ? impl->processor->instrumentName() : "Error";
}

int BramelInstrument::inputCount() const { return impl->processor ? impl->processor->generator().inputCount() : 0; }

int BramelInstrument::outputCount() const { return impl->processor ? impl->processor->generator().outputCount() : 0; }

bool BramelInstrument::isSynth() const {
  const int kind = impl->processor ? impl->processor->generator().kind() : kSoundGenerator;
  return kind == kSoundGenerator || kind == kOtherSoundGenerator;
}

BramelInstrument::Processor* BramelInstrument::processorHandle() const { return impl->processor.get(); }

std::uint32_t BramelInstrument::keyState(int note) const {
  const std::lock_guard lock(impl->keyMutex);
  return isKey(note) ? impl->keyStates[static_cast<std::size_t>(note)] : 0;
}

void BramelInstrument::setKeyState(int note, std::uint32_t state) {
  const std::lock_guard lock(impl->keyMutex);
  if (isKey(note)) {
    impl->keyStates[static_cast<std::size_t>(note)] = state;
    impl->tellHost([note](BramelInstrumentHostCallback& host) { host.keyStateChanged(note); });
  }
}

void BramelInstrument::setAllKeyStates(std::uint32_t state) {
  const std::lock_guard lock(impl->keyMutex);
  for (int note = 0; note < kKeys; ++note) {
    setKeyState(note, state);
  }
}

BramelInstrument::Property BramelInstrument::property(const std::string& name) const {
  const std::lock_guard lock(impl->mainMutex);
  const auto found = impl->properties.find(name);
  return found == impl->properties.end() ? nullptr : copyOf(found->second);
}

void BramelInstrument::setProperty(const std::string& name, const Property& value) {
  const std::lock_guard lock(impl->mainMutex);
  impl->properties[name] = copyOf(value);
}

void BramelInstrument::setHostCallback(std::weak_ptr<BramelInstrumentHostCallback> callback) {
  const std::lock_guard lock(impl->mainMutex);
  impl->hostCallback = std::move(callback);
}

void BramelInstrument::setUICallback(std::weak_ptr<BramelInstrumentUICallback> callback) {
  const std::lock_guard lock(impl->mainMutex);
  impl->uiCallback = std::move(callback);
}

void BramelInstrument::setHostKind(int kind) {
  const std::lock_guard lock(impl->mainMutex);
  impl->hostKind = kind;
}

void BramelInstrument::setHostVendor(const std::string& vendor) {
  const std::lock_guard lock(impl->mainMutex);
  impl->hostVendor = vendor;
}

void BramelInstrument::setTooltipProvider(std::unique_ptr<tooltip::BramelTooltipProvider> provider) {
  impl->cache.setTooltipProvider(std::move(provider));
}

}  // namespace tesh::bramel::vst
