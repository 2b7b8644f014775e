// Maps parameter ids, which count all parameters, to visible indices, which count those that the host sees. Fixed once
// built.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "core/RealTime.h"

namespace tesh::bramel::vst {

class ParameterMap {
 public:
  /// Numbers the parameters 0 to `count` - 1 except those for which `isHidden(id)` is true.
  template <typename IsHidden>
  void build(std::uint64_t count, const IsHidden& isHidden) {
    places.assign(static_cast<std::size_t>(count), Place{});
    visible.clear();
    for (std::size_t id = 0; id < places.size(); ++id) {
      if (!isHidden(id)) {
        places[id] = {visible.size(), true};
        visible.push_back(id);
      }
    }
    gestureOpen.assign(visible.size(), 0);
  }

  std::uint64_t count() const { return places.size(); }
  std::uint64_t visibleCount() const { return visible.size(); }

  /// The id at a visible index, or nothing out of range.
  std::optional<std::uint64_t> idOf(std::uint64_t visibleIndex) const SIVRAY_NONBLOCKING {
    return visibleIndex < visible.size() ? std::optional(visible[static_cast<std::size_t>(visibleIndex)])
                                         : std::nullopt;
  }

  /// Nothing for a hidden parameter and out of range.
  std::optional<std::uint64_t> visibleIndexOf(std::uint64_t id) const {
    if (id >= places.size() || !places[static_cast<std::size_t>(id)].isVisible) {
      return std::nullopt;
    }
    return places[static_cast<std::size_t>(id)].visibleIndex;
  }

  // Whether a gesture is open on a parameter; `visibleIndex` must be in range.
  bool isGestureOpen(std::uint64_t visibleIndex) const {
    return gestureOpen[static_cast<std::size_t>(visibleIndex)] != 0;
  }
  void setGestureOpen(std::uint64_t visibleIndex, bool isOpen) {
    gestureOpen[static_cast<std::size_t>(visibleIndex)] = isOpen ? 1 : 0;
  }

 private:
  struct Place {
    std::uint64_t visibleIndex = 0;
    bool isVisible = false;
  };

  std::vector<Place> places;
  std::vector<std::uint64_t> visible;
  std::vector<std::uint8_t> gestureOpen;
};

}  // namespace tesh::bramel::vst
