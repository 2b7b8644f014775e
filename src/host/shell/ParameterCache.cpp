// Filling and reading of the copy.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/shell/ParameterCache.h"

namespace tesh::bramel::vst {

void ParameterCache::fill(const Controller& controller) {
  parameters.resize(static_cast<std::size_t>(controller.macroCount()));
  values = std::make_unique<Value[]>(parameters.size());
  for (std::size_t id = 0; id < parameters.size(); ++id) {
    parameters[id] = {controller.macroAt(id)->name(), controller.stepCount(id), controller.macroDefault(id)};
  }
  refresh(controller);
}

void ParameterCache::refresh(const Controller& controller) {
  for (std::size_t id = 0; id < parameters.size(); ++id) {
    values[id].setBoth(controller.macroValue(id));
    values[id].integer.store(controller.macroObject(id), std::memory_order_relaxed);
  }
  refreshTexts(controller);
}

void ParameterCache::refreshTexts(const Controller& controller) {
  const cofu::core::RealTimeLock lock(mutex);
  for (std::size_t id = 0; tooltips && id < parameters.size(); ++id) {
    tooltips->setValue(id, controller.macroValue(id));
  }
}

void ParameterCache::store(const ChangeList& changes) {
  changes.forEachWrite([this](const vimo::ProcessorEvent& event) {
    if (event.parameterId >= count()) {
      return;
    }
    Value& value = values[static_cast<std::size_t>(event.parameterId)];
    if (event.tag == vimo::ProcessorEventTag::floatValue) {
      value.setBoth(event.value);
    } else {
      value.integer.store(event.integer, std::memory_order_relaxed);
    }
  });
}

void ParameterCache::setTooltipProvider(std::unique_ptr<tooltip::BramelTooltipProvider> provider) {
  const std::lock_guard lock(mutex);
  tooltips = std::move(provider);
  if (!tooltips) {
    return;
  }
  tooltips->reserve(parameters.size());
  for (std::size_t id = 0; id < parameters.size(); ++id) {
    tooltips->setValue(id, value(id));
  }
}

std::string ParameterCache::display(std::uint64_t id) const {
  const std::lock_guard lock(mutex);
  return tooltips && id < parameters.size() ? tooltips->getParameterText(id) : std::string();
}

void ParameterCache::noteValue(std::uint64_t id, float value) {
  setComing(id, value);
  const cofu::core::RealTimeLock lock(mutex);
  noteText(id, value);
}

void ParameterCache::noteInteger(std::uint64_t id, std::uint64_t value) {
  const std::lock_guard lock(mutex);
  noteText(id, static_cast<float>(value));
}

void ParameterCache::noteText(std::uint64_t id, float value) {
  if (tooltips && id < parameters.size()) {
    tooltips->setValue(id, value);
  }
}

}  // namespace tesh::bramel::vst
