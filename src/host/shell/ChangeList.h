// The changes of one block, the latest per parameter: what a map would hold, in flat arrays that are reused from block
// to block.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/RealTime.h"
#include "host/shell/ProcessorEvent.h"

namespace tesh::bramel::vst {

class ChangeList {
 public:
  /// Makes room for parameters 0 to count - 1; nothing is allocated afterwards.
  void resize(std::size_t count) {
    latest.resize(count);
    isChanged.assign(count, 0);
    ids.clear();
    ids.reserve(count);
  }

  /// Keeps `event` as the latest of its parameter. Ids past the list are ignored. Audio thread.
  void put(const vimo::ProcessorEvent& event) {
    if (event.parameterId >= latest.size()) {
      return;
    }
    const auto id = static_cast<std::size_t>(event.parameterId);
    latest[id] = event;
    if (isChanged[id] == 0) {
      isChanged[id] = 1;
      cofu::core::vouchFor([this, id] { ids.push_back(id); });  // There is room for every parameter.
    }
  }

  /// Calls `action(event)` for every changed parameter in ascending order. Audio thread.
  template <typename Action>
  void forEach(Action action) {
    std::sort(ids.begin(), ids.end());
    for (const std::size_t id : ids) {
      action(latest[id]);
    }
  }

  bool isEmpty() const { return ids.empty(); }

  void clear() {
    for (const std::size_t id : ids) {
      isChanged[id] = 0;
    }
    ids.clear();
  }

 private:
  std::vector<vimo::ProcessorEvent> latest;
  std::vector<std::uint8_t> isChanged;
  std::vector<std::size_t> ids;
};

}  // namespace tesh::bramel::vst
