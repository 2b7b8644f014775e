// Builds the short names of the engine's parameters, and looks names up.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "EngineNames.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>

#include "RenderError.h"
#include "core/Text.h"
#include "effects/EffectTable.h"
#include "parameters/ParameterIds.h"
#include "viewmodels/texts/EditScreenEffects.h"
#include "viewmodels/texts/PanelMacros.h"

namespace sivray::render {
namespace {

namespace engine = tesh::bramel::plugin::sivray;

constexpr auto kPadGroups = static_cast<std::uint32_t>(tesh::bramel::panel::kPads);
constexpr std::uint32_t kWaveIndex = 0;
constexpr std::uint32_t kEffectType = engine::parameterId(engine::kEffectGroup, 0);
constexpr std::uint32_t kMaster = engine::parameterId(engine::kMasterGroup, 0);
constexpr std::array<const char*, 4> kEffectNames{"type", "switch", "edit1", "edit2"};

bool choosesWave(const EngineParameter& parameter) {
  return engine::parameterGroup(parameter.id) < kPadGroups && engine::parameterIndex(parameter.id) == kWaveIndex;
}

/// Returns the name and range of an id; the name is empty if the id is not in use.
EngineParameter describe(const tesh::vimo::Generator<float>& generator, std::uint32_t id) {
  tesh::vimo::GeneratorParameterInfo info;
  if (!generator.getParameterInfo(id, info) || !(info.step > 0.0F)) {
    return {};
  }
  return {info.name.data(), id, static_cast<std::int32_t>(std::lround(1.0F / info.step))};
}

/// Returns the name without its group number: "Punch" for "003: Punch".
std::string rowName(const std::string& engineName) {
  const std::size_t colon = engineName.find(": ");
  return colon == std::string::npos ? std::string() : engineName.substr(colon + 2);
}

}  // namespace

std::int32_t engineInteger(const EngineParameter& parameter, float value) {
  const float steps = static_cast<float>(parameter.range) * value;
  return static_cast<std::int32_t>(steps + 0.5F);  // NOLINT(bugprone-incorrect-roundings): the engine's own rounding.
}

float engineValue(const EngineParameter& parameter, std::int32_t integer) {
  return parameter.range > 0 ? static_cast<float>(integer) / static_cast<float>(parameter.range) : 0.0F;
}

std::string plainName(const std::string& text) {
  std::string plain;
  for (const char c : text) {
    if (c != ' ' && c != '-' && c != '_') {
      plain += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
  }
  return plain;
}

EngineNames::EngineNames(const tesh::vimo::Generator<float>& generator, const tesh::vimo::SampleLibrary& library) {
  for (std::uint32_t id = 0; id < engine::parameterId(kPadGroups, 0); ++id) {
    const EngineParameter parameter = describe(generator, id);
    if (const std::string row = rowName(parameter.name); !row.empty()) {
      const std::uint32_t pad = engine::parameterGroup(id) + 1;
      parameters.push_back({"pad" + std::to_string(pad) + "." + plainName(row), id, parameter.range});
    }
  }
  for (std::uint32_t i = 0; i < kEffectNames.size(); ++i) {
    parameters.push_back(
        {std::string("fx.") + kEffectNames[i], kEffectType + i, describe(generator, kEffectType + i).range});
  }
  parameters.push_back({"master", kMaster, describe(generator, kMaster).range});

  for (std::int32_t flat = 0; flat < library.waveCount(); ++flat) {
    allWaves.push_back({library.waveId(flat), library.waveName(flat), library.waveCategory(flat)});
    waves.emplace(plainName(allWaves.back().name), allWaves.back().number);
  }
  namespace fx = tesh::bramel::plugin::sivray::effects;
  for (int type = 0; type < fx::kEffectTypeCount; ++type) {
    effects.emplace(plainName(fx::effectTypeName(type)), type);
  }
  for (const tesh::bramel::EditScreenEffect& effect : tesh::bramel::kEditScreenEffects) {
    effects.emplace(plainName(effect.name), effect.typeId);
  }
}

const EngineParameter* EngineNames::find(const std::string& text) const {
  const auto found = std::ranges::find(parameters, plainName(text), &EngineParameter::name);
  return found == parameters.end() ? nullptr : &*found;
}

const EngineParameter& EngineNames::parameter(const std::string& text) const {
  const EngineParameter* const found = find(text);
  if (found == nullptr) {
    throw RenderError("there is no engine parameter '" + text +
                      "'; names look like pad3.punch, with pads from 1 to 8, fx.edit1 or master: see "
                      "--list-parameters");
  }
  return *found;
}

std::int32_t EngineNames::integerOf(const EngineParameter& parameter, const std::string& text) const {
  const bool isWave = choosesWave(parameter);
  const bool isEffect = parameter.id == kEffectType;
  if (isWave || isEffect) {
    const auto& names = isWave ? waves : effects;
    if (const auto found = names.find(plainName(text)); found != names.end()) {
      return found->second;
    }
  }
  const auto number = tesh::cofu::core::readNumber<std::int32_t>(text);
  if (number && *number >= 0 && *number <= parameter.range) {
    return *number;
  }
  if (isWave || isEffect) {
    throw RenderError(std::string("there is no ") + (isWave ? "wave" : "effect") + " '" + text + "'; see --list-" +
                      (isWave ? "waves" : "effects"));
  }
  throw RenderError(parameter.name + " takes a whole number from 0 to " + std::to_string(parameter.range) + ", not '" +
                    text + "'");
}

}  // namespace sivray::render
