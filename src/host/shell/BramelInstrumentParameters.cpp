// Parameters: the routes by which values come in, and what is read of them.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <limits>

#include "core/RealTimeLock.h"
#include "host/shell/BramelInstrumentImpl.h"

namespace tesh::bramel::vst {
namespace {

/// False for what is not a number.
bool isNormalised(float value) { return value >= 0.0F && value <= 1.0F; }

}  // namespace

void BramelInstrument::Impl::post(std::uint64_t id, float value, const vimo::SourceId& source) {
  if (id >= parameterMap.count() || !isNormalised(value)) {
    return;
  }
  mail.post({source, vimo::ProcessorEventTag::floatValue, id, value, 0});
  cache.noteValue(id, value);
}

void BramelInstrument::Impl::setParameter(std::uint64_t id, float value) {
  post(id, owner.mapValueFromHost(id, value), hostSource);
}

void BramelInstrument::Impl::setParameterFromEditor(std::uint64_t id, float value) {
  const auto index = parameterMap.visibleIndexOf(id);
  if (!index) {
    post(id, value, editorSource);
    return;
  }
  if (!isNormalised(value)) {
    return;
  }
  const bool isInGesture = parameterMap.isGestureOpen(*index);
  tellHost([&](BramelInstrumentHostCallback& host) {
    if (!isInGesture) {
      host.beginEdit(*index);
    }
    host.automate(*index, value);
    if (!isInGesture) {
      host.endEdit(*index);
    }
  });
}

std::uint64_t BramelInstrument::parameterCount() const {
  const std::lock_guard lock(impl->mainMutex);
  return impl->parameterMap.visibleCount();
}

std::uint64_t BramelInstrument::cachedParameterCount() const { return impl->cache.count(); }

std::uint64_t BramelInstrument::parameterId(std::uint64_t visibleIndex) const {
  const cofu::core::RealTimeLock lock(impl->mainMutex);
  return impl->parameterMap.idOf(visibleIndex).value_or(kNoParameter);
}

std::string BramelInstrument::parameterName(std::uint64_t id) const {
  return impl->cache.read(id, &ParameterInfo::name);
}

std::string BramelInstrument::parameterDisplay(std::uint64_t id) const { return impl->cache.display(id); }

std::uint64_t BramelInstrument::parameterSteps(std::uint64_t id) const {
  return mapParameterSteps(id, impl->cache.read(id, &ParameterInfo::steps));
}

float BramelInstrument::parameterDefault(std::uint64_t id) const {
  return impl->cache.read(id, &ParameterInfo::defaultValue);
}

float BramelInstrument::parameterValue(std::uint64_t id) {
  {
    const std::lock_guard lock(impl->mainMutex);
    impl->flushMail();
  }
  return id < impl->cache.count() ? mapValueToHost(id, impl->cache.read(id, &ParameterInfo::value)) : 0.0F;
}

std::uint64_t BramelInstrument::parameterInteger(std::uint64_t id) {
  {
    const std::lock_guard lock(impl->mainMutex);
    impl->flushMail();
  }
  return impl->cache.read(id, &ParameterInfo::integerValue);
}

float BramelInstrument::engineParameter(std::uint64_t engineId) const {
  const std::lock_guard lock(impl->mainMutex);
  if (!impl->processor) {
    return 0.0F;
  }
  const bool isKnown = engineId <= std::numeric_limits<std::uint32_t>::max();
  return isKnown ? impl->processor->generator().getParameter(static_cast<std::uint32_t>(engineId)) : -1.0F;
}

void BramelInstrument::setParameter(std::uint64_t id, float value) {
  const cofu::core::RealTimeLock lock(impl->mainMutex);
  impl->setParameter(id, value);
}

void BramelInstrument::setParameterFromEditor(std::uint64_t id, float value) {
  const std::lock_guard lock(impl->mainMutex);
  impl->setParameterFromEditor(id, value);
}

void BramelInstrument::setParameterInteger(std::uint64_t id, std::uint64_t value) {
  const std::lock_guard lock(impl->mainMutex);
  if (id >= impl->parameterMap.count()) {
    return;
  }
  impl->mail.post({impl->editorSource, vimo::ProcessorEventTag::integerValue, id, 0.0F, value});
  impl->cache.noteValue(id, static_cast<float>(value));
}

void BramelInstrument::beginGesture(std::uint64_t id) {
  const std::lock_guard lock(impl->mainMutex);
  if (const auto index = impl->parameterMap.visibleIndexOf(id)) {
    impl->parameterMap.setGestureOpen(*index, true);
    impl->tellHost([&](BramelInstrumentHostCallback& host) { host.beginEdit(*index); });
  }
}

void BramelInstrument::endGesture(std::uint64_t id) {
  const std::lock_guard lock(impl->mainMutex);
  if (const auto index = impl->parameterMap.visibleIndexOf(id)) {
    impl->parameterMap.setGestureOpen(*index, false);
    impl->tellHost([&](BramelInstrumentHostCallback& host) { host.endEdit(*index); });
  }
}

}  // namespace tesh::bramel::vst
