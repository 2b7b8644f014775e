// The kits as a CLAP host's browser finds them: the factory's inside the plug-in, the user's by number in their file.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>

#include "host/clap/ClapExtensions.h"
#include "host/clap/ClapHost.h"
#include "host/shell/BramelInstrument.h"

namespace tesh::bramel::clap {

/// A program of one of the shell's banks.
struct KitPlace {
  std::uint64_t bank = 0;
  std::uint64_t program = 0;
};

/// The place that a host's preset names, or nothing if the preset is not one of ours. The program need not exist: the
/// shell's program count decides that.
std::optional<KitPlace> kitPlaceOf(std::uint32_t locationKind, const char* location, const char* loadKey);

/// Tells the host which kit is selected, as a preset that is loaded; nothing for a kit that no list shows. Main thread.
void tellKit(const ClapHost& host, vst::BramelInstrument& instrument);

/// The factory whose one provider lists the kits: names as the panel shows them, the style of a factory kit as its
/// feature, and as keys their numbers from 0.
const PresetDiscoveryFactory& presetDiscoveryFactory();

}  // namespace tesh::bramel::clap
