// Turns a value into a write for the next block, or into a gesture that the host records.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/shell/ShellParameters.h"

#include "core/Uuid.h"

namespace tesh::bramel::vst {
namespace {

/// False for NaN.
bool isNormalised(float value) { return value >= 0.0F && value <= 1.0F; }

}  // namespace

ShellParameters::ShellParameters(ShellCore& shellCore)
    : core(shellCore), editorSource(cofu::core::makeUuid()), hostSource(cofu::core::makeUuid()) {
  if (!core.processor) {
    return;
  }
  const auto& controller = core.processor->controller();
  map.build(controller.macroCount(), [&](std::uint64_t id) { return controller.isHidden(id); });
  waiting.resize(static_cast<std::size_t>(controller.macroCount()));
  cache.fill(controller);
}

std::uint64_t ShellParameters::visibleCount() const { return map.visibleCount(); }

std::uint64_t ShellParameters::idOf(std::uint64_t visibleIndex) const {
  return map.idOf(visibleIndex).value_or(BramelInstrument::kNoParameter);
}

void ShellParameters::readAhead(std::uint64_t id, float value) const {
  if (isNormalised(value)) {
    core.readAhead([id, value](const BramelInstrument::Processor& processor, vimo::ComingValues& coming,
                               const MainLock&) { processor.controller().addReadsOfMacro(id, value, coming); });
  }
}

void ShellParameters::post(std::uint64_t id, float value, const vimo::SourceId& source, const MainLock& lock) {
  if (id >= map.count() || !isNormalised(value)) {
    return;
  }
  waiting.post({source, vimo::ProcessorEventTag::floatValue, id, value, 0}, lock);
  cache.noteValue(id, value);
}

void ShellParameters::set(std::uint64_t id, float value) {
  // May wait for the disk, but does nothing on the audio thread.
  cofu::core::mayWait([&] { readAhead(id, core.owner.mapValueFromHost(id, value)); });
  const MainLock lock(core.mainMutex);
  set(id, value, lock);
}

void ShellParameters::set(std::uint64_t id, float value, const MainLock& lock) {
  post(id, core.owner.mapValueFromHost(id, value), hostSource, lock);
}

void ShellParameters::setAll(std::span<const std::uint64_t> ids, std::span<const float> values) {
  const MainLock lock(core.mainMutex);
  cache.noteAll([&](auto note) {
    for (std::size_t index = 0; index < ids.size(); ++index) {
      const float value = core.owner.mapValueFromHost(ids[index], values[index]);
      if (ids[index] < map.count() && isNormalised(value)) {
        waiting.post({hostSource, vimo::ProcessorEventTag::floatValue, ids[index], value, 0}, lock);
        note(ids[index], value);
      }
    }
  });
}

// The host is called without our lock: in this call it may wait for another of its threads that asks us for a value.

void ShellParameters::setFromEditor(std::uint64_t id, float value) {
  readAhead(id, value);
  MainLock lock(core.mainMutex);
  const auto index = map.visibleIndexOf(id);
  if (!index) {
    post(id, value, editorSource, lock);
    return;
  }
  if (!isNormalised(value)) {
    return;
  }
  const bool isInGesture = map.isGestureOpen(*index);
  lock.unlock();
  core.tellHost([&](BramelInstrumentHostCallback& host) {
    if (!isInGesture) {
      host.beginEdit(*index);
    }
    host.automate(*index, value);
    if (!isInGesture) {
      host.endEdit(*index);
    }
  });
}

void ShellParameters::setInteger(std::uint64_t id, std::uint64_t value) {
  const MainLock lock(core.mainMutex);
  if (id < map.count()) {
    waiting.post({editorSource, vimo::ProcessorEventTag::integerValue, id, 0.0F, value}, lock);
    cache.noteInteger(id, value);
  }
}

void ShellParameters::setGesture(std::uint64_t id, bool isOpen) {
  MainLock lock(core.mainMutex);
  const auto index = map.visibleIndexOf(id);
  if (!index) {
    return;
  }
  map.setGestureOpen(*index, isOpen);
  lock.unlock();
  core.tellHost([&](BramelInstrumentHostCallback& host) {
    if (isOpen) {
      host.beginEdit(*index);
    } else {
      host.endEdit(*index);
    }
  });
}

}  // namespace tesh::bramel::vst
