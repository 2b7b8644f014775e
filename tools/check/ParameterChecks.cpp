// Checks of the host's parameters: values read back as written, every value has a text, and no value harms the sound.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <cmath>
#include <limits>

#include "check/Check.h"
#include "check/Scene.h"

namespace sivray::check {
namespace {

using hosting::HostedPlugin;

int wrongEnds(HostedPlugin& host, int index, const CheckSettings& settings) {
  const float start = host.parameter(index);
  int wrong = start >= 0.0F && start <= 1.0F && !host.parameterName(index).empty() ? 0 : 1;
  for (const float value : {0.0F, 1.0F, 0.5F, start}) {
    host.setParameter(index, value);
    wrong += host.parameter(index) == host.settable(index, value) ? 0 : 1;
    wrong += host.parameterText(index).empty() ? 1 : 0;
  }
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  if (!settings.isVst2()) {
    return wrong;  // Their host keeps such a value itself; another check tests the effect.
  }
  for (const float value : {-0.5F, 1.5F, kInfinity, -kInfinity, std::numeric_limits<float>::quiet_NaN()}) {
    host.setParameter(index, value);
    wrong += host.parameter(index) == start ? 0 : 1;
  }
  return wrong;
}

Verdict endsAndTexts(const CheckSettings& settings) {
  const auto library = settings.load();
  const auto host = library->makeInstance();
  settle(*host);
  int wrong = 0;
  for (int index = 0; index < host->parameterCount(); ++index) {
    wrong += wrongEnds(*host, index, settings);
  }
  return verdict(wrong == 0 && host->parameterCount() > 0, "%d parameters, %d faults", host->parameterCount(), wrong);
}

Verdict randomSets(const CheckSettings& settings) {
  const auto library = settings.load();
  const auto host = library->makeInstance();
  Random random(71);
  SoundFacts facts;
  int lost = 0;
  const int sets = settings.count(10, 50);
  std::vector<float> values(static_cast<std::size_t>(host->parameterCount()));
  for (int set = 0; set < 2 * sets; ++set) {
    for (int index = 0; index < host->parameterCount(); ++index) {
      float& value = values[static_cast<std::size_t>(index)];
      value = set % 2 == 0 ? random.unit() : static_cast<float>(random.below(2));
      host->setParameter(index, value);
    }
    const int frames = 5 * kPlainBlock;
    facts.add(
        play(*host, hitsOver(frames, 300U + static_cast<std::uint32_t>(set), 400), frames, blocksOf(kPlainBlock)));
    for (int index = 0; index < host->parameterCount(); ++index) {
      lost += host->parameter(index) == host->settable(index, values[static_cast<std::size_t>(index)]) ? 0 : 1;
    }
  }
  return verdict(facts.isSane() && lost == 0, "%d random sets and %d at the ends, 5 blocks each, %d values lost", sets,
                 sets, lost);
}

}  // namespace

std::vector<Check> parameterChecks() {
  return {{"parameters: ends, texts, values outside", endsAndTexts}, {"parameters: random sets", randomSets}};
}

}  // namespace sivray::check
