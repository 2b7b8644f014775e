// Caches the pictures of the categories that were asked for.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/own/SoundRemover.h"

#include <algorithm>
#include <numeric>

#include "content/measure/Hit.h"
#include "content/own/OwnChange.h"
#include "terminal/Interrupt.h"

namespace sivray::content {

Picture StandIns::pictureAt(const OwnStretch& stretch) { return maker.pictureOf(hitOf(content.waveAt(stretch))); }

const std::vector<StandIns::Choice>& StandIns::choicesOf(int category) {
  auto [entry, isNew] = choices.try_emplace(category);
  if (!isNew) {
    return entry->second;
  }
  const OwnTables& tables = content.tables();
  std::vector<std::int32_t> waves(static_cast<std::size_t>(tables.factoryWaves()));
  std::iota(waves.begin(), waves.end(), 0);
  const auto isOther = [&](std::int32_t wave) { return tables.factoryCategory(wave) != category; };
  if (!std::ranges::all_of(waves, isOther)) {
    std::erase_if(waves, isOther);
  }
  for (const std::int32_t wave : waves) {
    entry->second.push_back({wave, pictureAt(tables.factoryStretch(wave))});
  }
  return entry->second;
}

std::int32_t StandIns::nearestTo(const OwnSound& sound) {
  const auto stretch = content.stretches().find(sound.number);
  const std::vector<Choice>& among = choicesOf(sound.category);
  if (stretch == content.stretches().end() || among.empty()) {
    return 0;
  }
  const Picture wanted = pictureAt(stretch->second);
  return std::ranges::min_element(among, {}, [&wanted](const Choice& one) { return distance(wanted, one.picture); })
      ->wave;
}

std::vector<OwnSound> removeSounds(OwnContent& content, const std::set<std::int32_t>& numbers) {
  Ledger next = content.ledger();
  StandIns standIns(content);
  std::vector<OwnSound> gone;
  std::erase_if(next.sounds, [&](const OwnSound& sound) {
    const bool goes = !sound.isRemoved() && numbers.contains(sound.number);
    if (goes) {
      gone.push_back(sound);
    }
    return goes;
  });
  for (OwnSound& sound : gone) {
    InterruptWatch::check();
    sound.standIn = standIns.nearestTo(sound);
    sound.file.clear();
    next.sounds.push_back(sound);
  }
  if (!gone.empty()) {
    OwnChange(content, OwnChange::Build::asNeeded).commit(next);
  }
  return gone;
}

}  // namespace sivray::content
