// Filling and reading of the copy, each under its lock.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/shell/ParameterCache.h"

namespace tesh::bramel::vst {

void ParameterCache::fill(const Controller& controller) {
  const std::lock_guard lock(mutex);
  parameters.resize(static_cast<std::size_t>(controller.macroCount()));
  for (std::size_t id = 0; id < parameters.size(); ++id) {
    parameters[id].name = controller.macroAt(id)->name();
    parameters[id].steps = controller.stepCount(id);
    parameters[id].defaultValue = controller.macroDefault(id);
  }
  refresh(controller);
}

void ParameterCache::refresh(const Controller& controller) {
  const cofu::core::RealTimeLock lock(mutex);
  for (std::size_t id = 0; id < parameters.size(); ++id) {
    parameters[id].value = controller.macroValue(id);
    parameters[id].integerValue = controller.macroObject(id);
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
  const cofu::core::RealTimeLock lock(mutex);
  changes.forEachWrite([this](const vimo::ProcessorEvent& event) {
    if (event.parameterId >= parameters.size()) {
      return;
    }
    ParameterInfo& parameter = parameters[static_cast<std::size_t>(event.parameterId)];
    if (event.tag == vimo::ProcessorEventTag::floatValue) {
      parameter.value = event.value;
    } else {
      parameter.integerValue = event.integer;
    }
  });
}

void ParameterCache::readValues(std::span<const std::uint64_t> ids, std::span<float> values) const {
  const cofu::core::RealTimeLock lock(mutex);
  for (std::size_t index = 0; index < ids.size(); ++index) {
    const bool isKnown = ids[index] < parameters.size();
    values[index] = isKnown ? parameters[static_cast<std::size_t>(ids[index])].value : 0.0F;
  }
}

void ParameterCache::setTooltipProvider(std::unique_ptr<tooltip::BramelTooltipProvider> provider) {
  const std::lock_guard lock(mutex);
  tooltips = std::move(provider);
  if (!tooltips) {
    return;
  }
  tooltips->reserve(parameters.size());
  for (std::size_t id = 0; id < parameters.size(); ++id) {
    tooltips->setValue(id, parameters[id].value);
  }
}

std::string ParameterCache::display(std::uint64_t id) const {
  const std::lock_guard lock(mutex);
  return tooltips && id < parameters.size() ? tooltips->getParameterText(id) : std::string();
}

void ParameterCache::noteValue(std::uint64_t id, float value) {
  const cofu::core::RealTimeLock lock(mutex);
  noteText(id, value);
}

void ParameterCache::noteText(std::uint64_t id, float value) {
  if (tooltips && id < parameters.size()) {
    tooltips->setValue(id, value);
  }
}

}  // namespace tesh::bramel::vst
