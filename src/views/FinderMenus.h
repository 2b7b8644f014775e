// The right-click menus that find sounds by similarity: samples similar to one, and variations of a kit.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <cstdint>
#include <functional>
#include <memory>

#include "viewmodels/ISampleSelectorViewModel.h"
#include "viewmodels/SivraySampleFinder.h"

namespace tesh::bramel {

using plugin::sivray::SivraySampleFinder;

/// The models that a menu uses. The menus hold them weakly: without them their items do nothing.
struct FinderModels {
  std::shared_ptr<ISampleSelectorViewModel> selector;
  std::shared_ptr<SivraySampleFinder> finder;
};

/// The samples similar to one, the nearest first, "Something else" and "Back". An item gives its sample to the pad and
/// then calls `chosen`, which may be empty.
juce::PopupMenu similarMenu(const FinderModels& models, std::uint64_t part, std::int64_t category, std::int64_t index,
                            std::function<void()> chosen);

/// "Vary" and "Back".
juce::PopupMenu varyMenu(const std::shared_ptr<SivraySampleFinder>& finder);

}  // namespace tesh::bramel
