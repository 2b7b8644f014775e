// Builds the engine, renders a block, and finds parameters by their ids.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/DrumEngine.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "core/Truncate.h"

namespace tesh::bramel::plugin::sivray {
namespace {

constexpr int heldPads(int padCount) { return std::clamp(padCount, 1, kMaxPads); }

/// The integer for a normalised value, rounded in single precision. NaN gives the minimum; values far outside 0 to 1
/// are limited so that the result fits an integer.
std::int32_t integerAt(const ParameterRow& row, float value) {
  constexpr float kLimit = 1073741824.0F;
  const float steps = static_cast<float>(row.maximum - row.minimum) * value + 0.5F;
  return cofu::core::truncateToInt(std::clamp(steps, -kLimit, kLimit)) + row.minimum;
}

void put(const StereoOut& out, BusSamples bus, int frames) {
  for (int frame = 0; out.isConnected() && frame < frames; ++frame) {
    out.left[frame] = static_cast<float>(bus.left[frame]) * kFloatScale;
    out.right[frame] = static_cast<float>(bus.right[frame]) * kFloatScale;
  }
}

}  // namespace

bool EngineOuts::isConnected() const {
  return effect.isConnected() ||
         std::any_of(pads.begin(), pads.end(), [](const StereoOut& pad) { return pad.isConnected(); });
}

EngineOuts EngineOuts::from(int frame) const {
  EngineOuts moved{pads, effect.from(frame)};
  for (StereoOut& pad : moved.pads) {
    pad = pad.from(frame);
  }
  return moved;
}

DrumEngine::DrumEngine(PcmFile& file, int padCount, std::size_t slotFrames, WaveLoading loading)
    : core(file, heldPads(padCount), slotFrames),
      allocator(core, heldPads(padCount)),
      buffers(new Buffers),
      globalGroup(effect) {
  const auto pads = static_cast<std::uint32_t>(heldPads(padCount));
  for (std::uint32_t pad = 0; pad < pads; ++pad) {
    addPad(pad);
  }
  if (loading == WaveLoading::atOnce) {
    loadWaves();
  }
  groups.set(kEffectGroup, &effect.parameter());
  groups.set(kMasterGroup, &masterGroup);
  for (std::uint32_t pad = 0; pad < pads; ++pad) {
    meterGroups.push_back(std::make_unique<ReadParameterDispatcher>(allocator, pad));
    groups.set(kFirstMeterGroup + pad, meterGroups.back().get());
  }
  groups.set(kGlobalGroup, &globalGroup);
  core.makeVoices(allocator);
  programBank = std::make_unique<ProgramBank>(bankGroups());
}

void DrumEngine::addPad(std::uint32_t pad) {
  padGroups.push_back(std::make_unique<Q57214DrumParameterInfo>(core, static_cast<int>(pad)));
  Q57214DrumParameterInfo& group = *padGroups.back();
  allocator.setPad(static_cast<int>(pad), &group.values());
  groups.set(pad, &group);
  // By default, pad n plays wave n and is in exclusive group n; group 0, the first pad's, means none.
  const auto own = static_cast<std::int32_t>(pad);
  for (const PadParameter parameter : {PadParameter::wave, PadParameter::exAssign}) {
    auto value = own;
    group.setValue(static_cast<int>(parameter), &value);
  }
}

void DrumEngine::loadWaves() {
  for (const auto& group : padGroups) {
    group->loadWave();
  }
  core.waves().finish();
}

ProgramBankGroups DrumEngine::bankGroups() {
  ProgramBankGroups saved;
  std::transform(padGroups.begin(), padGroups.end(), saved.pads.begin(), [](const auto& group) { return group.get(); });
  saved.effect = &effect.parameter();
  saved.master = &masterGroup;
  return saved;
}

bool DrumEngine::render(float* left, float* right, int frames, const EngineOuts* outs) {
  // Must run for 0 frames too: the effect then applies its pending type, and finished voices are released.
  bool isSilent = renderBlock(left, right, std::clamp(frames, 0, kMaxFrames), outs);
  for (int done = kMaxFrames; done < frames; done += kMaxFrames) {
    const EngineOuts later = outs == nullptr ? EngineOuts{} : outs->from(done);
    isSilent &=
        renderBlock(left + done, right + done, std::min(frames - done, kMaxFrames), outs == nullptr ? nullptr : &later);
  }
  return isSilent;
}

bool DrumEngine::renderBlock(float* left, float* right, int frames, const EngineOuts* outs) {
  if (allocator.activeVoiceCount() == 0 && effect.skip(frames)) {
    allocator.skip(frames);
    masterGroup.skip(frames);
    std::fill_n(left, frames, 0.0F);
    std::fill_n(right, frames, 0.0F);
    if (outs != nullptr) {
      PadTaps::clear(outs->pads, frames);
      outs->effect.clear(frames);
    }
    return true;
  }
  const BusWords buses{buffers->dry.data(), buffers->effect.data()};
  const BusSamples wet{buffers->wetLeft.data(), buffers->wetRight.data()};
  const bool isSounding = allocator.activeVoiceCount() > 0;
  const bool feedsEffect = allocator.render(buses, frames, outs == nullptr ? nullptr : &outs->pads);
  if (isSounding && !feedsEffect && effect.skip(frames)) {
    masterGroup.render(buses.dry, {}, {left, right}, frames);
    if (outs != nullptr) {
      outs->effect.clear(frames);
    }
    return false;
  }
  if (feedsEffect) {
    splitChannels(buses.effect, wet, frames);
  } else {
    std::fill_n(wet.left, frames, std::int16_t{0});
    std::fill_n(wet.right, frames, std::int16_t{0});
  }
  effects::StereoBlock block{wet.left, wet.right};
  effect.process(block, frames);
  if (outs != nullptr) {
    put(outs->effect, wet, frames);
  }
  masterGroup.render(buses.dry, wet, {left, right}, frames);
  return false;
}

void DrumEngine::resetSound() {
  allocator.resetVoices();
  effect.reset();
}

DrumEngine::Place DrumEngine::placeOf(std::uint32_t id) const {
  IParameter* const group = groups.groupOf(id);
  const auto index = static_cast<int>(parameterIndex(id));
  if (group == nullptr || index >= group->count()) {
    return {};
  }
  const ParameterRow* const row = group->info(index);
  return row == nullptr ? Place{} : Place{group, row, index};
}

void DrumEngine::setParameter(std::uint32_t id, float value) {
  const Place place = placeOf(id);
  if (place.group != nullptr) {
    std::int32_t integer = integerAt(*place.row, value);
    place.group->setValue(place.index, &integer);
  }
}

bool DrumEngine::readsFile(std::uint32_t id) const {
  return parameterGroup(id) < padGroups.size() && parameterIndex(id) == static_cast<std::uint32_t>(PadParameter::wave);
}

void DrumEngine::prepare(std::uint32_t id, float value) {
  if (readsFile(id)) {
    padGroups[parameterGroup(id)]->fetchWave(integerAt(*placeOf(id).row, value));
  }
}

float DrumEngine::getParameter(std::uint32_t id) const {
  const Place place = placeOf(id);
  if (place.group == nullptr) {
    return -1.0F;
  }
  const std::int32_t range = place.row->maximum - place.row->minimum;
  if (range == 0) {
    return 0.0F;
  }
  return static_cast<float>(place.group->value(place.index) - place.row->minimum) / static_cast<float>(range);
}

std::int32_t DrumEngine::parameterRange(std::uint32_t id) const {
  const Place place = placeOf(id);
  return place.group == nullptr ? -1 : place.row->maximum - place.row->minimum;
}

std::string DrumEngine::parameterName(std::uint32_t id) const {
  IParameter* const group = groups.groupOf(id);
  if (group == nullptr) {
    return {};
  }
  std::array<char, 8> digits{};
  const std::uint32_t number = parameterGroup(id);
  std::snprintf(digits.data(), digits.size(), "%03u", number == kEffectGroup ? 0U : number);
  std::string name = std::string(digits.data()) + ": ";
  const auto index = static_cast<int>(parameterIndex(id));
  if (index < group->count()) {
    name += group->info(index)->name;
  }
  return name;
}

std::string DrumEngine::parameterDisplay(std::uint32_t id, float value) const {
  const Place place = placeOf(id);
  return place.group == nullptr ? std::string() : place.group->format(place.index, integerAt(*place.row, value));
}

std::string DrumEngine::parameterDisplay(std::uint32_t id) const {
  const Place place = placeOf(id);
  return place.group == nullptr ? std::string() : place.group->format(place.index, place.group->value(place.index));
}

}  // namespace tesh::bramel::plugin::sivray
