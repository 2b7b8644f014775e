// The words and models that decide a sound's group.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/measure/Groups.h"

#include <algorithm>
#include <cctype>
#include <string>

namespace sivray::content {
namespace {

enum Category { kKick, kSnare, kClap, kClosed, kOpen, kTom, kCymbal, kPerc };

bool hasAny(const std::string& name, std::initializer_list<std::string_view> words) {
  return std::ranges::any_of(words, [&](std::string_view word) { return name.find(word) != std::string::npos; });
}

std::string inSmallLetters(std::string_view name) {
  std::string small(name);
  std::ranges::transform(small, small.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return small;
}

std::optional<Group> cymbalIn(const std::string& name) {
  const bool isCrash = hasAny(name, {"crash"});
  const bool isRide = hasAny(name, {"ride"});
  if (isCrash == isRide || hasAny(name, {"bell", "cup", "edge", "sizzle"})) {
    return std::nullopt;
  }
  return isCrash ? Group::crash : Group::ride;
}

bool isSideStick(const std::string& name) {
  return (hasAny(name, {"rim", "rs_", "sidestick"}) && !hasAny(name, {"tamborim"})) ||
         (hasAny(name, {"side"}) && hasAny(name, {"stick"}));
}

std::optional<Group> percussionIn(const std::string& name) {
  constexpr std::pair<std::string_view, Group> kWords[]{
      {"agogo", Group::agogo},           {"bongo", Group::bongo},         {"cabasa", Group::cabasa},
      {"castanet", Group::castanet},     {"clave", Group::claves},        {"conga", Group::conga},
      {"cowbell", Group::cowbell},       {"guiro", Group::guiro},         {"maraca", Group::maracas},
      {"tambourine", Group::tambourine}, {"timbale", Group::timbale},     {"triangle", Group::triangle},
      {"tri mute", Group::triangle},     {"vibraslap", Group::vibraslap}, {"wood bl", Group::woodBlock},
      {"woodblock", Group::woodBlock}};
  const auto* const found = std::ranges::find_if(kWords, [&](const auto& word) { return hasAny(name, {word.first}); });
  return found == std::end(kWords) ? std::nullopt : std::optional(found->second);
}

}  // namespace

std::optional<Group> groupOf(int category, std::string_view name, SoundSource source) {
  const std::string small = inSmallLetters(name);
  if (hasAny(small, {"roll",  "flink", "swish", "chok", "semi",  "half",  "foot",  "pedal",   "brush", "splash",
                     "china", "rev",   "flam",  "off",  "gated", "sweep", "empty", "timpani", "taiko", "surdo"})) {
    return std::nullopt;
  }
  const bool isMachine = source == SoundSource::machine;
  switch (category) {
    case kKick:
      return isMachine ? Group::machineKick : Group::kick;
    case kSnare:
      return isMachine ? Group::machineSnare : Group::snare;
    case kClap:
      return hasAny(small, {"snap", "stomp"}) ? std::nullopt : std::optional(Group::clap);
    case kClosed:
      return isMachine ? Group::machineClosedHat : Group::closedHat;
    case kOpen:
      return isMachine ? Group::machineOpenHat : Group::openHat;
    case kTom:
      return isMachine ? Group::machineTom : Group::tom;
    case kCymbal:
      return isMachine ? std::nullopt : cymbalIn(small);
    case kPerc:
      if (isMachine) {
        return std::nullopt;
      }
      return isSideStick(small) ? std::optional(Group::stick) : percussionIn(small);
    default:
      return std::nullopt;
  }
}

std::optional<Group> groupOf(const FactoryRow& row) {
  constexpr std::string_view kMachineModels[]{"kick",  "esnare", "metal", "fm",    "zap",
                                              "sweep", "glitch", "stab",  "impact"};
  const bool isMachine = std::ranges::find(kMachineModels, row.row.model->name) != std::end(kMachineModels);
  if (row.category == kPerc && (row.row.name.starts_with("Analog ") || row.row.name.starts_with("Boom "))) {
    return std::nullopt;
  }
  return groupOf(row.category, row.row.name, isMachine ? SoundSource::machine : SoundSource::acoustic);
}

std::optional<Group> kinOf(Group group) {
  constexpr std::pair<Group, Group> kKin[]{{Group::kick, Group::machineKick},
                                           {Group::snare, Group::machineSnare},
                                           {Group::closedHat, Group::machineClosedHat},
                                           {Group::openHat, Group::machineOpenHat},
                                           {Group::tom, Group::machineTom},
                                           {Group::crash, Group::ride}};
  for (const auto& [one, other] : kKin) {
    if (group == one || group == other) {
      return group == one ? other : one;
    }
  }
  return std::nullopt;
}

}  // namespace sivray::content
