// The groups within which waves and recordings are compared: one drum, acoustic or machine.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

#include "content/waves/FactoryWaves.h"

namespace sivray::content {

enum class Group : std::size_t {
  kick,
  snare,
  stick,
  closedHat,
  openHat,
  tom,
  crash,
  ride,
  clap,  ///< Hand claps and those of machines: recorded sets hold both.
  machineKick,
  machineSnare,
  machineClosedHat,
  machineOpenHat,
  machineTom,
  agogo,  ///< From here on percussion: recorded sets hold too little of it for ranges of figures.
  bongo,
  cabasa,
  castanet,
  claves,
  conga,
  cowbell,
  guiro,
  maracas,
  tambourine,
  timbale,
  triangle,
  vibraslap,
  woodBlock,
};

inline constexpr std::array<std::string_view, 28> kGroupNames{"Kick, acoustic",
                                                              "Snare, acoustic",
                                                              "Side stick, rim",
                                                              "Closed hat, acoustic",
                                                              "Open hat, acoustic",
                                                              "Tom, acoustic",
                                                              "Crash",
                                                              "Ride",
                                                              "Clap",
                                                              "Kick, machine",
                                                              "Snare, machine",
                                                              "Closed hat, machine",
                                                              "Open hat, machine",
                                                              "Tom, machine",
                                                              "Agogo",
                                                              "Bongo",
                                                              "Cabasa",
                                                              "Castanet",
                                                              "Claves",
                                                              "Conga",
                                                              "Cowbell",
                                                              "Guiro",
                                                              "Maracas",
                                                              "Tambourine",
                                                              "Timbale",
                                                              "Triangle",
                                                              "Vibraslap",
                                                              "Wood block"};

inline constexpr std::size_t kGroups = kGroupNames.size();

/// The groups before this index have ranges of figures.
inline constexpr std::size_t kFigureGroups = 14;

enum class SoundSource : unsigned char { acoustic, machine };

/// Returns the group of a sound by its category (an index into kCategoryNames) and name; nothing for sounds that are
/// not typical of any group: rolls, brushes, half-open hats, bells of rides.
std::optional<Group> groupOf(int category, std::string_view name, SoundSource source);

/// Returns the group of a factory wave. Its model tells whether the sound is acoustic or a machine's.
std::optional<Group> groupOf(const FactoryRow& row);

/// Returns the group whose recordings widen this group's range: the same drum of the other source, or the other kind of
/// cymbal. Nothing if there is none.
std::optional<Group> kinOf(Group group);

}  // namespace sivray::content
